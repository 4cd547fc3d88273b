#include "foundation/detail/NumberText.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <limits>

#include "foundation/detail/Text.h"

namespace qrtcl::number {

namespace {

__extension__ typedef unsigned __int128 UInt128;

constexpr int maxExactDigits = 18;  // 10^18 still fits 64 bits
constexpr int maxFixedDigits = 16;  // two times eight; a 53-bit fraction times 10^16 fits 128 bits
constexpr std::uint64_t eachByte = 0x0101010101010101;

consteval std::array<std::uint64_t, maxExactDigits + 1> PowersOfTen()
{
    std::array<std::uint64_t, maxExactDigits + 1> powers{1};
    for (unsigned i = 1; i < powers.size(); ++i) powers[i] = powers[i - 1] * 10;
    return powers;
}
constexpr auto powersOfTen = PowersOfTen();

template <typename Word> std::uint64_t Load(char const * p)
{
    Word word;
    std::memcpy(&word, p, sizeof word);
    return word;
}

/// The bytes from `p` on as a number, the first in the lowest byte, zeros behind `end`. The 8 bytes in front
/// of `end` can be read, those of them in front of `p` do not count.
std::uint64_t LoadWord(char const * p, char const * end)
{
    static_assert(std::endian::native == std::endian::little);
    char const * const from = std::min(p, end - 8);
    std::ptrdiff_t const half = 4 * (p - from);
    return Load<std::uint64_t>(from) >> half >> half;
}

/// How many of the eight bytes, from the lowest on, are digits.
int CountDigits(std::uint64_t word)
{
    // In the first byte that is no digit one of the two gets its high bit set; carries reach only later
    // bytes.
    std::uint64_t const others = ((word + 0x46 * eachByte) | (word - '0' * eachByte)) & 0x80 * eachByte;
    return std::countr_zero(others) / 8;
}

/// The number that the first `count` (0 to 8) bytes spell: the digits of pairs, fours and eights at once.
std::uint64_t EvaluateDigits(std::uint64_t word, int count)
{
    int const half = 4 * (8 - count);
    word = word << half << half;  // zeros in front
    word = (word & 0x0F0F0F0F0F0F0F0F) * (10 * 256 + 1) >> 8;
    word = (word & 0x00FF00FF00FF00FF) * (100 * 65536 + 1) >> 16;
    return (word & 0x0000FFFF0000FFFF) * (std::uint64_t{10000} * 4294967296 + 1) >> 32;
}

/// The eight digits of a number below 10^8, not yet as characters, the first in the lowest byte: split into
/// fours, pairs and single ones at once.
std::uint64_t SplitDigits(std::uint64_t v)
{
    std::uint64_t const fours = v / 10000 | v % 10000 << 32;
    std::uint64_t const hundreds = (fours * 10486 >> 20) & 0x0000007F0000007F;
    std::uint64_t const pairs = hundreds | (fours - hundreds * 100) << 16;
    std::uint64_t const tens = (pairs * 103 >> 10) & 0x000F000F000F000F;
    return tens | (pairs - tens * 10) << 8;
}

constexpr std::uint64_t tenTo8 = powersOfTen[8];

void WriteDigits(char * at, std::uint64_t digits)
{
    digits += '0' * eachByte;
    std::memcpy(at, &digits, sizeof digits);
}

/// Writes the digits of a number below 10^8, and zero bytes up to the eighth; gives the end of the digits.
char * WriteUpToEight(char * at, std::uint64_t v)
{
    constexpr std::uint64_t lastDigit = std::uint64_t{1} << 56;  // stays, be it zero
    std::uint64_t const digits = SplitDigits(v);
    int const zeros = std::countr_zero(digits | lastDigit) / 8;
    std::uint64_t const shown = (digits + '0' * eachByte) >> 8 * zeros;
    std::memcpy(at, &shown, sizeof shown);
    return at + 8 - zeros;
}

/// Writes the sign and a number below 10^16; gives the end. Seven more bytes may be written.
char * WriteWhole(char * at, std::uint64_t v, bool negative)
{
    *at = '-';
    at += static_cast<int>(negative);
    if (v < tenTo8) return WriteUpToEight(at, v);
    at = WriteUpToEight(at, v / tenTo8);
    WriteDigits(at, SplitDigits(v % tenTo8));
    return at + 8;
}

/// Without places there is no point either.
char * EndBehind(char * point, int places) { return places > 0 ? point + 1 + places : point; }

/// A text that is written where it stays: `write` gets room for 15 bytes and gives the end of the text.
template <typename Write> std::string ShortText(Write write)
{
    std::string text(15, '\0');
    text.resize(static_cast<std::size_t>(write(text.data()) - text.data()));
    return text;
}

/// The exact way for magnitudes below 2^53: the fraction is m / 2^s with m below 2^53, so its digits are one
/// 128-bit product, a shift, and an exact test of the half.
std::string FixedExact(double v, int precision, bool trim)
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
    if (rest != 0 && shift < 120) {  // beyond that the product, below 2^107, is less than the half
        UInt128 const product = static_cast<UInt128>(rest) * scale;
        // Up if the rest is more than the half, or the half behind an odd digit.
        std::uint64_t const cut = static_cast<std::uint64_t>(product >> shift);
        UInt128 const half = static_cast<UInt128>(1) << (shift - 1);
        unsigned const odd = (precision == 0 ? whole : cut) & 1;
        fraction = static_cast<std::uint64_t>((product + (half - 1) + odd) >> shift);
        if (fraction == scale) {
            fraction = 0;
            ++whole;
        }
    }

    bool const negative = std::signbit(v);
    fraction *= powersOfTen[static_cast<unsigned>(maxFixedDigits - precision)];
    std::uint64_t const high = SplitDigits(fraction / tenTo8);
    int const significant = 8 - std::countl_zero(high) / 8;
    if (fraction % tenTo8 == 0 && whole < powersOfTen[5] && (trim || precision <= 8)) {
        return ShortText([&](char * at) {
            char * const point = WriteWhole(at, whole, negative);
            *point = '.';
            WriteDigits(point + 1, high);
            return EndBehind(point, trim ? significant : precision);
        });
    }
    char buffer[48];
    char * const point = WriteWhole(buffer, whole, negative);
    *point = '.';
    WriteDigits(point + 1, high);
    std::uint64_t const low = SplitDigits(fraction % tenTo8);
    WriteDigits(point + 9, low);
    int const places = low != 0 ? 16 - std::countl_zero(low) / 8 : significant;
    return std::string(buffer, EndBehind(point, trim ? places : precision));
}

/// The end of a number text without the zeros at the end of its fraction, and without a point left there.
char const * TrimmedEnd(char const * first, char const * end)
{
    while (end - first > 1 && end[-1] == '0' && end[-2] != '.') --end;
    if (end - first > 1 && end[-1] == '0') end -= 2;
    return end;
}

/// Digits of any number: sign and at most 309 before the point.
std::string FixedAny(double v, int precision, bool trim)
{
    constexpr std::size_t digitsBeforePoint = 309;
    std::string text(digitsBeforePoint + 2 + static_cast<std::size_t>(precision), '\0');
    auto const result =
        std::to_chars(text.data(), text.data() + text.size(), v, std::chars_format::fixed, precision);
    char const * const end = trim ? TrimmedEnd(text.data(), result.ptr) : result.ptr;
    text.resize(static_cast<std::size_t>(end - text.data()));
    return text;
}

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

std::string_view SkipSpace(std::string_view text)
{
    while (!text.empty() && text::IsSpace(text.front())) text.remove_prefix(1);
    return text;
}

/// Takes a sign off the front: true for "-".
bool TakeSign(std::string_view & text)
{
    if (text.empty() || (text[0] != '-' && text[0] != '+')) return false;
    bool const negative = text[0] == '-';
    text.remove_prefix(1);
    return negative;
}

/// Number text with 8 bytes that can be read in front of its end.
class RoomyText {
public:
    explicit RoomyText(std::string_view text) : movView(text)
    {
        if (text.size() < room) Copy();
    }
    explicit RoomyText(std::string const & text) : movView(text)
    {
        std::size_t const before = text::OffsetInside(text);
        if (text.size() < room && (before < room || before == std::string::npos)) Copy();
    }
    RoomyText(RoomyText const &) = delete;
    RoomyText & operator=(RoomyText const &) = delete;

    std::string_view View() const { return movView; }

private:
    static constexpr std::size_t room = 8;

    void Copy()
    {
        movView.copy(mcaBytes + room, room);
        movView = {mcaBytes + room, movView.size()};
    }

    char mcaBytes[2 * room] = {};
    std::string_view movView;
};

/// A walk along a number text, by words of 8 bytes.
struct Walk {
    char const * at;
    char const * end;

    explicit Walk(std::string_view text) : at(text.data()), end(at + text.size()) {}

    /// The byte here, 0 at the end.
    char Byte() const { return at == end ? '\0' : *at; }

    /// Takes a sign: true for "-".
    bool TakeSign()
    {
        bool const negative = Byte() == '-';
        at += static_cast<int>(negative) | static_cast<int>(Byte() == '+');
        return negative;
    }

    /// Adds up to 8 digits to the number, which wraps beyond 19 of them; gives how many.
    int TakeDigits(std::uint64_t & number)
    {
        std::uint64_t const word = LoadWord(at, end);
        int const count = CountDigits(word);
        number = number * powersOfTen[static_cast<unsigned>(count)] + EvaluateDigits(word, count);
        at += count;
        return count;
    }
    /// The same for all digits that follow.
    std::ptrdiff_t TakeAllDigits(std::uint64_t & number)
    {
        char const * const first = at;
        while (TakeDigits(number) == 8) continue;
        return at - first;
    }
};

constexpr std::ptrdiff_t beyondAnyDigits = 100000;

/// A number without sign as the extraction collects it. With at most 19 digits, leading zeros included, it is
/// `mantissa` times ten to `exponent`.
struct DecimalText {
    std::size_t size = 0;
    std::uint64_t mantissa = 0;
    int digits = 0;
    int exponent = 0;
    bool complete = false;  // there are digits, and behind an "e" as well
};

DecimalText ScanDecimal(std::string_view text)
{
    DecimalText number;
    Walk walk(text);
    std::ptrdiff_t digits = walk.TakeAllDigits(number.mantissa);
    if (walk.Byte() == '.') {
        ++walk.at;
        std::ptrdiff_t const places = walk.TakeAllDigits(number.mantissa);
        digits += places;
        number.exponent = -static_cast<int>(std::min(places, beyondAnyDigits));
    }
    number.digits = static_cast<int>(std::min(digits, beyondAnyDigits));
    number.complete = digits > 0;
    if (number.complete && text::ToLower(walk.Byte()) == 'e') {
        ++walk.at;
        bool const down = walk.TakeSign();
        number.complete = IsDigit(walk.Byte());
        std::ptrdiff_t shown = 0;
        for (; IsDigit(walk.Byte()); ++walk.at)
            shown = std::min(shown * 10 + (*walk.at - '0'), beyondAnyDigits);
        number.exponent += static_cast<int>(down ? -shown : shown);
    }
    number.size = static_cast<std::size_t>(walk.at - text.data());
    return number;
}

/// A power of ten, shifted so that its highest bit is set, and what (2^128 - 1) / `value` is above 2^64.
struct Divisor {
    std::uint64_t value;
    std::uint64_t reciprocal;
    int shift;
};

consteval std::array<Divisor, maxExactDigits + 1> Divisors()
{
    std::array<Divisor, maxExactDigits + 1> divisors{};
    for (unsigned i = 0; i < divisors.size(); ++i) {
        int const shift = std::countl_zero(powersOfTen[i]);
        std::uint64_t const value = powersOfTen[i] << shift;
        divisors[i] = {value, static_cast<std::uint64_t>(~UInt128{0} / value), shift};
    }
    return divisors;
}
constexpr auto divisors = Divisors();

/// mantissa / 10^digits, correctly rounded: a quotient of 62 or 63 bits, with the rest kept in its last bit,
/// loses nothing that the rounding to 53 bits asks for. The division of 128 bits by a known divisor is that
/// of Moeller and Granlund, "Improved division by invariant integers" (2011). The numerator is below a
/// quarter of what 128 bits hold, so the second of their two corrections is never needed.
double Quotient(std::uint64_t mantissa, int digits)
{
    Divisor const & divisor = divisors[static_cast<unsigned>(digits)];
    int const up = std::countl_zero(mantissa);
    std::uint64_t const high = mantissa << up >> 2;  // of the numerator, below 2^62
    std::uint64_t const low = mantissa << up << 62;
    UInt128 const estimate =
        static_cast<UInt128>(divisor.reciprocal) * high + (static_cast<UInt128>(high) << 64 | low);
    std::uint64_t quotient = static_cast<std::uint64_t>(estimate >> 64) + 1;
    std::uint64_t rest = low - quotient * divisor.value;
    // Often one too many: a branch here would be a coin to toss.
    std::uint64_t const over = 0 - std::uint64_t{rest > static_cast<std::uint64_t>(estimate)};
    quotient += over;
    rest += over & divisor.value;
    int const power = divisor.shift - up - 62;  // between -121 and 1: always a normal number
    double const scale = std::bit_cast<double>(static_cast<std::uint64_t>(1023 + power) << 52);
    quotient |= std::uint64_t{rest != 0};
    return static_cast<double>(static_cast<std::int64_t>(quotient)) * scale;
}

/// mantissa / 10^digits. If both sides are exact as doubles, one division rounds correctly.
double Fraction(std::uint64_t mantissa, int digits)
{
    constexpr std::uint64_t exactMantissa = std::uint64_t{1} << 53;
    if (mantissa > exactMantissa) return Quotient(mantissa, digits);
    return static_cast<double>(static_cast<std::int64_t>(mantissa)) /
           exactPowers[static_cast<unsigned>(digits)];
}

/// `value` is not negative.
double WithSign(double value, bool negative)
{
    return std::bit_cast<double>(std::bit_cast<std::uint64_t>(value) | std::uint64_t{negative} << 63);
}

/// Reads a number as it mostly is: up to 7 digits, the point and up to 15 digits, 18 in all, no exponent.
/// False, with nothing done, if it is not like that.
bool ReadPlain(std::string_view text, double & out)
{
    Walk walk(text);
    bool const negative = walk.TakeSign();
    std::uint64_t mantissa = 0;
    int const whole = walk.TakeDigits(mantissa);
    int places = 0;
    if (walk.Byte() == '.') {
        ++walk.at;
        places = walk.TakeDigits(mantissa);
        if (places == 8) places += walk.TakeDigits(mantissa);
    }
    if (whole + places == 0 || whole == 8 || places == 16 || whole + places > maxExactDigits) return false;
    if (text::ToLower(walk.Byte()) == 'e') return false;
    out = WithSign(Fraction(mantissa, places), negative);
    return true;
}

// Still plainer: a short text is read from the string object, where the zero byte ends the digits.

/// The same for up to 6 digits, the point and up to 7 digits. Sign, digits and point are 8 bytes then, and
/// the word behind them ends with the last byte of the object.
bool ReadPlain(std::string const & text, double & out)
{
    if (text::OffsetInside(text) == std::string::npos) return false;
    bool const negative = text[0] == '-';
    char const * at = text.data() + static_cast<int>(negative);
    std::uint64_t word = Load<std::uint64_t>(at);
    int const whole = CountDigits(word);
    if (whole == 0 || whole > 6) return false;
    std::uint64_t mantissa = EvaluateDigits(word, whole);
    int places = 0;
    at += whole;
    if (*at == '.') {
        ++at;
        word = Load<std::uint64_t>(at);
        places = CountDigits(word);
        if (places == 8) return false;
        mantissa = mantissa * powersOfTen[static_cast<unsigned>(places)] + EvaluateDigits(word, places);
        at += places;
    }
    if (text::ToLower(*at) == 'e') return false;
    double const value = static_cast<double>(static_cast<std::int64_t>(mantissa));
    out = WithSign(value / exactPowers[static_cast<unsigned>(places)], negative);
    return true;
}

/// The same for whole numbers.
bool ReadPlain(std::string const & text, std::int64_t & out)
{
    if (text::OffsetInside(text) == std::string::npos) return false;
    bool const negative = text[0] == '-';
    std::uint64_t word = Load<std::uint64_t>(text.data() + static_cast<int>(negative));
    int count = CountDigits(word);
    if (count == 0) return false;
    std::uint64_t number = EvaluateDigits(word, count);
    if (count == 8) {
        word = Load<std::uint64_t>(text.data() + 8) >> 8 * static_cast<unsigned>(negative);
        count = CountDigits(word);
        number = number * powersOfTen[static_cast<unsigned>(count)] + EvaluateDigits(word, count);
    }
    std::int64_t const magnitude = static_cast<std::int64_t>(number);
    out = negative ? -magnitude : magnitude;
    return true;
}

/// Gives the nearest number of 32 bits; false if that is another one.
bool Narrow(std::int64_t value, std::int32_t & out)
{
    constexpr std::int64_t low = std::numeric_limits<std::int32_t>::min();
    constexpr std::int64_t high = std::numeric_limits<std::int32_t>::max();
    out = static_cast<std::int32_t>(std::clamp(value, low, high));
    return value == out;
}

/// Of the first digit that is not zero, counted from the point: which limit a number passed that has no
/// double.
std::int64_t DecimalExponent(std::string_view number)
{
    std::string_view const mantissa = number.substr(0, number.find_first_of("eE"));
    std::size_t const first = mantissa.find_first_of("123456789");
    std::size_t const point = std::min(mantissa.find('.'), mantissa.size());
    std::int64_t exponent = static_cast<std::int64_t>(point) - static_cast<std::int64_t>(first);
    if (mantissa.size() < number.size()) {
        std::string_view shown = number.substr(mantissa.size() + 1);
        bool const down = TakeSign(shown);
        std::int64_t magnitude = 0;
        auto const read = std::from_chars(shown.data(), shown.data() + shown.size(), magnitude);
        constexpr std::int64_t beyondAnyNumber = std::numeric_limits<std::int32_t>::max();
        if (read.ec != std::errc() || magnitude > beyondAnyNumber) magnitude = beyondAnyNumber;
        exponent += down ? -magnitude : magnitude;
    }
    return exponent;
}

struct Magnitude {
    std::uint64_t value = 0;  // at most 2^32, which stands for everything that does not fit 32 bits
    bool found = false;

    bool Fits() const { return value <= std::numeric_limits<std::uint32_t>::max(); }
};

constexpr std::uint64_t tooLarge = std::uint64_t{1} << 32;

/// Reads digits, and goes over all of them also when the value has long become too large.
Magnitude ReadDecimal(std::string_view text)
{
    Magnitude read;
    Walk walk(text);
    for (int count = 8; count == 8;) {
        count = walk.TakeDigits(read.value);
        read.value = std::min(read.value, tooLarge);
        read.found |= count > 0;
    }
    return read;
}

/// As in the extraction, one prefix is taken even if no digit follows; that is a failure then.
Magnitude ReadHexadecimal(std::string_view text)
{
    if (text.size() > 1 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X')) text.remove_prefix(2);
    Magnitude read;
    for (char const c : text) {
        char const letter = text::ToLower(c);
        unsigned digit = static_cast<unsigned char>(c) - unsigned{'0'};
        if (letter >= 'a' && letter <= 'f')
            digit = static_cast<unsigned>(letter - 'a') + 10;
        else if (digit > 9)
            break;
        read.found = true;
        read.value = read.value * 16 + digit;
        if (read.value > tooLarge) read.value = tooLarge;
    }
    return read;
}

/// What stands behind white space and sign.
Magnitude ReadMagnitude(std::string_view text, bool hex)
{
    return hex ? ReadHexadecimal(text) : ReadDecimal(text);
}

// What is not plain is read by functions of their own, whose frames the plain ways do without.

[[gnu::noinline]] bool ReadAny(std::string_view text, double & out) noexcept
{
    text = SkipSpace(text);
    if (text.empty()) return false;
    bool const negative = TakeSign(text);

    DecimalText const number = ScanDecimal(text);
    if (!number.complete) {
        out = 0.0;
        return false;
    }
    double value = 0.0;
    bool fits = true;
    if (number.digits <= 19 && number.exponent <= 0 && number.exponent >= -maxExactDigits) {
        value = Fraction(number.mantissa, -number.exponent);
    } else {
        auto const result = std::from_chars(text.data(), text.data() + number.size, value);
        if (result.ec == std::errc::result_out_of_range) {
            fits = DecimalExponent(text.substr(0, number.size)) < 0;
            value = fits ? 0.0 : std::numeric_limits<double>::max();
        }
    }
    out = WithSign(value, negative);
    return fits;
}

[[gnu::noinline]] bool ReadRoomy(std::string_view text, bool hex, std::int32_t & out) noexcept
{
    text = SkipSpace(text);
    if (text.empty()) return false;
    bool const negative = TakeSign(text);
    Magnitude const magnitude = ReadMagnitude(text, hex);
    std::int64_t const read = static_cast<std::int64_t>(magnitude.value);
    return Narrow(negative ? -read : read, out) && magnitude.found;
}

bool ReadRoomy(std::string_view text, double & out) noexcept
{
    return ReadPlain(text, out) || ReadAny(text, out);
}

bool ReadRoomy(std::string_view text, bool hex, std::uint32_t & out) noexcept
{
    text = SkipSpace(text);
    if (text.empty()) return false;
    bool const negative = TakeSign(text);
    Magnitude const read = ReadMagnitude(text, hex);
    if (!read.Fits()) {
        out = std::numeric_limits<std::uint32_t>::max();
        return false;
    }
    std::uint32_t const value = static_cast<std::uint32_t>(read.value);
    out = negative ? 0u - value : value;
    return read.found;
}

}  // namespace

std::string Fixed(double v, int precision, bool trim)
{
    constexpr double exactLimit = 9007199254740992.0;  // 2^53
    bool const exact = precision <= maxFixedDigits && std::fabs(v) < exactLimit;
    return exact ? FixedExact(v, precision, trim) : FixedAny(v, precision, trim);
}

std::string Decimal(std::uint64_t magnitude, bool negative)
{
    if (magnitude < powersOfTen[14])
        return ShortText([&](char * at) { return WriteWhole(at, magnitude, negative); });
    char buffer[24] = {'-'};
    char * const first = buffer + static_cast<int>(negative);
    char * const end = std::to_chars(first, std::end(buffer), magnitude).ptr;
    return std::string(buffer, end);
}

bool ReadDouble(std::string_view text, double & out) noexcept
{
    return ReadRoomy(RoomyText(text).View(), out);
}
bool ReadDouble(std::string const & text, double & out) noexcept
{
    return ReadPlain(text, out) || ReadRoomy(RoomyText(text).View(), out);
}
bool ReadInt(std::string_view text, bool hex, std::int32_t & out) noexcept
{
    return ReadRoomy(RoomyText(text).View(), hex, out);
}
bool ReadInt(std::string const & text, bool hex, std::int32_t & out) noexcept
{
    std::int64_t read = 0;
    if (!hex && ReadPlain(text, read)) return Narrow(read, out);
    return ReadRoomy(RoomyText(text).View(), hex, out);
}
bool ReadUInt(std::string_view text, bool hex, std::uint32_t & out) noexcept
{
    return ReadRoomy(RoomyText(text).View(), hex, out);
}

}  // namespace qrtcl::number
