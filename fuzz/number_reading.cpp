// Numbers out of text, against the standard streams: the result, and what is left in the target.
#include "Fuzz.h"

template <typename Number> static void Compare(char const * what, std::string const & text, bool hex, auto read)
{
    Number expected = 77;
    std::istringstream in(text);
    in.imbue(std::locale::classic());
    bool const good = static_cast<bool>(in >> (hex ? std::hex : std::dec) >> expected);
    Number got = 77;
    RequireEqual(what, read(got), good);
    RequireEqual(what, std::memcmp(&got, &expected, sizeof got), 0);
}

void Fuzz(Input input)
{
    std::string const text = input.Rest();
    LCString s(text);
    Compare<double>("double", text, false, [&](double & out) { return s.AsDoubleWithCheck(out); });
    std::string dug = text;
    for (char & c : dug) c = c == ',' || c == '-' || c == '.' || (c >= '0' && c <= '9') ? c : ' ';
    RequireEqual("dug out", s.IgnoreCharactersToDouble(), LCString(dug).AsDouble(0.0));
    for (bool const hex : {false, true}) {
        Compare<int>("int", text, hex, [&](int & out) { return s.AsIntWithCheck(out, hex); });
        // A native long has the range of 32 bits, and all of it is written or nothing.
        Compare<int>("native long", text, hex, [&](int & out) {
            long native = 0x100000000L + out;
            bool const good = s.AsLongWithCheck(native, hex);
            out = static_cast<int>(native);
            return good && native == out;
        });
        Compare<LCLong>("long", text, hex, [&](LCLong & out) { return s.AsLongWithCheck(out, hex); });
        Compare<unsigned>("unsigned", text, hex, [&](unsigned & out) { return s.AsUIntWithCheck(out, hex); });
    }
}
