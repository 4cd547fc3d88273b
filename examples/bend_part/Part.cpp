#include "Part.h"

#include <cmath>
#include <memory>

namespace {

/// "part/bends/bend 2": the names from below the root, and the number of a child that has siblings of its
/// name.
LCString PlaceOf(LCParagraph & paragraph)
{
    LCParagraph * const parent = paragraph.GetParent();
    if (parent == nullptr) return "";
    LCString place = PlaceOf(*parent);
    if (!place.empty()) place += "/";
    place += paragraph.GetName();

    LCParagraphList siblings;
    parent->GetParagraphsWithName(paragraph.GetName(), siblings, true);
    int number = 1;
    for (auto it = siblings.begin(); *it != &paragraph; ++it) ++number;
    return siblings.size() > 1 ? place + " " + LCString(number) : place;
}

LCParagraph & Child(LCParagraph & parent, LCString const & name)
{
    LCParagraph * const child = parent.GetParagraph(name);
    if (child == nullptr) throw PartError(parent, LCString("there is no \"") + name + "\"");
    return *child;
}

LCString Text(LCParagraph & parent, LCString const & name)
{
    LCParagraph & child = Child(parent, name);
    LCString const text = child.GetValueAsString("");
    if (text.IsTrimEmpty()) throw PartError(child, "the text is empty");
    return text;
}

/// A number that must be there and lie in a range, both ends included.
double Number(LCParagraph & parent, LCString const & name, double low, double high)
{
    LCParagraph & child = Child(parent, name);
    LCString const text = child.GetValueAsString("");
    double value = 0.0;
    if (!text.AsDoubleWithCheck(value)) throw PartError(child, LCString::QuotedStr(text) + " is no number");
    if (!(value >= low && value <= high)) {
        throw PartError(child, text + " is not between " + LCString(low, -1, false) + " and " +
                                   LCString(high, -1, false));
    }
    return value;
}

LCKeyIDRev ReadKey(LCParagraph & parent, LCString const & name)
{
    LCParagraph & paragraph = Child(parent, name);
    return {Text(paragraph, "name"), paragraph.GetParameterAsInteger("majorRevision", 0),
            paragraph.GetParameterAsInteger("minorRevision", 0)};
}

void WriteKey(LCParagraph & parent, LCString const & name, LCKeyIDRev const & key)
{
    LCParagraph & paragraph = *parent.CreateParagraph(name);
    paragraph.SetParameterAsString("name", key.ID, false);
    paragraph.SetParameterAsInteger("majorRevision", key.MajorRev);
    paragraph.SetParameterAsInteger("minorRevision", key.MinorRev);
}

void ReadTags(LCParagraph & parent, LCTags & tags)
{
    tags.Clear();
    LCParagraphList entries;
    if (LCParagraph * const list = parent.GetParagraph("tags"))
        list->GetParagraphsWithName("tag", entries, true);
    for (LCParagraph * const entry : entries) {
        tags.AddTag(entry->GetAttributeAsString("type", ""), entry->GetValueAsString(""), false);
    }
}

void WriteTags(LCParagraph & parent, LCTags const & tags)
{
    LCParagraph & list = *parent.CreateParagraph("tags");
    LCStringPairSet pairs;
    tags.GetTypeValues(pairs);
    for (auto const & [type, value] : pairs) {
        LCParagraph & tag = *list.CreateParagraph("tag");
        tag.SetAttributeAsString("type", type);
        tag.SetValueAsString(value, true);
    }
}

}  // namespace

PartError::PartError(LCParagraph & place, LCString const & reason)
    : std::runtime_error((PlaceOf(place) + ": " + reason).str())
{}

double Bend::Allowance(double thickness) const
{
    return LCMath::DegToRad(angle) * (innerRadius + kFactor * thickness);
}

double Bend::SetBack(double thickness) const
{
    return LCMath::tanDeg(angle / 2.0) * (innerRadius + thickness);
}

bool Bend::ReadParagraphContents(LCParagraph & paragraph)
{
    angle = Number(paragraph, "angle", 1.0, 150.0);
    innerRadius = Number(paragraph, "innerRadius", 0.0, 500.0);
    kFactor = Number(paragraph, "kFactor", 0.0, 0.5);
    up = paragraph.GetParameterAsBool("up", true);
    punch = ReadKey(paragraph, "punch");
    die = ReadKey(paragraph, "die");
    return true;
}

bool Bend::WriteParagraphContents(LCParagraph & paragraph) const
{
    paragraph.SetParameterAsDouble("angle", angle, -1);
    paragraph.SetParameterAsDouble("innerRadius", innerRadius, -1);
    paragraph.SetParameterAsDouble("kFactor", kFactor, -1);
    paragraph.SetParameterAsBool("up", up);
    WriteKey(paragraph, "punch", punch);
    WriteKey(paragraph, "die", die);
    return true;
}

bool Bend::operator==(Bend const & other) const
{
    return angle == other.angle && innerRadius == other.innerRadius && kFactor == other.kFactor &&
           up == other.up && punch == other.punch && die == other.die;
}

LCKeyIDRevSet Part::Tools() const
{
    LCKeyIDRevSet tools;
    for (Bend const & bend : bends) {
        tools.insert(bend.punch);
        tools.insert(bend.die);
    }
    return tools;
}

bool Part::ReadParagraphContents(LCParagraph & paragraph)
{
    id = paragraph.GetParameterAsGUID("id", LCGUID::EmptyGUID());
    number = Text(paragraph, "number");
    revision = static_cast<int>(Number(paragraph, "revision", 0.0, 9999.0));
    name = Text(paragraph, "name");
    program = ReadKey(paragraph, "program");

    LCParagraph & sheet = Child(paragraph, "sheet");
    material = Text(sheet, "material");
    density = Number(sheet, "density", 0.5, 25.0);
    tensileStrength = Number(sheet, "tensileStrength", 10.0, 3000.0);
    thickness = Number(sheet, "thickness", 0.1, 50.0);
    width = Number(sheet, "width", 1.0, 20000.0);
    std::unique_ptr<double> const stored(sheet.GetParameterAsNullableDouble("coating"));
    coating = stored != nullptr ? std::optional<double>(*stored) : std::nullopt;

    LCParagraph & list = Child(paragraph, "bends");
    LCParagraphList entries;
    list.GetParagraphsWithName("bend", entries, true);
    bends.clear();
    for (LCParagraph * const entry : entries) bends.emplace_back().ReadFromParagraph("", *entry);

    paragraph.GetParameterAsDoubleVector("flanges", flanges);
    if (flanges.size() != bends.size() + 1) {
        throw PartError(Child(paragraph, "flanges"), LCString(flanges.size()) + " flanges do not go with " +
                                                         LCString(bends.size()) + " bends");
    }
    for (std::size_t i = 0; i < flanges.size(); ++i) {
        double const before = i > 0 ? bends[i - 1].SetBack(thickness) : 0.0;
        double const behind = i < bends.size() ? bends[i].SetBack(thickness) : 0.0;
        if (!(flanges[i] > before + behind)) {
            throw PartError(Child(paragraph, "flanges"), LCString("flange ") + LCString(i + 1) + " of " +
                                                             LCString(flanges[i], -1, false) +
                                                             " mm is too short for its bends, which take " +
                                                             LCString(before + behind, 2, true) + " mm");
        }
    }
    paragraph.GetParameterAsIntVector("sequence", sequence);

    due = paragraph.GetParameterAsDateTime("due", LCDateTimeNone());
    timePerPiece = paragraph.GetParameterAsTimeSpan("timePerPiece", LCTimeSpan());
    colour = paragraph.GetParameterAsColor("colour", LCColorSilver());
    cutColour = paragraph.GetParameterAsTBGRColorValue("cutColour", LCColorBlack());
    code = paragraph.GetParameterAsBarCode("code", LCBarCode());
    paragraph.GetParameterAsStringList("operations", operations);
    notes = paragraph.GetParameterAsMultiLineString("notes", "");
    ReadTags(paragraph, tags);
    released = paragraph.GetParameterAsBool("released", false);
    return true;
}

bool Part::WriteParagraphContents(LCParagraph & paragraph) const
{
    paragraph.SetParameterAsGUID("id", id);
    paragraph.SetParameterAsString("number", number, false);
    paragraph.SetParameterAsInteger("revision", revision);
    paragraph.SetParameterAsString("name", name, false);
    WriteKey(paragraph, "program", program);

    LCParagraph & sheet = *paragraph.CreateParagraph("sheet");
    sheet.SetParameterAsString("material", material, false);
    sheet.SetParameterAsDouble("density", density, -1);
    sheet.SetParameterAsDouble("tensileStrength", tensileStrength, -1);
    sheet.SetParameterAsDouble("thickness", thickness, -1);
    sheet.SetParameterAsDouble("width", width, -1);
    double stored = coating.value_or(0.0);
    sheet.SetParameterAsNullableDouble("coating", coating ? &stored : nullptr, -1);

    LCParagraph & list = *paragraph.CreateParagraph("bends");
    for (Bend const & bend : bends) bend.WriteToParagraph("bend", list);
    paragraph.SetParameterAsDoubleVector("flanges", flanges);
    paragraph.SetParameterAsIntVector("sequence", sequence);

    paragraph.SetParameterAsDateTime("due", due);
    paragraph.SetParameterAsTimeSpan("timePerPiece", timePerPiece);
    paragraph.SetParameterAsColor("colour", colour);
    paragraph.SetParameterAsTBGRColorValue("cutColour", cutColour);
    paragraph.SetParameterAsBarCode("code", code);
    paragraph.SetParameterAsStringList("operations", operations);
    paragraph.SetParameterAsMultiLineString("notes", notes);
    WriteTags(paragraph, tags);
    paragraph.SetParameterAsBool("released", released);
    return true;
}
