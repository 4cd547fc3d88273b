#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

// How the texts of dates and spans are put together: fields, and format strings of runs of letters.
namespace qrtcl::time {

/// Collects a text in a block on the stack that the fixed layouts always fit.
class TextBlock {
public:
    void Char(char c) noexcept { mcaBlock[mivUsed++] = c; }
    /// At least `width` characters, filled up with "0" on the left, in front of a minus sign too.
    void Field(int value, int width) noexcept
    {
        if (width == 2 && value >= 0 && value < 100) {
            Pair(value);
        } else if (width == 4 && value >= 0 && value < 10000) {
            Pair(value / 100);
            Pair(value % 100);
        } else if (width == 3 && value >= 0 && value < 1000) {
            Char(static_cast<char>('0' + value / 100));
            Pair(value % 100);
        } else {
            AnyField(value, width);
        }
    }
    /// "HH:mm:SS".
    void Time(int hours, int minutes, int seconds) noexcept
    {
        Field(hours, 2);
        Char(':');
        Field(minutes, 2);
        Char(':');
        Field(seconds, 2);
    }
    /// ",sss".
    void Milliseconds(int milliseconds) noexcept
    {
        Char(',');
        Field(milliseconds, 3);
    }
    /// False if one more element of a format might not fit.
    bool HasRoom() const noexcept { return mivUsed + largestElement <= mcaBlock.size(); }
    void Clear() noexcept { mivUsed = 0; }
    std::string Text() const { return std::string(View()); }
    std::string_view View() const noexcept { return {mcaBlock.data(), mivUsed}; }

private:
    static constexpr std::size_t largestElement = 32;

    void Pair(int value) noexcept
    {
        Char(static_cast<char>('0' + value / 10));
        Char(static_cast<char>('0' + value % 10));
    }
    void AnyField(int value, int width) noexcept;

    std::array<char, 256> mcaBlock;
    std::size_t mivUsed = 0;
};

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

/// Copies what is no token letter; each whole run of a token letter goes to `put(block, run)`.
template <typename Put> std::string Format(std::string_view format, TokenLetters const & letters, Put put)
{
    std::string text;
    TextBlock block;
    for (std::size_t at = 0; at < format.size();) {
        if (!block.HasRoom()) {
            text += block.View();
            block.Clear();
        }
        char const letter = format[at];
        if (!letters.Contains(letter)) {
            block.Char(letter);
            ++at;
            continue;
        }
        std::size_t const begin = at;
        while (at < format.size() && format[at] == letter) ++at;
        put(block, Run(letter, at - begin));
    }
    text += block.View();
    return text;
}

}  // namespace qrtcl::time
