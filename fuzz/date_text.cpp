// Format strings of dates, against a table of their runs. Those of spans go through the same loop.
#include "Fuzz.h"
#include "time/LCDateTime.h"

static std::string Field(int value, std::size_t width)
{
    std::string const digits = std::to_string(value);
    return std::string(width > digits.size() ? width - digits.size() : 0, '0') + digits;
}

static std::string Format(std::string const & format, std::map<std::string, std::string> runs)
{
    std::string text;
    for (std::size_t i = 0; i < format.size();) {
        std::size_t const end = std::min(format.find_first_not_of(format[i], i), format.size());
        bool const token = std::string_view("YMDHhmSstZ").find(format[i]) != std::string_view::npos;
        std::string const run = format.substr(i, token ? end - i : 1);
        text += token ? runs[run] : run;
        i += run.size();
    }
    return text;
}

void Fuzz(Input input)
{
    int v[8];
    bool const wild = input.Take<char>() % 2 != 0;
    for (int & field : v) field = wild ? input.Take<int>() : input.Take<unsigned char>() % 60;
    std::string const format = input.Rest();

    int const bias = LCDateTime::GetCurrentTimeZoneBias();
    auto const zone = (bias < 0 ? '-' : '+') + Field(std::abs(bias) / 60, 2) + ":" + Field(std::abs(bias) % 60, 2);
    LCDateTime const date(v[0], v[1], v[2], v[3], v[4], v[5], v[6], v[7]);
    RequireEqual("date", date.StrFormat(LCString(format)).str(), Format(format, {
        {"YYYY", Field(v[0], 4)}, {"YY", Field(v[0] % 100, 2)}, {"MM", Field(v[1], 2)}, {"DD", Field(v[2], 2)},
        {"HH", Field(v[3], 2)}, {"hh", Field(v[3] > 12 ? v[3] - 12 : v[3], 2)}, {"mm", Field(v[4], 2)},
        {"SS", Field(v[5], 2)}, {"sss", Field(v[6], 3)}, {"tt", v[3] > 12 ? "PM" : "AM"}, {"ZZ", zone}}));
}
