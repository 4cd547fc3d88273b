#pragma once

#include <array>

#include "foundation/Export.h"
#include "foundation/LCString.h"
#include "foundation/LCTypes.h"

/// Bytes as text and back: the standard Base64 alphabet with padding (RFC 4648, section 4), in one line.
///
/// `Encode` writes nothing but such text. `Decode` refuses only a length that is no multiple of 4: a byte
/// outside the alphabet counts as an "A", and so does an "=", of which only the last two characters shorten
/// the result. `DecodeStrict` takes exactly what `Encode` writes. Nothing here throws; arguments may be the
/// target itself; any thread may call at any time.
class QRTCL_API LCBase64 {
public:
    /// The character of each value, and the value of each byte: 0 for a byte outside the alphabet.
    static std::array<char, 64> const mcaEncodingTable;
    static std::array<char, 256> const mcaDecodingTable;
    /// The number of "=" at the end for an input length of 0, 1 or 2 modulo 3.
    static std::array<int, 3> const miaModTable;

    /// Zero-terminated text in a block that the caller releases with `free`; `length` does not count the
    /// zero. Null if there is no memory: `length` then holds what it would have been.
    static char * Encode(unsigned char const * data, LCUInt64 count, LCUInt64 & length) noexcept;

    // These give an empty text if there is no memory.

    static void Encode(unsigned char const * data, LCUInt64 count, LCString & out) noexcept;
    static void Encode(LCString const & text, LCString & out) noexcept;
    static LCString Encode(LCString const & text) noexcept;
    static LCString Encode(unsigned char const * data, unsigned int count) noexcept;

    /// A block that the caller releases with `free`, also where `length` is 0. Null for a `count` that is no
    /// multiple of 4, which leaves `length` as it was, or if there is no memory.
    static unsigned char * Decode(char const * text, LCUInt64 count, LCUInt64 & length) noexcept;
    static unsigned char * Decode(LCString const & text, LCUInt64 & length) noexcept;

    // These give an empty text where the form above gives null. Zero bytes come as they are.

    static void Decode(LCString const & text, LCString & out) noexcept;
    static LCString Decode(LCString const & text) noexcept;

    /// Decodes what `Encode` could have written and nothing else. Otherwise false, `out` is empty, and
    /// `badPosition` is that of the first byte with which the text leaves the rule (unused bits that are not
    /// 0 show at the "=" behind them), or the length if it ends too early. It is `npos` in any other case.
    static bool DecodeStrict(LCString const & text, LCString & out, LCUInt64 & badPosition) noexcept;

    /// False for "=", which every padded text holds.
    static bool IsBase64Char(unsigned char c) noexcept
    {
        return mcaEncodingTable[Value(c)] == static_cast<char>(c);
    }

private:
    static unsigned int Value(unsigned char c) noexcept
    {
        return static_cast<unsigned char>(mcaDecodingTable[c]);
    }
    static LCUInt64 FindBadByte(LCString const & text, LCUInt64 from) noexcept;
};
