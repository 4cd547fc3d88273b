#include "foundation/detail/NumberText.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <limits>

#include "foundation/detail/Text.h"

namespace qrtcl::number {

namespace {

__extension__ typedef unsigned __int128 UInt128;

constexpr int maxExactDigits = 18;  // 10^18 still fits 64 bits, and a 53-bit fraction times it 128 bits

consteval std::array<std::uint64_t, maxExactDigits + 1> PowersOfTen()
{
    std::array<std::uint64_t, maxExactDigits + 1> powers{1};
    for (unsigned i = 1; i < powers.size(); ++i) powers[i] = powers[i - 1] * 10;
    return powers;
}
constexpr auto powersOfTen = PowersOfTen();

/// Writes exactly `count` digits of `v`, from the last to the first.
void WriteDigits(char * last, std::uint64_t v, int count)
{
    for (; count > 0; --count, v /= 10) *--last = static_cast<char>('0' + v % 10);
}

/// The exact way for magnitudes below 2^53: the fraction is m / 2^s with m below 2^53, so its digits are one
/// 128-bit product, a shift, and an exact test of the half.
void AssignFixedExact(std::string & text, double v, int precision)
{
    std::uint64_t const bits = std::bit_cast<std::uint64_t>(v);
    int const biased = static_cast<int>(bits >> 52 & 0x7FF);
    constexpr std::uint64_t hiddenBit = std::uint64_t{1} << 52;
    std::uint64_t const mantissa = (bits & (hiddenBit - 1)) | (biased != 0 ? hiddenBit : 0);
    int const shift = 1075 - (biased != 0 ? biased : 1);  // v = mantissa / 2^shift, shift from 0 to 1074

    std::uint64_t whole = shift < 64 ? mantissa >> shift : 0;
    std::uint64_t const rest = shift < 64 ? mantissa - (whole << shift) : mantissa;
    std::uint64_t const scale = powersOfTen[static_cast<unsigned>(precision)];
    std::uint64_t fraction = 0;
    if (shift > 0 && shift < 120) {  // beyond that the product, below 2^113, is less than the half
        UInt128 const product = static_cast<UInt128>(rest) * scale;
        UInt128 const unit = static_cast<UInt128>(1) << shift;
        UInt128 const cut = product & (unit - 1);
        fraction = static_cast<std::uint64_t>(product >> shift);
        bool const odd = ((precision == 0 ? whole : fraction) & 1) != 0;
        if (cut > unit / 2 || (cut == unit / 2 && odd)) ++fraction;
        if (fraction == scale) {
            fraction = 0;
            ++whole;
        }
    }

    char buffer[48];
    char * const end = buffer + sizeof buffer;
    char * first = end;
    if (precision > 0) {
        WriteDigits(end, fraction, precision);
        first = end - precision;
        *--first = '.';
    }
    do {
        *--first = static_cast<char>('0' + whole % 10);
        whole /= 10;
    } while (whole != 0);
    if (std::signbit(v)) *--first = '-';
    text.assign(first, end);
}

/// Digits of any number: sign and at most 309 before the point.
void AssignFixedAny(std::string & text, double v, int precision)
{
    constexpr std::size_t digitsBeforePoint = 309;
    text.resize(digitsBeforePoint + 2 + static_cast<std::size_t>(precision));
    auto const result =
        std::to_chars(text.data(), text.data() + text.size(), v, std::chars_format::fixed, precision);
    text.resize(static_cast<std::size_t>(result.ptr - text.data()));
}

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

std::string_view SkipSpace(std::string_view text)
{
    std::size_t first = 0;
    while (first < text.size() && text::IsSpace(text[first])) ++first;
    return text.substr(first);
}

/// Takes a sign off the front: true for "-".
bool TakeSign(std::string_view & text)
{
    if (text.empty() || (text[0] != '-' && text[0] != '+')) return false;
    bool const negative = text[0] == '-';
    text.remove_prefix(1);
    return negative;
}

struct Magnitude {
    std::uint64_t value = 0;
    bool found = false;
    bool huge = false;  // does not fit 32 bits
};

/// Reads digits, and goes over all of them also when the value has long become too large. `text` begins
/// behind the sign.
Magnitude ReadMagnitude(std::string_view text, bool hex)
{
    // As in the extraction, a hexadecimal prefix is taken even if no digit follows; that is a failure then.
    if (hex && text.size() > 1 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X')) text.remove_prefix(2);
    Magnitude read;
    unsigned const base = hex ? 16 : 10;
    for (char const c : text) {
        unsigned digit = static_cast<unsigned char>(c) - unsigned{'0'};
        if (digit > 9) {
            char const letter = text::ToLower(c);
            if (!hex || letter < 'a' || letter > 'f') break;
            digit = static_cast<unsigned>(letter - 'a') + 10;
        }
        read.found = true;
        read.value = read.value * base + digit;
        if (read.value > std::numeric_limits<std::uint32_t>::max()) {
            read.huge = true;
            read.value = std::numeric_limits<std::uint32_t>::max();
        }
    }
    return read;
}

}  // namespace

void AssignFixed(std::string & text, double v, int precision)
{
    constexpr double exactLimit = 9007199254740992.0;  // 2^53
    if (precision <= maxExactDigits && std::fabs(v) < exactLimit) {
        AssignFixedExact(text, v, precision);
    } else {
        AssignFixedAny(text, v, precision);
    }
}

void TrimFraction(std::string & text)
{
    std::size_t size = text.size();
    while (size > 1 && text[size - 1] == '0' && text[size - 2] != '.') --size;
    if (size > 1 && text[size - 1] == '0' && text[size - 2] == '.') size -= 2;
    text.resize(size);
}

bool ReadDouble(std::string_view text, double & out) noexcept
{
    text = SkipSpace(text);
    if (text.empty()) return false;
    bool const negative = TakeSign(text);

    // The bytes that the extraction collects; std::from_chars then has to take all of them.
    std::size_t end = 0;
    bool digits = false;
    bool point = false;
    for (; end < text.size(); ++end) {
        if (IsDigit(text[end]))
            digits = true;
        else if (text[end] == '.' && !point)
            point = true;
        else
            break;
    }
    if (digits && end < text.size() && (text[end] == 'e' || text[end] == 'E')) {
        ++end;
        if (end < text.size() && (text[end] == '+' || text[end] == '-')) ++end;
        while (end < text.size() && IsDigit(text[end])) ++end;
    }

    double value = 0.0;
    char const * const last = text.data() + end;
    auto const result = digits ? std::from_chars(text.data(), last, value) : std::from_chars_result{};
    if (!digits || result.ptr != last) {
        out = 0.0;
        return false;
    }
    bool fits = true;
    if (result.ec == std::errc::result_out_of_range) {
        // Which limit was passed shows in the decimal exponent of the first digit that is not zero.
        std::string_view const mantissa = text.substr(0, text.find_first_of("eE"));
        std::size_t const first = mantissa.find_first_of("123456789");
        std::size_t const dot = std::min(mantissa.find('.'), mantissa.size());
        std::int64_t exponent = static_cast<std::int64_t>(dot) - static_cast<std::int64_t>(first);
        if (std::size_t const e = mantissa.size() + 1; e < end) {
            std::string_view shown = text.substr(e, end - e);
            bool const down = TakeSign(shown);
            std::int64_t number = 0;
            auto const read = std::from_chars(shown.data(), shown.data() + shown.size(), number);
            if (read.ec != std::errc()) number = std::numeric_limits<std::int32_t>::max();
            exponent += down ? -number : number;
        }
        fits = exponent < 0;
        value = fits ? 0.0 : std::numeric_limits<double>::max();
    }
    out = negative ? -value : value;
    return fits;
}

bool ReadInt(std::string_view text, bool hex, std::int32_t & out) noexcept
{
    text = SkipSpace(text);
    if (text.empty()) return false;
    bool const negative = TakeSign(text);
    Magnitude const read = ReadMagnitude(text, hex);
    std::int64_t const value =
        negative ? -static_cast<std::int64_t>(read.value) : static_cast<std::int64_t>(read.value);
    constexpr std::int64_t low = std::numeric_limits<std::int32_t>::min();
    constexpr std::int64_t high = std::numeric_limits<std::int32_t>::max();
    out = static_cast<std::int32_t>(std::clamp(value, low, high));
    return read.found && !read.huge && value == out;
}

bool ReadUInt(std::string_view text, bool hex, std::uint32_t & out) noexcept
{
    text = SkipSpace(text);
    if (text.empty()) return false;
    bool const negative = TakeSign(text);
    Magnitude const read = ReadMagnitude(text, hex);
    std::uint32_t const value = static_cast<std::uint32_t>(read.value);
    out = negative && !read.huge ? 0u - value : value;
    return read.found && !read.huge;
}

}  // namespace qrtcl::number
