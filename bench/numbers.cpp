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
std::string StoredByToChars(double v, int precision)
{
    char buffer[400];
    char * end = std::to_chars(buffer, buffer + sizeof buffer, v, std::chars_format::fixed, precision).ptr;
    while (end[-1] == '0') --end;
    if (end[-1] == '.') --end;
    return {buffer, end};
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
    int const digits = precision < 0 ? 12 : precision;
    std::vector<std::string> expected;
    for (double const v : values) expected.push_back(StoredByToChars(v, digits));
    auto const row = [&](char const * implementation, auto make) {
        bench::RegisterEach(workload, implementation, values, make, expected);
    };
    row("ours", [precision](double v) { return LCString(v, precision, true); });
    row("to_chars", [digits](double v) { return StoredByToChars(v, digits); });
#ifdef PEER_FMT
    row("fmt", [digits](double v) {
        std::string text = fmt::format("{:.{}f}", v, digits);
        while (text.back() == '0') text.pop_back();
        if (text.back() == '.') text.pop_back();
        return text;
    });
#endif
    row("snprintf", [digits](double v) {
        char buffer[400];
        int length = std::snprintf(buffer, sizeof buffer, "%.*f", digits, v);
        while (buffer[length - 1] == '0') --length;
        if (buffer[length - 1] == '.') --length;
        return std::string(buffer, static_cast<std::size_t>(length));
    });
}

void FromText(std::vector<double> const & values, std::vector<LCString> const & texts)
{
    auto const row = [&](char const * implementation, auto make) {
        bench::RegisterEach("W02.text-to-double", implementation, texts, make, values);
    };
    row("ours", [](LCString const & text) { return text.AsDouble(); });
    row("from_chars", [](LCString const & text) {
        double v = 0.0;
        std::from_chars(text.c_str(), text.c_str() + text.size(), v);
        return v;
    });
#ifdef PEER_FAST_FLOAT
    row("fast_float", [](LCString const & text) {
        double v = 0.0;
        fast_float::from_chars(text.c_str(), text.c_str() + text.size(), v);
        return v;
    });
#endif
    row("strtod", [](LCString const & text) { return std::strtod(text.c_str(), nullptr); });
}

void Integers(std::vector<int> const & values, std::vector<LCString> const & texts)
{
    auto const toText = [&](char const * implementation, auto make) {
        bench::RegisterEach("W03.int-to-text", implementation, values, make, texts);
    };
    toText("ours", [](int v) { return LCString(v); });
    toText("std::to_string", [](int v) { return std::to_string(v); });
#ifdef PEER_FMT
    toText("fmt", [](int v) { return fmt::format_int(v).str(); });
#endif
    auto const toInt = [&](char const * implementation, auto make) {
        bench::RegisterEach("W03.text-to-int", implementation, texts, make, values);
    };
    toInt("ours", [](LCString const & text) { return text.AsInt(); });
    static std::vector<LCString> shorts;
    for (std::size_t i = 0; shorts.size() < count; i = (i + 1) % count) {
        if (texts[i].size() <= 7) shorts.push_back(texts[i]);
    }
    bench::RegisterBound("W03.text-to-int", "ours, where none has more than 7 digits", count, [] {
        for (LCString const & text : shorts) benchmark::DoNotOptimize(text.AsInt());
    });
    toInt("from_chars", [](LCString const & text) {
        int v = 0;
        std::from_chars(text.c_str(), text.c_str() + text.size(), v);
        return v;
    });
    toInt("strtol", [](LCString const & text) { return std::strtol(text.c_str(), nullptr, 10); });
}

void Units(std::vector<double> const & values)
{
    auto const rounded = [](double v) { return std::round(v * 0.03937007874015748 * 1000.0) / 1000.0; };
    std::vector<double> expected;
    for (double const v : values) expected.push_back(rounded(v));
    std::string const workload = "W18.convert-distance";
    bench::RegisterEach(
        workload, "ours", values, [](double v) { return LCUnitMan::ConvertDistance(v, 0, 1); }, expected);
    bench::RegisterEach(workload, "multiply+round", values, rounded, expected);
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
    FromText(machine, doubleTexts);
    Integers(integers, integerTexts);
    Units(coordinates);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
