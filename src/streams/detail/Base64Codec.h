#pragma once

#include <array>
#include <cstddef>
#include <span>

#include "foundation/Export.h"

// The conversion of whole groups, three bytes against four characters, in each way that this processor can
// run. Padding and lengths are LCBase64's.
namespace qrtcl::base64 {

consteval std::array<char, 64> Alphabet()
{
    std::array<char, 64> letters{};
    char const * next = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    for (char & letter : letters) letter = *next++;
    return letters;
}
inline constexpr std::array<char, 64> alphabet = Alphabet();

/// The value of each byte of the alphabet, and `foreign` for every other byte.
template <typename Value> consteval std::array<Value, 256> Values(Value foreign)
{
    std::array<Value, 256> values{};
    values.fill(foreign);
    for (unsigned i = 0; i < alphabet.size(); ++i) {
        values[static_cast<unsigned char>(alphabet[i])] = static_cast<Value>(i);
    }
    return values;
}

/// One way to convert; all of them give the same bytes.
struct Codec {
    char const * name;
    void (*Encode)(unsigned char const * bytes, std::size_t groups, char * text) noexcept;
    /// A byte outside the alphabet counts as 0. False if there was one.
    bool (*Decode)(char const * text, std::size_t groups, unsigned char * bytes) noexcept;
};

/// The ways this processor can run, the fastest first; the last one is portable.
QRTCL_API std::span<Codec const> Codecs() noexcept;

}  // namespace qrtcl::base64
