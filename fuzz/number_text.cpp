// Numbers as text, against the standard streams.
#include <iomanip>

#include "Fuzz.h"

template <typename Number> static std::string Stream(Number v, int precision, int width, char fill, bool hex)
{
    std::ostringstream out;
    out.imbue(std::locale::classic());
    out << std::fixed << std::setprecision(precision < 0 ? 6 : precision) << (hex ? std::hex : std::dec);
    out << std::right << std::setw(width) << std::setfill(fill) << v;
    return out.str();
}

void Fuzz(Input input)
{
    double const v = input.Take<double>();
    int const i = input.Take<int>(), precision = input.Take<signed char>() % 60, width = input.Take<signed char>();
    char const fill = input.Take<char>();
    bool const hex = input.Take<char>() % 2 != 0;
    long long const n = input.Take<long long>() >> input.Take<unsigned char>() % 64;

    RequireEqual("integer", LCString(i, width, fill, hex).str(), Stream(i, 0, width, fill, hex));
    RequireEqual("long integer", LCString(n).str(), std::to_string(n));
    RequireEqual("double", LCString(v, precision, width, fill).str(), Stream(v, precision, width, fill, false));
    for (bool const trim : {false, true}) {
        int const digits = precision < 0 ? 12 : precision;
        std::string text = Stream(v, digits, 0, ' ', false);
        if (precision < 0 || (trim && precision > 0)) {
            while (text.back() == '0' && text[text.size() - 2] != '.') text.pop_back();
            if (text.ends_with(".0")) text.resize(text.size() - 2);
        }
        RequireEqual("stored double", LCString(v, precision, trim).str(), text);
    }
}
