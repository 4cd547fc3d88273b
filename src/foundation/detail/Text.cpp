#include "foundation/detail/Text.h"

#include <algorithm>
#include <cstring>

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

}  // namespace

bool EqualCI(std::string_view a, std::string_view b) noexcept
{
    return a.size() == b.size() &&
           std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) { return ToLower(x) == ToLower(y); });
}

int CompareUpper(std::string_view a, std::string_view b) noexcept
{
    std::size_t const common = std::min(a.size(), b.size());
    for (std::size_t i = 0; i < common; ++i) {
        int const x = static_cast<unsigned char>(ToUpper(a[i]));
        int const y = static_cast<unsigned char>(ToUpper(b[i]));
        if (x != y) return x - y;
    }
    return a.size() < b.size() ? -1 : static_cast<int>(a.size() > b.size());
}

std::size_t FindCI(std::string_view text, std::string_view needle, std::size_t pos) noexcept
{
    if (needle.empty()) return pos < text.size() ? pos : npos;
    if (needle.size() > text.size()) return npos;

    // Straight comparison is the fastest on ordinary texts. Once it has cost more than a few bytes for each
    // place tried, the two-way search takes over.
    char const first = ToLower(needle[0]);
    std::size_t const end = text.size() - needle.size() + 1;
    std::size_t const begin = pos;
    std::size_t compared = 0;
    for (; pos < end; ++pos) {
        if (ToLower(text[pos]) != first) continue;
        std::size_t i = 1;
        while (i < needle.size() && ToLower(text[pos + i]) == ToLower(needle[i])) ++i;
        if (i == needle.size()) return pos;
        compared += i;
        if (compared > 64 + 4 * (pos - begin)) return FindTwoWay(text, needle, pos + 1);
    }
    return npos;
}

void ReplaceAll(std::string & text, std::string_view from, std::string_view to, bool ignoreCase)
{
    if (from.empty()) return;
    std::string_view const source = text;
    auto const find = [&](std::size_t pos) {
        return ignoreCase ? FindCI(source, from, pos) : source.find(from, pos);
    };
    std::size_t match = find(0);
    if (match == npos) return;

    std::string result;
    result.reserve(source.size());
    std::size_t copied = 0;
    for (; match != npos; match = find(copied)) {
        result.append(source, copied, match - copied).append(to);
        copied = match + from.size();
    }
    result.append(source, copied);
    text = std::move(result);
}

bool MatchWildcards(std::string_view subject, std::string_view pattern, bool ignoreCase) noexcept
{
    auto const normal = [ignoreCase](char c) {
        if (c == '/') return '\\';
        return ignoreCase ? ToLower(c) : c;
    };
    subject = subject.substr(0, subject.find('\0'));
    pattern = pattern.substr(0, pattern.find('\0'));

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
            p = behindStar;
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
