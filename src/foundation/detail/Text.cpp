#include "foundation/detail/Text.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>

#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace qrtcl::text {

namespace {

constexpr std::size_t npos = std::string_view::npos;

/// The start of the greatest suffix of the folded needle in one of the two byte orders, and its period.
struct Suffix {
    std::size_t start;
    std::size_t period;
};

Suffix GreatestSuffix(std::string_view needle, bool reversed) noexcept
{
    std::size_t start = npos;  // one before the suffix, so that start + 1 is its first byte
    std::size_t candidate = 0;
    std::size_t offset = 1;
    std::size_t period = 1;
    while (candidate + offset < needle.size()) {
        char const a = ToLower(needle[candidate + offset]);
        char const b = ToLower(needle[start + offset]);
        if (a == b) {
            if (offset == period) {
                candidate += period;
                offset = 1;
            } else {
                ++offset;
            }
        } else if ((a < b) != reversed) {
            candidate += offset;
            offset = 1;
            period = candidate - start;
        } else {
            start = candidate++;
            offset = period = 1;
        }
    }
    return {start + 1, period};
}

/// Two-way string matching (Crochemore and Perrin, 1991): linear time, constant space.
std::size_t FindTwoWay(std::string_view text, std::string_view needle, std::size_t pos) noexcept
{
    Suffix const forward = GreatestSuffix(needle, false);
    Suffix const backward = GreatestSuffix(needle, true);
    Suffix const cut = forward.start > backward.start ? forward : backward;

    std::size_t const size = needle.size();
    // The left part recurs one period later only if it fits there; its end may lie behind the needle.
    bool const periodic = cut.start + cut.period <= size &&
                          EqualCI(needle.substr(0, cut.start), needle.substr(cut.period, cut.start));
    std::size_t const shift = periodic ? cut.period : std::max(cut.start, size - cut.start) + 1;
    std::size_t known = 0;  // bytes at the front known to match after a shift by the period
    while (size <= text.size() && pos <= text.size() - size) {
        std::size_t i = std::max(cut.start, known);
        while (i < size && ToLower(needle[i]) == ToLower(text[pos + i])) ++i;
        if (i < size) {
            pos += i - cut.start + 1;
            known = 0;
            continue;
        }
        i = cut.start;
        while (i > known && ToLower(needle[i - 1]) == ToLower(text[pos + i - 1])) --i;
        if (i <= known) return pos;
        pos += shift;
        known = periodic ? size - cut.period : 0;
    }
    return npos;
}

constexpr std::size_t wordSize = 8;

std::uint64_t Word(std::string_view text, std::size_t pos)
{
    std::uint64_t word;
    std::memcpy(&word, text.data() + pos, wordSize);
    return word;
}

/// Eight bytes through the lower-case table at once.
constexpr std::uint64_t FoldWord(std::uint64_t word)
{
    constexpr std::uint64_t each = 0x0101010101010101;
    std::uint64_t const low = word & 0x7F * each;
    std::uint64_t const fromA = low + (0x80 - 'A') * each;  // the high bit of a byte says "at least A"
    std::uint64_t const behindZ = low + (0x7F - 'Z') * each;
    std::uint64_t const upper = (fromA & ~behindZ & ~word) & 0x80 * each;
    return word | upper >> 2;
}

bool SameFolded(std::uint64_t a, std::uint64_t b) { return a == b || FoldWord(a) == FoldWord(b); }

constexpr std::size_t blockSize = 16;

#if defined(__SSE2__)

__m128i FoldBlock(char const * bytes)
{
    __m128i const block = _mm_loadu_si128(reinterpret_cast<__m128i const *>(bytes));
    __m128i const fromA = _mm_add_epi8(block, _mm_set1_epi8(128 - 'A'));  // "A" is the least signed byte
    __m128i const upper = _mm_cmplt_epi8(fromA, _mm_set1_epi8(-128 + 26));
    return _mm_or_si128(block, _mm_and_si128(upper, _mm_set1_epi8('a' - 'A')));
}

/// A one for each of the 16 bytes that differ by more than case.
unsigned DifferentCI(char const * a, char const * b)
{
    return 0xFFFFu ^ static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi8(FoldBlock(a), FoldBlock(b))));
}

#else

unsigned DifferentCI(char const * a, char const * b)
{
    unsigned different = 0;
    for (unsigned i = 0; i < blockSize; ++i)
        different |= static_cast<unsigned>(ToLower(a[i]) != ToLower(b[i])) << i;
    return different;
}

#endif

/// How much comparing in vain a search may do before the two-way search takes over: a few bytes for each
/// place tried.
bool TooMuch(std::size_t compared, std::size_t tried) { return compared > 1024 + 4 * tried; }

/// Compares where the first byte fits, as far as that stays linear. The needle is not empty and fits behind
/// `pos`.
std::size_t FindByEnds(std::string_view text, std::string_view needle, std::size_t pos) noexcept
{
    char const first = ToLower(needle.front());
    std::size_t const end = text.size() - needle.size() + 1;
    std::size_t const begin = pos;
    std::size_t compared = 0;
    for (; pos < end; ++pos) {
        if (ToLower(text[pos]) != first) continue;
        if (EqualCI(text.substr(pos, needle.size()), needle)) return pos;
        compared += needle.size();
        if (TooMuch(compared, pos - begin)) return FindTwoWay(text, needle, pos + 1);
    }
    return npos;
}

#if defined(__x86_64__)

bool HasAvx2() { return __builtin_cpu_supports("avx2") != 0; }

/// The same for 32 places at a time: compares where the first and the last byte fit.
__attribute__((target("avx2"))) std::size_t FindByEndsAvx2(std::string_view text, std::string_view needle,
                                                           std::size_t pos) noexcept
{
    constexpr std::size_t places = 32;
    __m256i const first[] = {_mm256_set1_epi8(ToLower(needle.front())),
                             _mm256_set1_epi8(ToUpper(needle.front()))};
    __m256i const last[] = {_mm256_set1_epi8(ToLower(needle.back())),
                            _mm256_set1_epi8(ToUpper(needle.back()))};
    char const * const data = text.data();
    std::size_t const toLast = needle.size() - 1;
    std::size_t const begin = pos;
    std::size_t compared = 0;
    for (; pos + toLast + places <= text.size(); pos += places) {
        __m256i const front = _mm256_loadu_si256(reinterpret_cast<__m256i const *>(data + pos));
        __m256i const back = _mm256_loadu_si256(reinterpret_cast<__m256i const *>(data + pos + toLast));
        __m256i const fits = _mm256_and_si256(
            _mm256_or_si256(_mm256_cmpeq_epi8(front, first[0]), _mm256_cmpeq_epi8(front, first[1])),
            _mm256_or_si256(_mm256_cmpeq_epi8(back, last[0]), _mm256_cmpeq_epi8(back, last[1])));
        for (unsigned mask = static_cast<unsigned>(_mm256_movemask_epi8(fits)); mask != 0; mask &= mask - 1) {
            std::size_t const place = pos + static_cast<std::size_t>(std::countr_zero(mask));
            if (EqualCI(text.substr(place, needle.size()), needle)) return place;
            compared += needle.size();
        }
        if (TooMuch(compared, pos - begin)) return FindTwoWay(text, needle, pos + places);
    }
    return pos + toLast < text.size() ? FindByEnds(text, needle, pos) : npos;
}

#else

bool HasAvx2() { return false; }
std::size_t FindByEndsAvx2(std::string_view text, std::string_view needle, std::size_t pos) noexcept
{
    return FindByEnds(text, needle, pos);
}

#endif

consteval std::array<char, 256> WithOneSlash(std::array<char, 256> table)
{
    table['/'] = '\\';
    return table;
}
constexpr std::array<char, 256> wildcardFoldTable = WithOneSlash(lowerTable);
constexpr std::array<char, 256> wildcardTable = WithOneSlash(FoldTable('A', 'Z', 0));

}  // namespace

bool EqualCI(std::string_view a, std::string_view b) noexcept
{
    std::size_t const size = a.size();
    if (b.size() != size) return false;
    if (size >= blockSize) {
        // The last block overlaps the one before it.
        for (std::size_t i = 0; i + blockSize < size; i += blockSize) {
            if (DifferentCI(a.data() + i, b.data() + i) != 0) return false;
        }
        return DifferentCI(a.data() + size - blockSize, b.data() + size - blockSize) == 0;
    }
    if (size >= wordSize) {
        return SameFolded(Word(a, 0), Word(b, 0)) &&
               SameFolded(Word(a, size - wordSize), Word(b, size - wordSize));
    }
    for (std::size_t i = 0; i < size; ++i) {
        if (ToLower(a[i]) != ToLower(b[i])) return false;
    }
    return true;
}

bool EqualCI(std::string const & a, std::string const & b) noexcept
{
    if (a.size() != b.size()) return false;
    if (a.size() >= blockSize || OffsetInside(a) == npos || OffsetInside(b) == npos)
        return EqualCI(std::string_view(a), std::string_view(b));
    return (DifferentCI(a.data(), b.data()) & ((1u << a.size()) - 1)) == 0;
}

int CompareUpper(std::string_view a, std::string_view b) noexcept
{
    std::size_t const common = std::min(a.size(), b.size());
    std::size_t i = 0;
    while (i + wordSize <= common && SameFolded(Word(a, i), Word(b, i))) i += wordSize;
    for (; i < common; ++i) {
        int const x = static_cast<unsigned char>(ToUpper(a[i]));
        int const y = static_cast<unsigned char>(ToUpper(b[i]));
        if (x != y) return x - y;
    }
    return a.size() < b.size() ? -1 : static_cast<int>(a.size() > b.size());
}

std::size_t FindCI(std::string_view text, std::string_view needle, std::size_t pos) noexcept
{
    if (needle.empty()) return pos < text.size() ? pos : npos;
    if (needle.size() > text.size() || pos > text.size() - needle.size()) return npos;
    return HasAvx2() ? FindByEndsAvx2(text, needle, pos) : FindByEnds(text, needle, pos);
}

bool Replace(std::string_view text, std::string_view from, std::string_view to, bool ignoreCase,
             std::string & result)
{
    if (from.empty()) return false;
    auto const find = [&](std::size_t pos) {
        return ignoreCase ? FindCI(text, from, pos) : text.find(from, pos);
    };
    std::size_t match = find(0);
    if (match == npos) return false;
    std::string replaced;
    std::size_t copied = 0;
    bool foretold = false;
    for (; match != npos; match = find(copied)) {
        if (!foretold && match > text.size() / 16) {
            // The first part foretells the size of the whole; it may be wrong, so not by much.
            std::size_t const size = replaced.size() + match - copied;
            replaced.reserve(std::min(size * (text.size() / match + 1), size + 4 * text.size()));
            foretold = true;
        }
        replaced.append(text, copied, match - copied).append(to);
        copied = match + from.size();
    }
    replaced.append(text, copied);
    result = std::move(replaced);
    return true;
}

bool MatchWildcards(std::string_view subject, std::string_view pattern, bool ignoreCase) noexcept
{
    std::array<char, 256> const & table = ignoreCase ? wildcardFoldTable : wildcardTable;
    auto const normal = [&table](char c) { return table[static_cast<unsigned char>(c)]; };
    subject = subject.substr(0, subject.find('\0'));
    pattern = pattern.substr(0, pattern.find('\0'));

    // What stands behind the last star can only be the end of the subject.
    if (std::size_t const star = pattern.rfind('*'); star != npos) {
        std::string_view const tail = pattern.substr(star + 1);
        if (tail.size() > subject.size()) return false;
        std::size_t const begin = subject.size() - tail.size();
        for (std::size_t i = 0; i < tail.size(); ++i) {
            if (tail[i] != '?' && normal(tail[i]) != normal(subject[begin + i])) return false;
        }
        pattern.remove_suffix(tail.size());
        subject.remove_suffix(tail.size());
    }

    // Only the last star is retried: what an earlier star could still take, the last one takes as well.
    std::size_t s = 0;
    std::size_t p = 0;
    std::size_t behindStar = npos;
    std::size_t restart = 0;
    while (s < subject.size()) {
        if (p < pattern.size() && pattern[p] == '*') {
            behindStar = ++p;
            if (p == pattern.size()) return true;
            restart = s + 1;
        } else if (p < pattern.size() && (pattern[p] == '?' || normal(pattern[p]) == normal(subject[s]))) {
            ++p;
            ++s;
        } else if (behindStar != npos) {
            // The star takes bytes up to the next place where what stands behind it can begin.
            p = behindStar;
            if (pattern[p] != '?' && pattern[p] != '*') {
                char const wanted = normal(pattern[p]);
                while (restart < subject.size() && normal(subject[restart]) != wanted) ++restart;
            }
            s = restart++;
        } else {
            return false;
        }
    }
    while (p < pattern.size() && pattern[p] == '*') ++p;
    return p == pattern.size();
}

std::string_view TrimLeft(std::string_view text, char c) noexcept
{
    std::size_t const first = text.find_first_not_of(c);
    return first == npos ? std::string_view() : text.substr(first);
}

std::string_view TrimRight(std::string_view text, char c) noexcept
{
    return text.substr(0, text.find_last_not_of(c) + 1);
}

}  // namespace qrtcl::text
