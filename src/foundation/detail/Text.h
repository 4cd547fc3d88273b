#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

// The algorithms on text, over views. Every operation without case goes through the one pair of fold tables,
// so that equality, order, search and wildcards agree.
namespace qrtcl::text {

consteval std::array<char, 256> FoldTable(int first, int last, int shift)
{
    std::array<char, 256> table{};
    for (int i = 0; i < 256; ++i) table[static_cast<unsigned>(i)] = static_cast<char>(i);
    for (int c = first; c <= last; ++c) table[static_cast<unsigned>(c)] = static_cast<char>(c + shift);
    return table;
}
inline constexpr std::array<char, 256> lowerTable = FoldTable('A', 'Z', 'a' - 'A');
inline constexpr std::array<char, 256> upperTable = FoldTable('a', 'z', 'A' - 'a');

constexpr char ToLower(char c) { return lowerTable[static_cast<unsigned char>(c)]; }
constexpr char ToUpper(char c) { return upperTable[static_cast<unsigned char>(c)]; }

/// White space of the classic locale.
constexpr bool IsSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

/// Short strings mostly keep their bytes in the string object: words of up to 16 bytes can be read there,
/// whatever the length of the text; results must not depend on what stands behind it. The offset of the text
/// in the object, or npos if it is not there.
inline std::size_t OffsetInside(std::string const & text) noexcept
{
    std::size_t const offset =
        std::bit_cast<std::uintptr_t>(text.data()) - std::bit_cast<std::uintptr_t>(&text);
    return offset <= sizeof text - 16 ? offset : std::string::npos;
}

bool EqualCI(std::string_view a, std::string_view b) noexcept;
/// The same, faster if they are short.
bool EqualCI(std::string const & a, std::string const & b) noexcept;

/// The order of the upper-case forms: negative, zero or positive.
int CompareUpper(std::string_view a, std::string_view b) noexcept;

/// First place at or after `pos`, or npos; the empty needle is not found at the very end. Linear on every
/// input.
std::size_t FindCI(std::string_view text, std::string_view needle, std::size_t pos) noexcept;

/// Puts the text with every match replaced into `result`, which may be what the text is in; what was put in
/// is not searched. False, and `result` as it was, if there is no match; the empty `from` has none.
bool Replace(std::string_view text, std::string_view from, std::string_view to, bool ignoreCase,
             std::string & result);

/// Both texts end at their first zero byte.
bool MatchWildcards(std::string_view subject, std::string_view pattern, bool ignoreCase) noexcept;

std::string_view TrimLeft(std::string_view text, char c) noexcept;
std::string_view TrimRight(std::string_view text, char c) noexcept;

}  // namespace qrtcl::text
