// A document of a million parameters: built, saved, loaded and compared, with the time of each step and the
// memory; then how the cost of a write grows with the number of parameters under one parent.

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <sys/resource.h>
#include <unistd.h>

#include "QRTCL_DataTypes.h"
#include "documents/LHCDocument.h"

namespace {

double Seconds()
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

/// Bytes that the process holds in memory.
double ResidentBytes()
{
    long pages = 0, resident = 0;
    if (std::FILE * const file = std::fopen("/proc/self/statm", "r")) {
        if (std::fscanf(file, "%ld %ld", &pages, &resident) != 2) resident = 0;
        std::fclose(file);
    }
    return static_cast<double>(resident) * static_cast<double>(sysconf(_SC_PAGESIZE));
}

constexpr int parametersOfPart = 10;

void WritePart(LCParagraph & part, int number)
{
    part.SetParameterAsInteger("number", number);
    part.SetParameterAsString("name", LCString("bracket ") + LCString(number), false);
    part.SetParameterAsDouble("thickness", 0.5 + number % 12 * 0.25, -1);
    part.SetParameterAsDouble("length", number / 7.0, 3);
    part.SetParameterAsDouble("width", number / 13.0, 3);
    part.SetParameterAsBool("released", number % 3 == 0);
    part.SetParameterAsLong("pieces", number * 17);
    part.SetParameterAsString("material", number % 2 == 0 ? "1.4301" : "DC01", false);
    part.SetParameterAsTRGBColorValue("colour", LCColor(number, number / 256, number / 65536));
    part.SetParameterAsTimeSpan("time", LCTimeSpan(number * 0.5));
}

bool SamePart(LCParagraph & a, LCParagraph & b)
{
    LCParagraphList as, bs;
    a.GetParagraphs(as);
    b.GetParagraphs(bs);
    if (as.size() != bs.size()) return false;
    for (auto x = as.begin(), y = bs.begin(); x != as.end(); ++x, ++y) {
        if ((*x)->GetName() != (*y)->GetName()) return false;
        if ((*x)->GetValueAsString("") != (*y)->GetValueAsString("")) return false;
    }
    return true;
}

void Step(char const * what, double since, int count)
{
    double const taken = Seconds() - since;
    std::printf("%-8s %7.3f s  %6.0f ns per parameter\n", what, taken, taken / count * 1e9);
}

bool Million(int parameters, std::filesystem::path const & file)
{
    double const before = ResidentBytes();
    double start = Seconds();
    LHCDocument built;
    for (int i = 0; i < parameters / parametersOfPart; ++i) {
        WritePart(*built.GetRootParagraph().CreateParagraph("part"), i);
    }
    Step("built", start, parameters);
    double const paragraphs = parameters * (1.0 + 1.0 / parametersOfPart);
    std::printf("         %.0f bytes of memory per paragraph\n", (ResidentBytes() - before) / paragraphs);

    LCString const path = file.string();
    start = Seconds();
    if (!built.SaveToFile(path)) return std::fprintf(stderr, "%s\n", built.GetErrorText().c_str()), false;
    Step("saved", start, parameters);
    std::printf("         %.1f MB\n", static_cast<double>(std::filesystem::file_size(file)) / 1e6);

    start = Seconds();
    LHCDocument loaded;
    if (!loaded.LoadFromFile(path)) return std::fprintf(stderr, "%s\n", loaded.GetErrorText().c_str()), false;
    Step("loaded", start, parameters);

    start = Seconds();
    LCParagraphList stored, back;
    built.GetRootParagraph().GetParagraphsWithName("part", stored, true);
    loaded.GetRootParagraph().GetParagraphsWithName("part", back, true);
    bool same = stored.size() == back.size();
    for (auto a = stored.begin(), b = back.begin(); same && a != stored.end(); ++a, ++b)
        same = SamePart(**a, **b);
    Step("compared", start, parameters);
    std::printf("%s\n", same ? "every value came back" : "VALUES DIFFER");
    return same;
}

/// Nanoseconds for each of 100,000 writes of different parameters, `count` under each parent, with the switch
/// on.
double WriteCost(int count)
{
    constexpr int writes = 100000;
    double best = 1e9;
    for (int round = 0; round < 5; ++round) {
        LHCDocument document(true);
        double const start = Seconds();
        for (int done = 0; done < writes; done += count) {
            LCParagraph & parent = *document.GetRootParagraph().CreateParagraph("parent");
            for (int i = done; i < done + count; ++i)
                parent.SetParameterAsInteger(LCString("p") + LCString(i), i);
        }
        best = std::min(best, (Seconds() - start) / writes * 1e9);
    }
    return best;
}

}  // namespace

int main(int argc, char ** argv)
{
    int const parameters = argc > 1 ? std::atoi(argv[1]) : 1000000;
    if (parameters < parametersOfPart)
        return std::fprintf(stderr, "Usage: many_parameters [COUNT, 10 or more]\n"), 2;

    std::filesystem::path const file =
        std::filesystem::temp_directory_path() / ("many_parameters-" + std::to_string(getpid()) + ".xml");
    std::printf("%d parameters\n", parameters);
    bool const same = Million(parameters, file);
    std::error_code ignored;
    std::filesystem::remove(file, ignored);

    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    std::printf("peak memory %.0f MB, with both documents\n", static_cast<double>(usage.ru_maxrss) / 1024.0);
    for (int const count : {10, 100, 1000, 10000, 100000}) {
        std::printf("%6d parameters under one parent, found before each write: %4.0f ns a write\n", count,
                    WriteCost(count));
    }
    return same ? 0 : 1;
}
