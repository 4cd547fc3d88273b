// Base64: all forms against each other, the way back, and strict against lenient.
#include "Fuzz.h"
#include "streams/LCBase64.h"

/// The text of a block, which must be there.
template <typename Char> static std::string Taken(Char * block, LCUInt64 length)
{
    std::string const text(block, block + length);
    std::free(block);
    return text;
}

void Fuzz(Input input)
{
    std::string const any = input.Rest();
    LCString const bytes(any), text = LCBase64::Encode(bytes);
    auto const * const data = reinterpret_cast<unsigned char const *>(any.data());
    LCUInt64 length = 0;
    char * const encoded = LCBase64::Encode(data, any.size(), length);
    RequireEqual("block with a zero", Taken(encoded, length + 1), text.str() + '\0');
    RequireEqual("by count", LCBase64::Encode(data, static_cast<unsigned int>(any.size())).str(), text.str());
    unsigned char * const decoded = LCBase64::Decode(text, length);
    RequireEqual("the way back", Taken(decoded, length), any);
    // In place, whole and in part.
    std::size_t const half = any.size() / 2;
    LCString own = bytes;
    LCBase64::Encode(own, own);
    LCBase64::Decode(own, own);
    LCBase64::Encode(reinterpret_cast<unsigned char const *>(own.c_str()) + half, any.size() - half, own);
    RequireEqual("in place", LCBase64::Decode(own).str(), any.substr(half));

    LCUInt64 bad = 0;
    RequireEqual("strict reads what was written", LCBase64::DecodeStrict(text, own, bad) && own == bytes, true);
    length = 99;
    unsigned char * const lenient = LCBase64::Decode(bytes, length);
    RequireEqual("whole groups", lenient != nullptr, any.size() % 4 == 0);
    RequireEqual("length left", lenient != nullptr || length == 99, true);
    RequireEqual("lenient", lenient != nullptr ? Taken(lenient, length) : "", LCBase64::Decode(bytes).str());

    own = bytes;
    bool const canonical = LCBase64::DecodeStrict(own, own, bad);
    RequireEqual("strict takes nothing else", canonical, LCBase64::Encode(LCBase64::Decode(bytes)) == bytes);
    RequireEqual("strict gives the same", own.str(), canonical ? LCBase64::Decode(bytes).str() : "");
    RequireEqual("strict tells where", bad <= any.size(), !canonical);
    if (canonical) return;
    // What stands in front of the bad byte begins a good text, and with the byte it does not.
    auto const begins = [&](LCUInt64 size) {
        LCUInt64 at = 0;
        LCString const front(any.substr(0, size)), rests[] = {"", "=", "A", "AA", "AAA"};
        return std::ranges::any_of(rests, [&](auto & r) { return LCBase64::DecodeStrict(front + r, own, at); });
    };
    RequireEqual("good until there and no longer", begins(bad) && (bad == any.size() || !begins(bad + 1)), true);
}
