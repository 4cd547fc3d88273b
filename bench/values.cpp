// Small values: colours by index, and bar codes in order.

#include <algorithm>
#include <memory>
#include <tuple>
#include <unordered_map>
#include <utility>

#include "Bench.h"
#include "colour/LCColor.h"
#include "colour/LCDXFColor.h"
#include "input/LCBarCode.h"

#ifdef PEER_ABSL_MAP
#include <absl/container/flat_hash_map.h>
#endif

namespace {

constexpr std::size_t count = 10'000;

/// Half of them have an index, in no order.
std::vector<LCColor> const & Colours()
{
    static std::vector<LCColor> const colours = [] {
        auto random = bench::Random();
        std::vector<LCColor> made;
        for (std::size_t i = 0; i < count; ++i) {
            auto const number = static_cast<int>(random() % 0x1000000);
            made.push_back(random() % 2 == 0 ? LCDXFColor::Color_From_ACI(1 + number % 255)
                                             : LCColor(number, 255));
        }
        return made;
    }();
    return colours;
}

std::uint64_t Packed(LCColor const & colour)
{
    return std::uint64_t{static_cast<unsigned>(colour.GetTRGB())} << 8 | static_cast<unsigned>(colour.GetA());
}

/// Finds the index through `table`, a map of packed colours.
template <typename Table> void ThroughTable(std::string const & implementation)
{
    bench::RegisterPrepared("W19.colour-to-aci", implementation, count, [] {
        Table table;
        for (int i = 1; i < 256; ++i) table.try_emplace(Packed(LCDXFColor::Color_From_ACI(i)), i);
        auto const find = [](Table const & in, LCColor const & colour) {
            auto const at = in.find(Packed(colour));
            return at == in.end() ? 0 : at->second;
        };
        for (LCColor const & colour : Colours())
            bench::Require(find(table, colour) == LCDXFColor::Color_To_ACI(colour), "W19.colour-to-aci");
        return [table = std::move(table), find] {
            for (LCColor const & colour : Colours()) benchmark::DoNotOptimize(find(table, colour));
        };
    });
}

void ColourIndex()
{
    bench::Register("W19.colour-to-aci", "ours", count, [] {
        for (LCColor const & colour : Colours()) benchmark::DoNotOptimize(LCDXFColor::Color_To_ACI(colour));
    });
    ThroughTable<std::unordered_map<std::uint64_t, int>>("std::unordered_map");
#ifdef PEER_ABSL_MAP
    ThroughTable<absl::flat_hash_map<std::uint64_t, int>>("absl::flat_hash_map");
#endif
}

/// Of few types, the data of one article number.
std::vector<std::pair<std::string, std::string>> Codes()
{
    auto random = bench::Random();
    std::vector<std::pair<std::string, std::string>> codes;
    for (std::size_t i = 0; i < count; ++i) {
        std::string const & type = random() % 2 == 0 ? LCBarCode::BCT_EAN13.str() : LCBarCode::BCT_QR.str();
        codes.emplace_back(type, "ART-" + std::to_string(1'000'000 + random() % 100'000));
    }
    return codes;
}

/// As large as ours, which point to their class, as do their two texts.
struct WideCode {
    WideCode(std::string const & ofType, std::string const & ofData) : type(ofType), data(ofData) {}
    friend bool operator<(WideCode const & a, WideCode const & b)
    {
        return std::tie(a.type.text, a.data.text) < std::tie(b.type.text, b.data.text);
    }
    void const * kind = nullptr;
    bench::WideText type, data;
};
static_assert(sizeof(WideCode) == sizeof(LCBarCode));

std::pair<std::string, std::string> AsTexts(std::pair<std::string, std::string> const & code) { return code; }
std::pair<std::string, std::string> AsTexts(WideCode const & code)
{
    return {code.type.text, code.data.text};
}
std::pair<std::string, std::string> AsTexts(LCBarCode const & code)
{
    return {code.GetType().str(), code.GetData().str()};
}

template <typename Code> void SortCodes(std::string const & workload, std::string const & implementation)
{
    bench::RegisterPrepared(workload, implementation, count, [row = workload + "/" + implementation] {
        auto expected = Codes();
        std::vector<Code> codes;
        for (auto const & [type, data] : expected) codes.emplace_back(type, data);
        std::ranges::sort(expected);
        auto const sort = [codes = std::move(codes)] {
            auto sorted = codes;
            std::sort(sorted.begin(), sorted.end());
            return sorted;
        };
        bench::Require(
            std::ranges::equal(sort(), expected, {}, [](Code const & code) { return AsTexts(code); }),
            row.c_str());
        return [sort] { benchmark::DoNotOptimize(sort()); };
    });
}

}  // namespace

int main(int argc, char * arguments[])
{
    ColourIndex();
    std::string const sorting = "W21.bar-code-sort-1e4";
    SortCodes<LCBarCode>(sorting, "ours");
    SortCodes<std::pair<std::string, std::string>>(sorting, "std::pair");
    SortCodes<WideCode>(bench::Bound(sorting), "the peer over codes of 88 bytes");
    benchmark::Initialize(&argc, arguments);
    benchmark::RunSpecifiedBenchmarks();
}
