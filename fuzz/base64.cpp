// Base64: the way back, and strict against lenient.
#include "Fuzz.h"
#include "streams/LCBase64.h"

void Fuzz(Input input)
{
    std::string const any = input.Rest();
    LCString const text = LCBase64::Encode(LCString(any));
    RequireEqual("the way back", LCBase64::Decode(text).str(), any);
    LCString strict;
    LCUInt64 bad = 0;
    RequireEqual("strict reads what was written", LCBase64::DecodeStrict(text, strict, bad), true);
    bool const canonical = LCBase64::DecodeStrict(LCString(any), strict, bad);
    RequireEqual("strict takes nothing else", canonical,
                 LCBase64::Encode(LCBase64::Decode(LCString(any))).str() == any);
    RequireEqual("strict tells where", bad <= any.size(), !canonical);
    // What stands in front of the bad byte begins a good text, and with the byte it does not.
    auto const begins = [&](LCUInt64 size) {
        LCUInt64 at = 0;
        bool good = false;
        for (std::string const rest : {"", "=", "A", "AA", "AAA"})
            good = good || LCBase64::DecodeStrict(LCString(any.substr(0, size) + rest), strict, at);
        return good;
    };
    if (canonical) return;
    RequireEqual("good until there", begins(bad), true);
    RequireEqual("bad from there", bad < any.size() && begins(bad + 1), false);
}
