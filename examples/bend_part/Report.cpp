#include "Report.h"

#include <cstdio>

namespace {

constexpr int millimetre = 0;
constexpr int inch = 1;
constexpr int kilogram = 0;
constexpr int pound = 1;

LCString Cell(LCString const & text, int width)
{
    LCString const filler(std::max(0, width - text.GetLength()), ' ');
    return filler + text;
}

/// A length in the decimals that the unit is shown with.
LCString Length(double v, int unit)
{
    return LCString(LCUnitMan::ConvertDistance(v, millimetre, unit), LCUnitMan::GetUnitDecDistance(unit), 9,
                    ' ');
}

}  // namespace

void Print(LCString const & line) { std::puts(line.c_str()); }

void PrintPart(Part const & part, FlatPattern const & pattern)
{
    Print(part.number + " rev. " + LCString(part.revision) + "  " + part.name);
    Print(LCString("material ") + part.material + ", " + LCString(part.thickness, -1, false) + " mm, " +
          LCString(part.width, -1, false) + " mm wide" +
          (part.coating ? LCString(", coated ") + LCString(*part.coating, -1, false) + " um"
                        : LCString(", not coated")));
    Print(LCString("due ") + part.due.StrFormat("YYYY-MM-DD HH:mm") + ", " + part.timePerPiece.StrTime() +
          " per piece, code " + part.code.GetType() + " " + part.code.GetData());
    LCTags tags = part.tags;
    Print(LCString("program ") + part.program.Str() + ", tags " + tags.Str(" ", ", "));
    LCStringList tools;
    for (LCKeyIDRev const & tool : part.Tools()) tools.AddTail(tool.Str());
    Print(LCString("tools ") + tools.Str(' '));
    Print("");
    Print("bend  angle  radius  K      allowance           bend line at        punch             die");
    Print("         deg      mm              mm       in          mm       in");
    for (std::size_t i = 0; i < part.bends.size(); ++i) {
        Bend const & bend = part.bends[i];
        double const allowance = bend.Allowance(part.thickness);
        double const line = pattern.zones[i].line;
        Print(LCString(static_cast<int>(i + 1), 3, ' ', false) + (bend.up ? " up" : " dn") +
              LCString(bend.angle, 1, 6, ' ') + LCString(bend.innerRadius, 2, 8, ' ') +
              LCString(bend.kFactor, 3, 7, ' ') + Length(allowance, millimetre) + Length(allowance, inch) +
              "   " + Length(line, millimetre) + Length(line, inch) + "  " + Cell(bend.punch.Str(), 16) +
              "  " + Cell(bend.die.Str(), 16));
    }
    Print("");

    double const weight = part.density * 1e-6 * pattern.length * part.width * part.thickness;
    Print(LCString("flat length ") + Length(pattern.length, millimetre) + " mm  " +
          Length(pattern.length, inch) + " in");
    Print(LCString("weight      ") +
          LCString(LCUnitMan::ConvertWeight(weight, kilogram, kilogram),
                   LCUnitMan::GetUnitDecWeight(kilogram), 9, ' ') +
          " kg  " +
          LCString(LCUnitMan::ConvertWeight(weight, kilogram, pound), LCUnitMan::GetUnitDecWeight(pound), 9,
                   ' ') +
          " lb");
}

int CompareParts(Part const & stored, Part const & loaded)
{
    int compared = 0;
    LCStringList different;
    auto const compare = [&](char const * name, auto const & a, auto const & b) {
        ++compared;
        if (!(a == b)) different.AddTail(name);
    };
    compare("id", stored.id, loaded.id);
    compare("number", stored.number, loaded.number);
    compare("revision", stored.revision, loaded.revision);
    compare("name", stored.name, loaded.name);
    compare("program", stored.program, loaded.program);
    compare("tools", stored.Tools(), loaded.Tools());
    compare("material", stored.material, loaded.material);
    compare("density", stored.density, loaded.density);
    compare("tensile strength", stored.tensileStrength, loaded.tensileStrength);
    compare("thickness", stored.thickness, loaded.thickness);
    compare("width", stored.width, loaded.width);
    compare("coating", stored.coating, loaded.coating);
    compare("flanges", stored.flanges, loaded.flanges);
    compare("bends", stored.bends, loaded.bends);
    compare("sequence", stored.sequence, loaded.sequence);
    compare("due date", stored.due, loaded.due);
    compare("zone of the due date", stored.due.GetTimeZoneBias(), loaded.due.GetTimeZoneBias());
    compare("time per piece", stored.timePerPiece, loaded.timePerPiece);
    compare("colour", stored.colour, loaded.colour);
    compare("cut colour", stored.cutColour, loaded.cutColour);
    compare("bar code", stored.code, loaded.code);
    compare("operations", stored.operations, loaded.operations);
    compare("notes", stored.notes, loaded.notes);
    LCStringPairSet storedTags, loadedTags;
    stored.tags.GetTypeValues(storedTags);
    loaded.tags.GetTypeValues(loadedTags);
    compare("tags", storedTags, loadedTags);
    compare("released", stored.released, loaded.released);
    if (!different.empty())
        throw std::runtime_error("these values came back changed: " + different.Str(',').str());
    return compared;
}
