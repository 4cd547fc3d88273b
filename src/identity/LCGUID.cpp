#include "identity/LCGUID.h"

#include <array>
#include <string_view>

#include "platform/RandomBytes.h"

namespace {

using HexPairs = std::array<std::array<char, 2>, 256>;

consteval HexPairs MakeHexPairs()
{
    constexpr std::string_view digits = "0123456789ABCDEF";
    HexPairs pairs{};
    for (unsigned i = 0; i < 256; ++i) pairs[i] = {digits[i / 16], digits[i % 16]};
    return pairs;
}
constexpr HexPairs hexPairs = MakeHexPairs();

}  // namespace

LCString LCGUID::NewText()
{
    qrtcl::platform::RandomBlock bytes;
    if (!qrtcl::platform::RandomBytes(bytes)) return {};
    bytes[6] = static_cast<unsigned char>((bytes[6] & 0x0F) | 0x40);  // version 4: random
    bytes[8] = static_cast<unsigned char>((bytes[8] & 0x3F) | 0x80);  // variant of RFC 4122

    std::array<char, 36> text;
    char * out = text.data();
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (i == 4 || i == 6 || i == 8 || i == 10) *out++ = '-';
        *out++ = hexPairs[bytes[i]][0];
        *out++ = hexPairs[bytes[i]][1];
    }
    return std::string(text.data(), text.size());
}

LCGUID::LCGUID(LCString const & text)
{
    std::string_view inner = text.str();
    if (inner.starts_with('{')) inner.remove_prefix(1);
    if (inner.ends_with('}')) inner.remove_suffix(1);
    movText = std::string(inner);
}

LCString LCGUID::WithBraces() const
{
    std::string text;
    text.reserve(movText.size() + 2);
    text += '{';
    text += movText.str();
    text += '}';
    return text;
}
