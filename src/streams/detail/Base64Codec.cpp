#include "streams/detail/Base64Codec.h"

#include <cstdint>
#include <cstring>

#if defined(__x86_64__) && defined(__GNUC__)
#define QRTCL_AVX2 __attribute__((target("avx2")))
#include <immintrin.h>
#endif

namespace qrtcl::base64 {

namespace {

// The portable way: twelve bits to two characters, and each character to its bits in their place in the
// group.

struct Pair {
    char first, second;
};

consteval std::array<Pair, 4096> Pairs()
{
    std::array<Pair, 4096> pairs{};
    for (unsigned i = 0; i < pairs.size(); ++i) pairs[i] = {alphabet[i / 64], alphabet[i % 64]};
    return pairs;
}
constexpr std::array<Pair, 4096> pairTable = Pairs();

constexpr std::uint32_t foreignMark = 1u << 24;

consteval std::array<std::uint32_t, 256> PlacedValues(int shift)
{
    std::array<int, 256> const values = Values(-1);
    std::array<std::uint32_t, 256> placed{};
    for (unsigned i = 0; i < placed.size(); ++i) {
        placed[i] = values[i] < 0 ? foreignMark : static_cast<std::uint32_t>(values[i]) << shift;
    }
    return placed;
}
constexpr std::array<std::array<std::uint32_t, 256>, 4> placedTable = {PlacedValues(18), PlacedValues(12),
                                                                       PlacedValues(6), PlacedValues(0)};

void EncodePortable(unsigned char const * bytes, std::size_t groups, char * text) noexcept
{
    for (; groups > 0; --groups, bytes += 3, text += 4) {
        unsigned const group = static_cast<unsigned>(bytes[0] << 16 | bytes[1] << 8 | bytes[2]);
        std::memcpy(text, &pairTable[group >> 12], 2);
        std::memcpy(text + 2, &pairTable[group & 0xFFF], 2);
    }
}

bool DecodePortable(char const * text, std::size_t groups, unsigned char * bytes) noexcept
{
    std::uint32_t seen = 0;
    for (; groups > 0; --groups, text += 4, bytes += 3) {
        std::uint32_t group = 0;
        for (unsigned i = 0; i < 4; ++i) group |= placedTable[i][static_cast<unsigned char>(text[i])];
        seen |= group;
        bytes[0] = static_cast<unsigned char>(group >> 16);
        bytes[1] = static_cast<unsigned char>(group >> 8);
        bytes[2] = static_cast<unsigned char>(group);
    }
    return (seen & foreignMark) == 0;
}

constexpr Codec portable = {"portable", EncodePortable, DecodePortable};

#if defined(QRTCL_AVX2)

// The vector way, 24 bytes against 32 characters at a time (after Mula and Lemire, 2018). A vector shuffle
// looks up 16 places, so the alphabet is cut into runs of neighbouring bytes, and the tables hold what lies
// between the value and the byte in each run.

using Lookup = std::array<char, 16>;

constexpr unsigned valuesBeforeDigits = 51;  // the last value in front of the runs of their own
constexpr unsigned valuesOfCapitals = 26;
constexpr unsigned runOfCapitals = 13;

/// By run: 0 small letters, 1 to 12 the ten digits and the two signs, 13 capitals.
consteval Lookup EncodeSteps()
{
    Lookup steps{};
    for (unsigned i = 0; i < alphabet.size(); ++i) {
        unsigned const run = i < valuesOfCapitals      ? runOfCapitals
                             : i <= valuesBeforeDigits ? 0
                                                       : i - valuesBeforeDigits;
        steps[run] = static_cast<char>(alphabet[i] - static_cast<int>(i));
    }
    return steps;
}

/// By the high half of the byte; "/" stands alone in its row's lower neighbour, which has no other member.
consteval Lookup DecodeSteps()
{
    Lookup steps{};
    for (unsigned i = 0; i < alphabet.size(); ++i) {
        unsigned const row = static_cast<unsigned>(alphabet[i]) >> 4;
        steps[alphabet[i] == '/' ? row - 1 : row] = static_cast<char>(static_cast<int>(i) - alphabet[i]);
    }
    return steps;
}

/// A byte is foreign if the entries of its halves share a bit. Each row that has members owns one bit, and
/// the rows without members share the last.
constexpr unsigned firstRow = 2;
constexpr unsigned lastRow = 7;
constexpr char emptyRow = 1 << 6;

consteval Lookup HighHalves()
{
    Lookup marks{};
    marks.fill(emptyRow);
    for (unsigned row = firstRow; row <= lastRow; ++row)
        marks[row] = static_cast<char>(1 << (row - firstRow));
    return marks;
}

consteval Lookup LowHalves()
{
    std::array<int, 256> const values = Values(-1);
    Lookup marks{};
    for (unsigned low = 0; low < marks.size(); ++low) {
        marks[low] = emptyRow;
        for (unsigned row = firstRow; row <= lastRow; ++row) {
            if (values[row * 16 + low] < 0)
                marks[low] = static_cast<char>(marks[low] | 1 << (row - firstRow));
        }
    }
    return marks;
}

/// The same 16 bytes in both lanes.
QRTCL_AVX2 inline __m256i Load(Lookup const & table)
{
    return _mm256_broadcastsi128_si256(_mm_loadu_si128(reinterpret_cast<__m128i const *>(table.data())));
}

constexpr Lookup spreadOrder = {1, 0, 2, 1, 4, 3, 5, 4, 7, 6, 8, 7, 10, 9, 11, 10};
constexpr Lookup packOrder = {2, 1, 0, 6, 5, 4, 10, 9, 8, 14, 13, 12, -1, -1, -1, -1};
constexpr Lookup encodeSteps = EncodeSteps();
constexpr Lookup decodeSteps = DecodeSteps();
constexpr Lookup highHalves = HighHalves();
constexpr Lookup lowHalves = LowHalves();

QRTCL_AVX2 void EncodeAvx2(unsigned char const * bytes, std::size_t groups, char * text) noexcept
{
    __m256i const order = Load(spreadOrder);
    __m256i const steps = Load(encodeSteps);
    // Each step takes 8 groups, and reads 4 bytes beyond them.
    for (; groups >= 10; groups -= 8, bytes += 24, text += 32) {
        __m128i const low = _mm_loadu_si128(reinterpret_cast<__m128i const *>(bytes));
        __m128i const high = _mm_loadu_si128(reinterpret_cast<__m128i const *>(bytes + 12));
        __m256i const spread = _mm256_shuffle_epi8(_mm256_set_m128i(high, low), order);
        // The multiplications shift: each 16-bit half holds two of the four 6-bit values.
        __m256i const even = _mm256_mulhi_epu16(_mm256_and_si256(spread, _mm256_set1_epi32(0x0FC0FC00)),
                                                _mm256_set1_epi32(0x04000040));
        __m256i const odd = _mm256_mullo_epi16(_mm256_and_si256(spread, _mm256_set1_epi32(0x003F03F0)),
                                               _mm256_set1_epi32(0x01000010));
        __m256i const values = _mm256_or_si256(even, odd);

        __m256i const capital = _mm256_cmpgt_epi8(_mm256_set1_epi8(valuesOfCapitals), values);
        __m256i const run = _mm256_or_si256(_mm256_subs_epu8(values, _mm256_set1_epi8(valuesBeforeDigits)),
                                            _mm256_and_si256(capital, _mm256_set1_epi8(runOfCapitals)));
        __m256i const letters = _mm256_add_epi8(values, _mm256_shuffle_epi8(steps, run));
        _mm256_storeu_si256(reinterpret_cast<__m256i *>(text), letters);
    }
    EncodePortable(bytes, groups, text);
}

QRTCL_AVX2 bool DecodeAvx2(char const * text, std::size_t groups, unsigned char * bytes) noexcept
{
    __m256i const steps = Load(decodeSteps);
    __m256i const highMarks = Load(highHalves);
    __m256i const lowMarks = Load(lowHalves);
    __m256i const order = Load(packOrder);
    __m256i const lanes = _mm256_setr_epi32(0, 1, 2, 4, 5, 6, 7, 7);
    __m256i const half = _mm256_set1_epi8(0x0F);
    __m256i allGood = _mm256_set1_epi8(-1);
    // Each step takes 8 groups, and writes 8 bytes beyond them.
    for (; groups >= 11; groups -= 8, text += 32, bytes += 24) {
        __m256i const letters = _mm256_loadu_si256(reinterpret_cast<__m256i const *>(text));
        __m256i const high = _mm256_and_si256(_mm256_srli_epi16(letters, 4), half);
        __m256i const low = _mm256_and_si256(letters, half);
        __m256i const shared =
            _mm256_and_si256(_mm256_shuffle_epi8(highMarks, high), _mm256_shuffle_epi8(lowMarks, low));
        __m256i const good = _mm256_cmpeq_epi8(shared, _mm256_setzero_si256());
        allGood = _mm256_and_si256(allGood, good);

        __m256i const slash = _mm256_cmpeq_epi8(letters, _mm256_set1_epi8('/'));
        __m256i const step = _mm256_shuffle_epi8(steps, _mm256_add_epi8(high, slash));
        __m256i const values = _mm256_and_si256(_mm256_add_epi8(letters, step), good);

        // Two 6-bit values to 12 bits, two of these to 24, and the three bytes of each number to their
        // places.
        __m256i const twelve = _mm256_maddubs_epi16(values, _mm256_set1_epi32(0x01400140));
        __m256i const whole = _mm256_madd_epi16(twelve, _mm256_set1_epi32(0x00011000));
        __m256i const packed = _mm256_permutevar8x32_epi32(_mm256_shuffle_epi8(whole, order), lanes);
        _mm256_storeu_si256(reinterpret_cast<__m256i *>(bytes), packed);
    }
    bool const vectorGood = _mm256_movemask_epi8(allGood) == -1;
    return DecodePortable(text, groups, bytes) && vectorGood;
}

constexpr Codec codecs[] = {{"AVX2", EncodeAvx2, DecodeAvx2}, portable};

std::size_t Unsupported() noexcept { return __builtin_cpu_supports("avx2") != 0 ? 0 : 1; }

#else

constexpr Codec codecs[] = {portable};

std::size_t Unsupported() noexcept { return 0; }

#endif

}  // namespace

std::span<Codec const> Codecs() noexcept { return std::span(codecs).subspan(Unsupported()); }

}  // namespace qrtcl::base64
