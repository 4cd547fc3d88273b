#include "paragraph/LCParagraph.h"

#include <concepts>
#include <type_traits>

#include "collections/LCNumberLists.h"
#include "collections/LCStringList.h"
#include "collections/LCStringVector.h"
#include "colour/LCColor.h"
#include "identity/LCGUID.h"
#include "input/LCBarCode.h"
#include "paragraph/LCParagraphList.h"
#include "time/LCDateTime.h"
#include "time/LCTimeSpan.h"

namespace {

// Every name that stands in stored data, letter for letter.

constexpr char const * storedItem = "ITEM";
constexpr char const * storedLine = "L";
constexpr char const * storedLines = "ML";
constexpr char const * storedType = "Type";  // the attribute of marked lines, and a child of a bar code
constexpr char const * storedValue = "Value";

constexpr char const * storedYear = "year";
constexpr char const * storedMonth = "month";
constexpr char const * storedDay = "day";
constexpr char const * storedHour = "hour";
constexpr char const * storedMin = "min";
constexpr char const * storedSec = "sec";
constexpr char const * storedMSec = "msec";
constexpr char const * storedZone = "TZ";

constexpr char const * storedT = "T";
constexpr char const * storedR = "R";
constexpr char const * storedG = "G";
constexpr char const * storedB = "B";
constexpr char const * storedA = "A";

// The stored texts of the scalars, shared by values, attributes and look-ups.

LCString ToText(std::integral auto value) { return LCString(value); }
LCString ToText(bool value) { return ToText(value ? 1 : 0); }
LCString ToText(double value, int digits) { return LCString(value, digits, false); }
LCString ToText(LCGUID const & value) { return value.AsStr(false); }

bool IsTrue(LCString const & text) { return text != "0"; }

/// How a getter takes its default.
template <typename Value>
using Passed = std::conditional_t<std::is_arithmetic_v<Value>, Value, Value const &>;

/// The getter that takes an attribute's name, if one is given, and the default.
template <typename Value, typename... Attribute>
using Getter = Value (LCParagraph::*)(Attribute const &..., Passed<Value>);

/// What the getter gives on the child `name`, or the default itself if there is none.
template <typename Value, typename... Attribute>
Value FromChild(LCParagraph & parent, LCString const & name, Value const & def,
                std::type_identity_t<Getter<Value, Attribute...>> get, Attribute const &... attribute)
{
    LCParagraph * const child = parent.GetParagraph(name);
    return child != nullptr ? (child->*get)(attribute..., def) : def;
}

template <typename Items, typename Read>
void ItemsFromChild(LCParagraph & parent, LCString const & name, Items & items, Read read)
{
    LCParagraph * const child = parent.GetParagraph(name);
    items.clear();  // the name may be one of them
    if (child != nullptr) (child->*read)(items);
}

template <typename Items, typename Write>
void WriteItems(LCParagraph & paragraph, LCString const & name, Items const & items, Write write)
{
    for (auto const & item : items) write(*paragraph.CreateParagraph(name), item);
}

template <typename Items, typename Read>
void ReadItems(LCParagraph & paragraph, LCString const & name, Items & items, Read read)
{
    items.clear();
    LCParagraphList children;
    paragraph.GetParagraphsWithName(name, children, true);
    for (LCParagraph * const child : children) items.push_back(read(*child));
}

template <typename Lines> void WriteLines(LCParagraph & paragraph, Lines const & lines)
{
    paragraph.SetAttributeAsString(storedType, storedLines);
    WriteItems(paragraph, storedLine, lines,
               [](LCParagraph & child, LCString const & line) { child.SetValueAsString(line, true); });
}

LCString PlainText(LCParagraph & paragraph) { return paragraph.GetValueAsString(LCString()); }

template <typename Lines> void ReadLines(LCParagraph & paragraph, Lines & lines)
{
    if (paragraph.GetAttributeAsString(storedType, LCString()) == storedLines) {
        ReadItems(paragraph, storedLine, lines, PlainText);
    } else {
        lines.clear();
        lines.push_back(PlainText(paragraph));
    }
}

}  // namespace

LCParagraph::~LCParagraph() = default;

// Writing this paragraph.

bool LCParagraph::SetValueAsStringList(LCStringList const & list)
{
    WriteLines(*this, list);
    return true;
}

bool LCParagraph::SetValueAsStringVector(LCStringVector const & list)
{
    WriteLines(*this, list);
    return true;
}

bool LCParagraph::SetValueAsIntVector(LCIntVector const & list)
{
    WriteItems(*this, storedItem, list, [](LCParagraph & child, int item) { child.SetValueAsInteger(item); });
    return true;
}

bool LCParagraph::SetValueAsDoubleVector(LCDoubleVector const & list)
{
    WriteItems(*this, storedItem, list,
               [](LCParagraph & child, double item) { child.SetValueAsDouble(item, -1); });
    return true;
}

bool LCParagraph::SetValueAsMultiLineString(LCString const & text)
{
    LCStringList lines;
    lines.DivideTextInLines(text, '\n', true);
    WriteLines(*this, lines);
    return true;
}

bool LCParagraph::SetValueAsGUID(LCGUID const & value) { return SetValueAsString(ToText(value), true); }

bool LCParagraph::SetValueAsDateTime(LCDateTime const & value)
{
    SetParameterAsInteger(storedYear, value.GetYear());
    SetParameterAsInteger(storedMonth, value.GetMonth());
    SetParameterAsInteger(storedDay, value.GetDay());
    SetParameterAsInteger(storedHour, value.GetHour());
    SetParameterAsInteger(storedMin, value.GetMin());
    SetParameterAsInteger(storedSec, value.GetSec());
    SetParameterAsInteger(storedMSec, value.GetMSec());
    SetParameterAsInteger(storedZone, value.GetTimeZoneBias());
    return true;
}

bool LCParagraph::SetValueAsTimeSpan(LCTimeSpan const & value)
{
    SetValueAsDouble(value.AsSeconds(), -1);
    return true;
}

bool LCParagraph::SetValueAsBarCode(LCBarCode const & value)
{
    SetParameterAsString(storedType, value.GetType(), true);
    SetParameterAsString(storedValue, value.GetData(), true);
    return true;
}

bool LCParagraph::SetValueAsColor(LCColor const & value)
{
    SetParameterAsInteger(storedT, value.GetT());
    SetParameterAsInteger(storedR, value.GetR());
    SetParameterAsInteger(storedG, value.GetG());
    SetParameterAsInteger(storedB, value.GetB());
    SetParameterAsInteger(storedA, value.GetA());
    return true;
}

bool LCParagraph::SetValueAsTBGRColorValue(LCColor const & value)
{
    SetValueAsInteger(value.GetTBGR());
    return true;
}

bool LCParagraph::SetValueAsTRGBColorValue(LCColor const & value)
{
    SetValueAsInteger(value.GetTRGB());
    return true;
}

bool LCParagraph::SetValueAsInteger(int value) { return SetValueAsString(ToText(value), true); }
bool LCParagraph::SetValueAsLong(LCLong value) { return SetValueAsString(ToText(value), true); }
bool LCParagraph::SetValueAsDouble(double value, int digits)
{
    return SetValueAsString(ToText(value, digits), true);
}
bool LCParagraph::SetValueAsBool(bool value) { return SetValueAsString(ToText(value), true); }

// Reading this paragraph.

void LCParagraph::GetValueAsStringList(LCStringList & list) { ReadLines(*this, list); }
void LCParagraph::GetValueAsStringVector(LCStringVector & list) { ReadLines(*this, list); }

void LCParagraph::GetValueAsIntVector(LCIntVector & list)
{
    ReadItems(*this, storedItem, list, [](LCParagraph & child) { return child.GetValueAsInteger(0); });
}

void LCParagraph::GetValueAsDoubleVector(LCDoubleVector & list)
{
    ReadItems(*this, storedItem, list, [](LCParagraph & child) { return child.GetValueAsDouble(0.0); });
}

LCString LCParagraph::GetValueAsMultiLineString(LCString const &)
{
    LCStringList lines;
    ReadLines(*this, lines);
    return lines.Str('\n');
}

LCGUID LCParagraph::GetValueAsGUID(LCGUID const & def)
{
    LCString const text = PlainText(*this);
    return text.IsEmpty() ? def : LCGUID(text);
}

LCDateTime LCParagraph::GetValueAsDateTime(LCDateTime const & def)
{
    LCParagraph * const zone = GetParagraph(storedZone);
    int const bias = zone != nullptr ? zone->GetValueAsInteger(0) : 0;
    int const msec = GetParameterAsInteger(storedMSec, def.GetMSec());
    int const sec = GetParameterAsInteger(storedSec, def.GetSec());
    int const min = GetParameterAsInteger(storedMin, def.GetMin());
    int const hour = GetParameterAsInteger(storedHour, def.GetHour());
    int const day = GetParameterAsInteger(storedDay, def.GetDay());
    int const month = GetParameterAsInteger(storedMonth, def.GetMonth());
    int const year = GetParameterAsInteger(storedYear, def.GetYear());
    return zone != nullptr ? LCDateTime(year, month, day, hour, min, sec, msec, bias)
                           : LCDateTime(year, month, day, hour, min, sec, msec);
}

LCTimeSpan LCParagraph::GetValueAsTimeSpan(LCTimeSpan const & def)
{
    return LCTimeSpan(GetValueAsDouble(def.AsSeconds()));
}

LCBarCode LCParagraph::GetValueAsBarCode(LCBarCode const &)
{
    LCBarCode value;
    value.SetType(GetParameterAsString(storedType, LCString(), false));
    value.SetData(GetParameterAsString(storedValue, LCString(), false));
    return value;
}

LCColor LCParagraph::GetValueAsColor(LCColor const & def)
{
    int const r = GetParameterAsInteger(storedR, -1);
    if (r == -1) return GetValueAsTBGRColorValue(def);
    int const g = GetParameterAsInteger(storedG, 0);
    int const b = GetParameterAsInteger(storedB, 0);
    int const t = GetParameterAsInteger(storedT, 0);
    int const a = GetParameterAsInteger(storedA, 255);
    return LCColor(t, r, g, b, a);
}

LCColor LCParagraph::GetValueAsTRGBColorValue(LCColor const &)
{
    return LCRGBColor(GetValueAsInteger(0), 255);
}
LCColor LCParagraph::GetValueAsTBGRColorValue(LCColor const &)
{
    return LCBGRColor(GetValueAsInteger(0), 255);
}
int LCParagraph::GetValueAsInteger(int def) { return GetValueAsString(ToText(def)).AsInt(0, false); }
LCLong LCParagraph::GetValueAsLong(LCLong def) { return GetValueAsString(ToText(def)).AsLong(0, false); }
double LCParagraph::GetValueAsDouble(double def) { return GetValueAsString(ToText(def, -1)).AsDouble(0.0); }
bool LCParagraph::GetValueAsBool(bool def) { return IsTrue(GetValueAsString(ToText(def))); }

// Attributes.

bool LCParagraph::SetAttributeAsGUID(LCString const & name, LCGUID const & value)
{
    return SetAttributeAsString(name, ToText(value));
}

bool LCParagraph::SetAttributeAsInteger(LCString const & name, int value)
{
    return SetAttributeAsString(name, ToText(value));
}

bool LCParagraph::SetAttributeAsLong(LCString const & name, LCLong value)
{
    return SetAttributeAsString(name, ToText(value));
}

bool LCParagraph::SetAttributeAsDouble(LCString const & name, double value, int digits)
{
    return SetAttributeAsString(name, ToText(value, digits));
}

bool LCParagraph::SetAttributeAsBool(LCString const & name, bool value)
{
    return SetAttributeAsString(name, ToText(value));
}

LCGUID LCParagraph::GetAttributeAsGUID(LCString const & name, LCGUID const & def)
{
    return LCGUID(GetAttributeAsString(name, ToText(def)));
}

int LCParagraph::GetAttributeAsInteger(LCString const & name, int def)
{
    return GetAttributeAsString(name, ToText(def)).AsInt(0, false);
}

LCLong LCParagraph::GetAttributeAsLong(LCString const & name, LCLong def)
{
    return GetAttributeAsString(name, ToText(def)).AsLong(0, false);
}

double LCParagraph::GetAttributeAsDouble(LCString const & name, double def)
{
    return GetAttributeAsString(name, ToText(def, -1)).AsDouble(0.0);
}

bool LCParagraph::GetAttributeAsBool(LCString const & name, bool def)
{
    return IsTrue(GetAttributeAsString(name, ToText(def)));
}

// Writing a parameter.

bool LCParagraph::SetParameterAsStringList(LCString const & name, LCStringList const & list)
{
    return CheckCreateParagraphForSetParam(name)->SetValueAsStringList(list);
}

bool LCParagraph::SetParameterAsStringVector(LCString const & name, LCStringVector const & list)
{
    return CheckCreateParagraphForSetParam(name)->SetValueAsStringVector(list);
}

bool LCParagraph::SetParameterAsIntVector(LCString const & name, LCIntVector const & list)
{
    return CheckCreateParagraphForSetParam(name)->SetValueAsIntVector(list);
}

bool LCParagraph::SetParameterAsDoubleVector(LCString const & name, LCDoubleVector const & list)
{
    return CheckCreateParagraphForSetParam(name)->SetValueAsDoubleVector(list);
}

bool LCParagraph::SetParameterAsMultiLineString(LCString const & name, LCString const & text)
{
    return CheckCreateParagraphForSetParam(name)->SetValueAsMultiLineString(text);
}

bool LCParagraph::SetParameterAsString(LCString const & name, LCString const & text, bool flag)
{
    return CheckCreateParagraphForSetParam(name)->SetValueAsString(text, flag);
}

bool LCParagraph::SetParameterAsGUID(LCString const & name, LCGUID const & value)
{
    return CheckCreateParagraphForSetParam(name)->SetValueAsGUID(value);
}

bool LCParagraph::SetParameterAsDateTime(LCString const & name, LCDateTime const & value)
{
    return CheckCreateParagraphForSetParam(name)->SetValueAsDateTime(value);
}

bool LCParagraph::SetParameterAsTimeSpan(LCString const & name, LCTimeSpan const & value)
{
    return CheckCreateParagraphForSetParam(name)->SetValueAsTimeSpan(value);
}

bool LCParagraph::SetParameterAsBarCode(LCString const & name, LCBarCode const & value)
{
    return CheckCreateParagraphForSetParam(name)->SetValueAsBarCode(value);
}

bool LCParagraph::SetParameterAsColor(LCString const & name, LCColor const & value)
{
    return CheckCreateParagraphForSetParam(name)->SetValueAsColor(value);
}

bool LCParagraph::SetParameterAsTRGBColorValue(LCString const & name, LCColor const & value)
{
    return CheckCreateParagraphForSetParam(name)->SetValueAsTRGBColorValue(value);
}

bool LCParagraph::SetParameterAsTBGRColorValue(LCString const & name, LCColor const & value)
{
    return CheckCreateParagraphForSetParam(name)->SetValueAsTBGRColorValue(value);
}

bool LCParagraph::SetParameterAsInteger(LCString const & name, int value)
{
    return CheckCreateParagraphForSetParam(name)->SetValueAsInteger(value);
}

bool LCParagraph::SetParameterAsLong(LCString const & name, LCLong value)
{
    return CheckCreateParagraphForSetParam(name)->SetValueAsLong(value);
}

bool LCParagraph::SetParameterAsDouble(LCString const & name, double value, int digits)
{
    return CheckCreateParagraphForSetParam(name)->SetValueAsDouble(value, digits);
}

bool LCParagraph::SetParameterAsNullableDouble(LCString const & name, double * value, int digits)
{
    return value == nullptr || SetParameterAsDouble(name, *value, digits);
}

bool LCParagraph::SetParameterAsBool(LCString const & name, bool value)
{
    return CheckCreateParagraphForSetParam(name)->SetValueAsBool(value);
}

// Reading a parameter.

LCString LCParagraph::GetParameterAsMultiLineString(LCString const & name, LCString const & def)
{
    return FromChild(*this, name, def, &LCParagraph::GetValueAsMultiLineString);
}

void LCParagraph::GetParameterAsStringList(LCString const & name, LCStringList & list)
{
    ItemsFromChild(*this, name, list, &LCParagraph::GetValueAsStringList);
}

void LCParagraph::GetParameterAsStringVector(LCString const & name, LCStringVector & list)
{
    ItemsFromChild(*this, name, list, &LCParagraph::GetValueAsStringVector);
}

void LCParagraph::GetParameterAsIntVector(LCString const & name, LCIntVector & list)
{
    ItemsFromChild(*this, name, list, &LCParagraph::GetValueAsIntVector);
}

void LCParagraph::GetParameterAsDoubleVector(LCString const & name, LCDoubleVector & list)
{
    ItemsFromChild(*this, name, list, &LCParagraph::GetValueAsDoubleVector);
}

LCString LCParagraph::GetParameterAsString(LCString const & name, LCString const & def, bool flag)
{
    return flag ? GetAttributeAsString(name, def)
                : FromChild(*this, name, def, &LCParagraph::GetValueAsString);
}

LCGUID LCParagraph::GetParameterAsGUID(LCString const & name, LCGUID const & def)
{
    return FromChild(*this, name, def, &LCParagraph::GetValueAsGUID);
}

LCDateTime LCParagraph::GetParameterAsDateTime(LCString const & name, LCDateTime const & def)
{
    return FromChild(*this, name, def, &LCParagraph::GetValueAsDateTime);
}

LCTimeSpan LCParagraph::GetParameterAsTimeSpan(LCString const & name, LCTimeSpan const & def)
{
    return FromChild(*this, name, def, &LCParagraph::GetValueAsTimeSpan);
}

LCBarCode LCParagraph::GetParameterAsBarCode(LCString const & name, LCBarCode const & def)
{
    return FromChild(*this, name, def, &LCParagraph::GetValueAsBarCode);
}

LCColor LCParagraph::GetParameterAsColor(LCString const & name, LCColor const & def)
{
    return FromChild(*this, name, def, &LCParagraph::GetValueAsColor);
}

LCColor LCParagraph::GetParameterAsTRGBColorValue(LCString const & name, LCColor const & def)
{
    return FromChild(*this, name, def, &LCParagraph::GetValueAsTRGBColorValue);
}

LCColor LCParagraph::GetParameterAsTBGRColorValue(LCString const & name, LCColor const & def)
{
    return FromChild(*this, name, def, &LCParagraph::GetValueAsTBGRColorValue);
}

int LCParagraph::GetParameterAsInteger(LCString const & name, int def)
{
    return FromChild(*this, name, def, &LCParagraph::GetValueAsInteger);
}

LCLong LCParagraph::GetParameterAsLong(LCString const & name, LCLong def)
{
    return FromChild(*this, name, def, &LCParagraph::GetValueAsLong);
}

double LCParagraph::GetParameterAsDouble(LCString const & name, double def)
{
    return FromChild(*this, name, def, &LCParagraph::GetValueAsDouble);
}

double * LCParagraph::GetParameterAsNullableDouble(LCString const & name)
{
    LCParagraph * const child = GetParagraph(name);
    double value = 0.0;
    // An empty text is no number.
    if (child == nullptr || !PlainText(*child).AsDoubleWithCheck(value)) return nullptr;
    return new double(value);
}

bool LCParagraph::GetParameterAsBool(LCString const & name, bool def)
{
    return FromChild(*this, name, def, &LCParagraph::GetValueAsBool);
}

// Reading an attribute of a parameter.

LCString LCParagraph::GetParameterAttributeAsString(LCString const & name, LCString const & attr,
                                                    LCString const & def)
{
    return FromChild(*this, name, def, &LCParagraph::GetAttributeAsString, attr);
}

LCGUID LCParagraph::GetParameterAttributeAsGUID(LCString const & name, LCString const & attr,
                                                LCGUID const & def)
{
    return FromChild(*this, name, def, &LCParagraph::GetAttributeAsGUID, attr);
}

int LCParagraph::GetParameterAttributeAsInteger(LCString const & name, LCString const & attr, int def)
{
    return FromChild(*this, name, def, &LCParagraph::GetAttributeAsInteger, attr);
}

LCLong LCParagraph::GetParameterAttributeAsLong(LCString const & name, LCString const & attr, LCLong def)
{
    return FromChild(*this, name, def, &LCParagraph::GetAttributeAsLong, attr);
}

double LCParagraph::GetParameterAttributeAsDouble(LCString const & name, LCString const & attr, double def)
{
    return FromChild(*this, name, def, &LCParagraph::GetAttributeAsDouble, attr);
}

bool LCParagraph::GetParameterAttributeAsBool(LCString const & name, LCString const & attr, bool def)
{
    return FromChild(*this, name, def, &LCParagraph::GetAttributeAsBool, attr);
}

// Children.

LCParagraph * LCParagraph::GetParagraphWithNameAndAttributeAsGUID(LCString const & name,
                                                                  LCString const & attr, LCGUID const & value)
{
    return GetParagraphWithNameAndAttributeAsString(name, attr, ToText(value));
}

LCParagraph * LCParagraph::GetParagraphWithNameAndAttributeAsInteger(LCString const & name,
                                                                     LCString const & attr, int value)
{
    return GetParagraphWithNameAndAttributeAsString(name, attr, ToText(value));
}

LCParagraph * LCParagraph::GetParagraphWithNameAndAttributeAsDouble(LCString const & name,
                                                                    LCString const & attr, double value)
{
    return GetParagraphWithNameAndAttributeAsString(name, attr, ToText(value, -1));
}

LCParagraph * LCParagraph::GetParagraphWithNameAndAttributeAsLong(LCString const & name,
                                                                  LCString const & attr, LCLong value)
{
    return GetParagraphWithNameAndAttributeAsString(name, attr, ToText(value));
}

LCParagraph * LCParagraph::GetParagraphWithNameAndAttributeAsBool(LCString const & name,
                                                                  LCString const & attr, bool value)
{
    return GetParagraphWithNameAndAttributeAsString(name, attr, ToText(value));
}

void LCParagraph::CopyToParagraph(LCParagraph & dest)
{
    LCParagraphList children;
    GetParagraphs(children);
    for (LCParagraph * const child : children)
        child->CopyToParagraph(*dest.CreateParagraph(child->GetName()));
    dest.SetValueAsString(PlainText(*this), true);
    LCStringVector names;
    GetAttributeNames(names);
    for (LCString const & name : names) {
        dest.SetAttributeAsString(name, GetAttributeAsString(name, LCString()));
    }
}

LCParagraph * LCParagraph::CheckCreateParagraphForSetParam(LCString const & name)
{
    LCParagraph * const existing = mbFindExisting ? GetParagraph(name) : nullptr;
    return existing != nullptr ? existing : CreateParagraph(name);
}

LCString LCParagraph::CleanEnd(LCString const & text)
{
    // Nothing found is the largest number, so one more is 0.
    return LCString(text.str().substr(0, text.str().find_last_not_of("\n\r ") + 1));
}
