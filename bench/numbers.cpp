// Numbers to stored text and back, units.

#include <charconv>
#include <cmath>
#include <cstring>

#include "Bench.h"
#include "foundation/LCString.h"
#include "units/LCUnitMan.h"

#ifdef PEER_FAST_FLOAT
#include <fast_float/fast_float.h>
#endif
#ifdef PEER_FMT
#include <fmt/format.h>
#endif

namespace {

constexpr std::size_t count = 100000;

/// Text as the family stores it, by the language's own conversion.
void StoredByToChars(std::string & text, double v, int precision)
{
    char buffer[400];
    char * end = std::to_chars(buffer, buffer + sizeof buffer, v, std::chars_format::fixed, precision).ptr;
    while (end[-1] == '0') --end;
    if (end[-1] == '.') --end;
    text.assign(buffer, end);
}

/// Four fifths machine sizes with up to three decimals, one fifth computed numbers with all digits.
std::vector<double> MachineNumbers()
{
    auto random = bench::Random();
    std::vector<double> values(count);
    for (std::size_t i = 0; i < count; ++i) {
        double const millimetres = (static_cast<double>(random() % 6000000) - 3000000.0) / 1000.0;
        values[i] = i % 5 != 0 ? millimetres : millimetres / 7.0;
    }
    return values;
}

void ToText(std::string const & workload, int precision, std::vector<double> const & values)
{
    for (double const v : values) {
        std::string expected;
        StoredByToChars(expected, v, precision < 0 ? 12 : precision);
        bench::Require(LCString(v, precision, true).str() == expected, workload.c_str());
    }
    bench::Register(workload, "ours", count, [&values, precision] {
        for (double const v : values) benchmark::DoNotOptimize(LCString(v, precision, true));
    });
    bench::Register(workload, "to_chars", count, [&values, precision] {
        for (double const v : values) {
            std::string text;
            StoredByToChars(text, v, precision < 0 ? 12 : precision);
            benchmark::DoNotOptimize(text);
        }
    });
#ifdef PEER_FMT
    bench::Register(workload, "fmt", count, [&values, precision] {
        for (double const v : values) {
            std::string text = fmt::format("{:.{}f}", v, precision < 0 ? 12 : precision);
            while (text.back() == '0') text.pop_back();
            if (text.back() == '.') text.pop_back();
            benchmark::DoNotOptimize(text);
        }
    });
#endif
    bench::Register(workload, "snprintf", count, [&values, precision] {
        for (double const v : values) {
            char buffer[400];
            int length = std::snprintf(buffer, sizeof buffer, "%.*f", precision < 0 ? 12 : precision, v);
            while (buffer[length - 1] == '0') --length;
            if (buffer[length - 1] == '.') --length;
            std::string text(buffer, static_cast<std::size_t>(length));
            benchmark::DoNotOptimize(text);
        }
    });
}

void FromText(std::vector<LCString> const & texts)
{
    std::string const workload = "W02.text-to-double";
    for (LCString const & text : texts) {
        bench::Require(text.AsDouble() == std::strtod(text.c_str(), nullptr), workload.c_str());
    }
    bench::Register(workload, "ours", count, [&texts] {
        for (LCString const & text : texts) benchmark::DoNotOptimize(text.AsDouble());
    });
    bench::Register(workload, "from_chars", count, [&texts] {
        for (LCString const & text : texts) {
            double v = 0.0;
            std::from_chars(text.c_str(), text.c_str() + text.size(), v);
            benchmark::DoNotOptimize(v);
        }
    });
#ifdef PEER_FAST_FLOAT
    bench::Register(workload, "fast_float", count, [&texts] {
        for (LCString const & text : texts) {
            double v = 0.0;
            fast_float::from_chars(text.c_str(), text.c_str() + text.size(), v);
            benchmark::DoNotOptimize(v);
        }
    });
#endif
    bench::Register(workload, "strtod", count, [&texts] {
        for (LCString const & text : texts) benchmark::DoNotOptimize(std::strtod(text.c_str(), nullptr));
    });
}

void Integers(std::vector<int> const & values, std::vector<LCString> const & texts)
{
    for (std::size_t i = 0; i < count; ++i) {
        bench::Require(texts[i].str() == std::to_string(values[i]) && texts[i].AsInt() == values[i], "W03");
    }
    bench::Register("W03.int-to-text", "ours", count, [&values] {
        for (int const v : values) benchmark::DoNotOptimize(LCString(v));
    });
    bench::Register("W03.int-to-text", "std::to_string", count, [&values] {
        for (int const v : values) benchmark::DoNotOptimize(std::to_string(v));
    });
#ifdef PEER_FMT
    bench::Register("W03.int-to-text", "fmt", count, [&values] {
        for (int const v : values) benchmark::DoNotOptimize(fmt::format_int(v).str());
    });
#endif
    bench::Register("W03.text-to-int", "ours", count, [&texts] {
        for (LCString const & text : texts) benchmark::DoNotOptimize(text.AsInt());
    });
    static std::vector<LCString> shorts;
    for (std::size_t i = 0; shorts.size() < count; i = (i + 1) % count) {
        if (texts[i].size() <= 7) shorts.push_back(texts[i]);
    }
    bench::RegisterBound("W03.text-to-int", "ours, where none has more than 7 digits", count, [] {
        for (LCString const & text : shorts) benchmark::DoNotOptimize(text.AsInt());
    });
    bench::Register("W03.text-to-int", "from_chars", count, [&texts] {
        for (LCString const & text : texts) {
            int v = 0;
            std::from_chars(text.c_str(), text.c_str() + text.size(), v);
            benchmark::DoNotOptimize(v);
        }
    });
    bench::Register("W03.text-to-int", "strtol", count, [&texts] {
        for (LCString const & text : texts) benchmark::DoNotOptimize(std::strtol(text.c_str(), nullptr, 10));
    });
}

void Units(std::vector<double> const & values)
{
    bench::Register("W18.convert-distance", "ours", count, [&values] {
        for (double const v : values) benchmark::DoNotOptimize(LCUnitMan::ConvertDistance(v, 0, 1));
    });
    bench::Register("W18.convert-distance", "multiply+round", count, [&values] {
        for (double const v : values)
            benchmark::DoNotOptimize(std::round(v * 0.03937007874015748 * 1000.0) / 1000.0);
    });
}

}  // namespace

int main(int argc, char ** argv)
{
    static std::vector<double> const machine = MachineNumbers();
    static std::vector<double> coordinates = machine;
    for (double & v : coordinates) v = std::round(v * 1000.0) / 1000.0;
    static std::vector<LCString> doubleTexts;
    static std::vector<int> integers;
    static std::vector<LCString> integerTexts;
    auto random = bench::Random();
    for (double const v : machine) {
        char buffer[64];
        char * const end = std::to_chars(buffer, buffer + sizeof buffer, v).ptr;
        doubleTexts.emplace_back(std::string(buffer, end));
        integers.push_back(static_cast<int>(random() >> (33 + random() % 24)) * (random() % 2 != 0 ? 1 : -1));
        integerTexts.emplace_back(LCString(integers.back()));
    }
    ToText("W01.double-to-stored-text", -1, machine);
    ToText("W01.coordinate-to-stored-text", 3, coordinates);
    FromText(doubleTexts);
    Integers(integers, integerTexts);
    Units(coordinates);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
