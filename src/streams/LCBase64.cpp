#include "streams/LCBase64.h"

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <limits>
#include <utility>

#include "streams/detail/Base64Codec.h"

namespace base64 = qrtcl::base64;

constinit std::array<char, 64> const LCBase64::mcaEncodingTable = base64::alphabet;
constinit std::array<char, 256> const LCBase64::mcaDecodingTable = base64::Values<char>(0);
constinit std::array<int, 3> const LCBase64::miaModTable = {0, 2, 1};

namespace {

constexpr LCUInt64 groupBytes = 3;
constexpr LCUInt64 groupChars = 4;
/// Beyond it a text has no length.
constexpr LCUInt64 maxEncodable = (std::numeric_limits<std::size_t>::max() - 1) / groupChars;

unsigned char const * Bytes(LCString const & text)
{
    return reinterpret_cast<unsigned char const *>(text.c_str());
}

LCUInt64 EncodedLength(LCUInt64 count) { return (count + 2) / groupBytes * groupChars; }

LCUInt64 DecodedLength(char const * text, LCUInt64 count)
{
    LCUInt64 const length = count / groupChars * groupBytes;
    if (count == 0) return length;
    return length - (text[count - 1] == '=' ? 1 : 0) - (text[count - 2] == '=' ? 1 : 0);
}

void EncodeTo(unsigned char const * data, LCUInt64 count, char * text)
{
    base64::Codec const & codec = base64::Codecs().front();
    LCUInt64 const whole = count / groupBytes;
    LCUInt64 const rest = count % groupBytes;
    codec.Encode(data, whole, text);
    if (rest == 0) return;

    unsigned char last[groupBytes] = {};
    std::copy_n(data + whole * groupBytes, rest, last);
    char * const end = text + (whole + 1) * groupChars;
    codec.Encode(last, 1, end - groupChars);
    std::fill_n(end - LCBase64::miaModTable[rest], LCBase64::miaModTable[rest], '=');
}

/// False if a byte in front of the last group is outside the alphabet.
bool DecodeTo(char const * text, LCUInt64 count, unsigned char * data, LCUInt64 length)
{
    if (count == 0) return true;
    base64::Codec const & codec = base64::Codecs().front();
    LCUInt64 const whole = count / groupChars - 1;
    bool const good = codec.Decode(text, whole, data);

    unsigned char last[groupBytes];
    codec.Decode(text + whole * groupChars, 1, last);
    std::copy_n(last, length - whole * groupBytes, data + whole * groupBytes);
    return good;
}

/// Lets `fill` write `length` bytes into `out`; the bytes that it reads begin at `source`. The storage of
/// `out` serves again unless it is the source. False, and an empty `out`, if there is no memory.
template <typename Fill>
bool FillText(LCString & out, LCUInt64 length, void const * source, Fill fill) noexcept
{
    try {
        char const * const from = static_cast<char const *>(source);
        bool const aliased =
            !std::less<>()(from, out.c_str()) && !std::less<>()(out.c_str() + out.size(), from);
        if (aliased || length > std::numeric_limits<unsigned int>::max()) {
            std::string fresh(length, '\0');
            fill(fresh.data());
            out = LCString(std::move(fresh));
        } else {
            out.resize(static_cast<unsigned int>(length));
            fill(&out[0]);
        }
        return true;
    } catch (...) {
        out.clear();
        return false;
    }
}

}  // namespace

char * LCBase64::Encode(unsigned char const * data, LCUInt64 count, LCUInt64 & length) noexcept
{
    length = EncodedLength(count);
    if (count > maxEncodable) return nullptr;
    char * const block = static_cast<char *>(std::malloc(groupChars * count + 1));
    if (block == nullptr) return nullptr;
    EncodeTo(data, count, block);
    block[length] = '\0';
    return block;
}

void LCBase64::Encode(unsigned char const * data, LCUInt64 count, LCString & out) noexcept
{
    if (count > maxEncodable) return out.clear();
    FillText(out, EncodedLength(count), data, [&](char * text) { EncodeTo(data, count, text); });
}

void LCBase64::Encode(LCString const & text, LCString & out) noexcept
{
    Encode(Bytes(text), text.size(), out);
}

LCString LCBase64::Encode(LCString const & text) noexcept
{
    LCString out;
    Encode(text, out);
    return out;
}

LCString LCBase64::Encode(unsigned char const * data, unsigned int count) noexcept
{
    LCString out;
    Encode(data, count, out);
    return out;
}

unsigned char * LCBase64::Decode(char const * text, LCUInt64 count, LCUInt64 & length) noexcept
{
    if (count % groupChars != 0) return nullptr;
    length = DecodedLength(text, count);
    unsigned char * const block = static_cast<unsigned char *>(std::malloc(std::max<LCUInt64>(length, 1)));
    if (block != nullptr) DecodeTo(text, count, block, length);
    return block;
}

unsigned char * LCBase64::Decode(LCString const & text, LCUInt64 & length) noexcept
{
    return Decode(text.c_str(), text.size(), length);
}

void LCBase64::Decode(LCString const & text, LCString & out) noexcept
{
    LCUInt64 const count = text.size();
    if (count % groupChars != 0) return out.clear();
    char const * const from = text.c_str();
    LCUInt64 const length = DecodedLength(from, count);
    FillText(out, length, from,
             [&](char * to) { DecodeTo(from, count, reinterpret_cast<unsigned char *>(to), length); });
}

LCString LCBase64::Decode(LCString const & text) noexcept
{
    LCString out;
    Decode(text, out);
    return out;
}

bool LCBase64::DecodeStrict(LCString const & text, LCString & out, LCUInt64 & badPosition) noexcept
{
    char const * const from = text.c_str();
    LCUInt64 const count = text.size();
    LCString decoded;
    bool wholeGroupsGood = false;
    bool done = false;
    if (count % groupChars == 0) {
        LCUInt64 const length = DecodedLength(from, count);
        done = FillText(decoded, length, from, [&](char * to) {
            wholeGroupsGood = DecodeTo(from, count, reinterpret_cast<unsigned char *>(to), length);
        });
    }
    badPosition = FindBadByte(text, wholeGroupsGood && count > 0 ? count - groupChars : 0);
    done = done && badPosition == LCString::npos;
    out = done ? std::move(decoded) : LCString();
    return done;
}

/// The first byte at or after `from`, the start of a group, with which `text` leaves the strict rule; its
/// length if it ends too early, `npos` if it is good.
LCUInt64 LCBase64::FindBadByte(LCString const & text, LCUInt64 from) noexcept
{
    std::string_view const bytes = text.str();
    for (LCUInt64 i = from; i < bytes.size(); ++i) {
        LCUInt64 const place = i % groupChars;
        bool const behindPadding = place == 3 && bytes[i - 1] == '=';
        if (IsBase64Char(static_cast<unsigned char>(bytes[i]))) {
            if (behindPadding) return i;
            continue;
        }
        // "=" ends the text, and the bits of the character in front of it that belong to no byte are 0.
        if (bytes[i] != '=' || place < 2) return i;
        unsigned int const unused = place == 2 ? 0x0F : 0x03;
        if ((Value(static_cast<unsigned char>(bytes[i - 1])) & unused) != 0) return i;
        if (place == 3 && i + 1 < bytes.size()) return i + 1;
    }
    return bytes.size() % groupChars == 0 ? LCString::npos : bytes.size();
}
