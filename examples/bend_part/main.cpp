// The main job of the family on a real part: load it, show its bends and its blank, store it as a new
// revision, load that again, compare, and draw the flat pattern.

#include <cstdio>
#include <filesystem>
#include <string>

#include "Drawing.h"
#include "PartFinder.h"
#include "Report.h"
#include "documents/LHCDocument.h"

namespace {

constexpr char const * help = R"(Usage: bend_part [OPTIONS] [FILE]

Loads a bent sheet-metal part, prints its bends and its flat length, stores it as
a new revision, loads that again and compares value by value, and draws the flat
pattern as SVG and as DXF.

FILE               a part file; the shipped bracket if none is given
--scan CODE        instead of FILE: the part whose bar code a scanner reads, its
                   newest revision in the store, or the shipped one
--store FOLDER     where revisions and drawings go (default: parts)
--help             this text

Exit status: 0 if every value came back, 1 for a part that can't be used or
stored, 2 for a wrong call.
)";

struct Options {
    LCString file = SHIPPED_PART;
    LCString scanned;
    std::filesystem::path store = "parts";
};

void Store(Part const & part, LCString const & file)
{
    LHCDocument document;
    part.WriteToParagraph("part", document.GetRootParagraph());
    if (!document.SaveToFile(file)) throw std::runtime_error(document.GetErrorText().str());
}

/// The first revision above that of the part whose file is not there yet.
LCString NextRevision(Part & part, std::filesystem::path const & folder)
{
    std::filesystem::path file;
    do {
        ++part.revision;
        file = folder / (part.number + "_rev" + LCString(part.revision) + ".xml").str();
    } while (std::filesystem::exists(file));
    return file.string();
}

void Save(LCString const & drawing, std::filesystem::path const & file)
{
    LCString const path = file.string();
    if (!drawing.SaveToFile(path)) throw std::runtime_error(path.str() + ": can't be written");
    Print(LCString("drawn as ") + path);
}

void Run(Options const & options)
{
    LCClock clock("YYYY-MM-DD HH:mm:SS");
    clock.DoScan();
    Print(LCString("it is ") + clock.GetCurDateTimeStr(""));

    LCString file = options.file;
    if (!options.scanned.empty()) {
        file = FindPart(Scan(options.scanned), options.store);
        Print(LCString("scanned ") + options.scanned + ": " + file);
    }
    Part part = LoadPart(file);
    FlatPattern const pattern(part);
    PrintPart(part, pattern);

    std::filesystem::create_directories(options.store);
    LCString const stored = NextRevision(part, options.store);
    Store(part, stored);
    int const compared = CompareParts(part, LoadPart(stored));
    Print("");
    Print(LCString("stored as ") + stored);
    Print(LCString("every value came back (") + LCString(compared) + " compared)");

    Save(DrawSvg(part, pattern), options.store / "flat_pattern.svg");
    Save(DrawDxf(part, pattern), options.store / "flat_pattern.dxf");
}

}  // namespace

int main(int argc, char ** argv)
{
    Options options;
    for (int i = 1; i < argc; ++i) {
        LCString const argument = argv[i];
        if (argument == "--help") {
            std::fputs(help, stdout);
            return 0;
        }
        if (argument == "--store" && i + 1 < argc) {
            options.store = argv[++i];
        } else if (argument == "--scan" && i + 1 < argc) {
            options.scanned = argv[++i];
        } else if (argument.Left(1) == "-") {
            std::fprintf(stderr, "bend_part: %s is no option, or lacks its value; see --help\n",
                         argument.c_str());
            return 2;
        } else {
            options.file = argument;
        }
    }
    try {
        Run(options);
    } catch (std::exception const & e) {
        std::fprintf(stderr, "bend_part: %s\n", e.what());
        return 1;
    }
    return 0;
}
