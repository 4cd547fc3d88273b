#pragma once

#include <array>
#include <cstddef>
#include <cstring>
#include <string>
#include <string_view>

// How the texts of dates and spans are put together. What writes gets the place to write to and gives the
// place behind; the callers have room for what they write, a field taking at most `longestField` bytes.
namespace qrtcl::time {

consteval std::array<char, 200> DigitPairs()
{
    std::array<char, 200> pairs{};
    for (unsigned i = 0; i < 100; ++i) {
        pairs[2 * i] = static_cast<char>('0' + i / 10);
        pairs[2 * i + 1] = static_cast<char>('0' + i % 10);
    }
    return pairs;
}
/// "00" to "99", one behind the other.
inline constexpr std::array<char, 200> digitPairs = DigitPairs();

constexpr std::size_t longestField = 11;

/// Room for each of the fixed layouts, whatever the fields hold.
using LayoutBlock = std::array<char, 12 * longestField>;

inline std::string TextUpTo(char const * end, LayoutBlock const & block)
{
    return std::string(block.data(), end);
}

/// The field rule: at least `width` bytes, filled up with "0" on the left, in front of a minus sign too.
char * PutAnyField(char * out, int value, int width) noexcept;

/// A field of width 2. The forms for the usual widths are only faster.
inline char * PutField2(char * out, int value) noexcept
{
    if (static_cast<unsigned int>(value) >= 100) return PutAnyField(out, value, 2);
    std::memcpy(out, &digitPairs[2 * static_cast<unsigned int>(value)], 2);
    return out + 2;
}

inline char * PutField3(char * out, int value) noexcept
{
    if (static_cast<unsigned int>(value) >= 1000) return PutAnyField(out, value, 3);
    *out = static_cast<char>('0' + value / 100);
    return PutField2(out + 1, value % 100);
}

inline char * PutField4(char * out, int value) noexcept
{
    if (static_cast<unsigned int>(value) >= 10000) return PutAnyField(out, value, 4);
    return PutField2(PutField2(out, value / 100), value % 100);
}

inline char * PutChar(char * out, char c) noexcept
{
    *out = c;
    return out + 1;
}

/// Three fields of width 2 with a separator between them.
inline char * PutThree(char * out, int first, int second, int third, char separator) noexcept
{
    out = PutChar(PutField2(out, first), separator);
    out = PutChar(PutField2(out, second), separator);
    return PutField2(out, third);
}

/// ",sss".
inline char * PutMilliseconds(char * out, int milliseconds) noexcept
{
    return PutField3(PutChar(out, ','), milliseconds);
}

/// Which bytes open a run in a format string.
class TokenLetters {
public:
    consteval explicit TokenLetters(std::string_view letters)
    {
        for (char const c : letters) mbaIsToken[static_cast<unsigned char>(c)] = true;
    }
    constexpr bool Contains(char c) const noexcept { return mbaIsToken[static_cast<unsigned char>(c)]; }

private:
    std::array<bool, 256> mbaIsToken{};
};

/// One number for a run of `count` equal letters, for the labels of a switch. All runs from 8 on are the
/// same.
constexpr int Run(char letter, std::size_t count) noexcept
{
    return letter * 8 + static_cast<int>(count < 8 ? count : 0);
}

/// Copies what is no token letter. Each whole run of a token letter goes to `put(out, run)`, which writes at
/// most three fields and gives the place behind.
template <typename Put> std::string Format(std::string const & format, TokenLetters const & letters, Put put)
{
    constexpr std::size_t largest = 3 * longestField;
    std::string text(format.size() + largest, '\0');
    char * out = text.data();
    char const * full = out + format.size();
    char const * const end = format.data() + format.size();
    for (char const * at = format.data(); at != end;) {
        if (out > full) {
            auto const used = static_cast<std::size_t>(out - text.data());
            text.resize(2 * used + largest);
            out = text.data() + used;
            full = text.data() + text.size() - largest;
        }
        char const letter = *at;
        if (!letters.Contains(letter)) {
            *out++ = letter;
            ++at;
            continue;
        }
        char const * const begin = at++;
        while (*at == letter) ++at;  // the zero byte behind the text ends the last run
        out = put(out, Run(letter, static_cast<std::size_t>(at - begin)));
    }
    text.resize(static_cast<std::size_t>(out - text.data()));
    return text;
}

}  // namespace qrtcl::time
