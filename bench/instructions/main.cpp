// Runs one hot path 1,000 times inside the function "CountedCalls", for a tool that counts instructions
// there. Usage: hot_paths; prints the names. hot_paths NAME

#include <cstdio>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "QRTCL_DataTypes.h"
#include "documents/LHCDocument.h"

namespace {

/// Keeps a result that nobody uses.
template <typename Value> void Keep(Value && value) { asm volatile("" : : "g"(&value) : "memory"); }

struct Path {
    std::string_view name;
    std::function<void(int)> run;
};

struct Receiver {
    void OnValue(int & value) { sum += value; }
    int sum = 0;
};

std::vector<Path> Paths()
{
    static LCString const size("-1234.567"), digits("-1234.5714285714287"), name("Punch 0815"),
        upper("PUNCH 0815");
    static LCString const text(std::string(1000, ' ') + "needle");
    static LCGUID const guid;
    static LCDateTime const date(2026, 11, 23, 12, 0, 0, 0, 60), other(2027, 1, 1, 0, 0, 0, 0, 0);
    static Receiver receiver;
    static LCEvent1Param<int &> silent, heard;
    static LCEvent1Param<int &>::LCHandler handler(receiver, &Receiver::OnValue);
    heard << handler;
    static LCRWCriticalSection lock;
    static LHCDocument small, large;
    auto const fill = [](LHCDocument & document, int children) -> LCParagraph & {
        LCParagraph & root = document.GetRootParagraph();
        for (int i = 0; i < children; ++i) root.SetParameterAsInteger(LCString("p") + LCString(i), i);
        return root;
    };
    LCParagraph & thousand = fill(small, 1000);
    LCParagraph & many = fill(large, 100'000);
    static LCColor const colour(200, 100, 50);

    return {
        {"nothing", [](int i) { Keep(i); }},  // the loop itself
        {"number to stored text", [](int i) { Keep(LCString(i / 8.0, -1, true)); }},
        {"text of 9 bytes to number", [](int) { Keep(size.AsDouble()); }},
        {"text of 19 bytes to number", [](int) { Keep(digits.AsDouble()); }},
        {"equal without case, 10 bytes", [](int) { Keep(name.EqCI(upper)); }},
        {"search without case, 1006 bytes", [](int) { Keep(text.FindCI("NEEDLE")); }},
        {"GUID to text", [](int) { Keep(guid.AsStr(true)); }},
        {"a date and half a second", [](int) { Keep(date + LCTimeSpan(0.5)); }},
        {"a date and 50 days", [](int) { Keep(date + LCTimeSpan(50 * 86400.0)); }},
        {"order of dates of two zones", [](int) { Keep(date < other); }},
        {"event without receivers", [](int i) { silent(i); }},
        {"event with one receiver", [](int i) { heard(i); }},
        {"lock and unlock for reading", [](int) { Keep(lock.LockReader(0)), lock.UnlockReader(); }},
        {"child by name among 1,000", [&thousand](int) { Keep(thousand.GetParagraph("p777")); }},
        {"child by name among 100,000", [&many](int) { Keep(many.GetParagraph("p777")); }},
        {"colour to drawing colour", [](int) { Keep(LCDXFColor::Color_To_ACI(colour)); }},
        {"convert a length", [](int i) { Keep(LCUnitMan::ConvertDistance(i, 0, 1)); }},
    };
}

}  // namespace

extern "C" __attribute__((noinline)) void CountedCalls(std::function<void(int)> const & run)
{
    for (int i = 0; i < 1000; ++i) run(i);
}

int main(int argc, char ** argv)
{
    for (Path const & path : Paths()) {
        if (argc < 2) std::printf("%.*s\n", static_cast<int>(path.name.size()), path.name.data());
        if (argc < 2 || path.name != argv[1]) continue;
        for (int i = 0; i < 100; ++i) path.run(i);
        CountedCalls(path.run);
    }
}
