#include "paragraph/LCParagraph.h"

#include <memory>

#include "collections/LCNumberLists.h"
#include "collections/LCStringList.h"
#include "colour/LCColor.h"
#include "identity/LCGUID.h"
#include "input/LCBarCode.h"
#include "paragraph/TestParagraph.h"
#include "support/Support.h"
#include "time/LCDateTime.h"

namespace {

// A text in quotes where a flag is asked for does not compile; a bool does.
#define BOOL(call) (requires(P p, bool flag) { p.call; } && !requires(P p, char const * flag) { p.call; })
template <typename P>
constexpr bool onlyABoolIsAFlag =
    BOOL(SetValueAsString("v", flag)) && BOOL(SetValueAsBool(flag)) && BOOL(SetAttributeAsBool("a", flag)) &&
    BOOL(GetValueAsBool(flag)) && BOOL(GetParagraphsWithName("p", std::declval<LCParagraphList &>(), flag)) &&
    BOOL(GetParameterAsBool("p", flag)) && BOOL(GetAttributeAsBool("a", flag)) &&
    BOOL(SetParameterAsBool("p", flag)) && BOOL(SetParameterAsString("p", "v", flag)) &&
    BOOL(GetParameterAsString("p", "v", flag)) &&
    BOOL(GetParameterAttributeAsBool("p", "a", flag)) && BOOL(GetParagraphWithNameAndAttributeAsBool("p", "a", flag));
static_assert(onlyABoolIsAFlag<LCParagraph &> && onlyABoolIsAFlag<LHCParagraph &>);

// Writes the parameter "p", compares what is stored and reads it back. What is missing is `def`, or an empty list.
#define EXPECT_STORED(kind, ...)                                                                                 \
    ExpectStored([](auto & p, auto const &... v) { return p.SetParameterAs##kind("p", v...); },                  \
                 [](auto & p, char const * name, auto & d) { return p.GetParameterAs##kind(name, d); }, __VA_ARGS__)
template <typename Value>
void ExpectStored(auto set, auto get, LCString const & stored, std::type_identity_t<Value> const & def,
                  Value const & value, auto... digits)
{
    TestParagraph t;
    EXPECT_TRUE(set(t, value, digits...));
    EXPECT_EQ(Text(t), "{p" + stored + "}");
    for (bool const there : {true, false}) {
        Value read = def;
        constexpr bool filled = std::is_void_v<decltype(get(t, "p", read))>;
        if constexpr (filled) get(t, there ? "p" : "missing", read);
        if constexpr (!filled) read = get(t, there ? "p" : "missing", def);
        EXPECT_EQ(read, there ? value : filled ? Value() : def) << stored.str();
    }
}

TEST(Paragraph, ValuesOfSeveralPartsHaveOneStoredForm)
{
    auto const list = Make<LCStringList>({"a", "b\nc", ""});
    EXPECT_STORED(StringList, "{@Type=ML L=a L=b\nc L=}", list, list);
    EXPECT_STORED(StringList, "{@Type=ML}", list, LCStringList());
    EXPECT_STORED(StringVector, "{@Type=ML L=a L=a}", LCStringVector(3, "old"), LCStringVector(2, "a"));
    EXPECT_STORED(IntVector, "{ITEM=-1 ITEM=-1}", LCIntVector(3, 7), LCIntVector(2, -1));
    EXPECT_STORED(DoubleVector, "{ITEM=0.5 ITEM=0.5}", LCDoubleVector(3, 7), LCDoubleVector(2, 0.5));
    EXPECT_STORED(MultiLineString, "{@Type=ML L=a L= L=b\r}", "d", LCString("a\n\nb\r"));
    EXPECT_STORED(DateTime, "{year=2024 month=3 day=5 hour=10 min=20 sec=30 msec=250 TZ=60}", LCDateTime(),
                  LCDateTime(2024, 3, 5, 10, 20, 30, 250, 60));
    EXPECT_STORED(BarCode, "{Type=QR Value=x 1}", LCBarCode("d", "d"), LCBarCode("QR", "x 1"));
    EXPECT_STORED(Color, "{T=1 R=2 G=3 B=4 A=5}", LCColor(), LCColor(1, 2, 3, 4, 5));
    EXPECT_STORED(TimeSpan, "=90", LCTimeSpan(7), LCTimeSpan(90));
    EXPECT_STORED(TBGRColorValue, "=197121", LCColor(), LCColor(1, 2, 3));
    EXPECT_STORED(TRGBColorValue, "=66051", LCColor(), LCColor(1, 2, 3));
    EXPECT_STORED(TRGBColorValue, "=-16777201", LCColor(), LCColor(255, 0, 0, 15, 255));
}

// The attributes of a paragraph, of a parameter, and the look-up by them share the text of the value.
#define EXPECT_TEXT(kind, stored, def, value, ...)                                                               \
    {                                                                                                            \
        EXPECT_STORED(kind, "=" stored, def, value __VA_OPT__(, ) __VA_ARGS__);                                  \
        TestParagraph t;                                                                                         \
        LCParagraph & child = *t.CreateParagraph("p");                                                           \
        EXPECT_TRUE(child.SetAttributeAs##kind("a", value __VA_OPT__(, ) __VA_ARGS__));                          \
        EXPECT_EQ(Text(t), "{p{@a=" stored "}}");                                                                \
        EXPECT_EQ(t.GetParameterAttributeAs##kind("p", "a", def), value);                                        \
        EXPECT_EQ(t.GetParameterAttributeAs##kind("p", "b", def), def);                                          \
        EXPECT_EQ(t.GetParameterAttributeAs##kind("missing", "a", def), def);                                    \
        EXPECT_EQ(t.GetParagraphWithNameAndAttributeAs##kind("p", "a", value), &child);                          \
        EXPECT_EQ(t.GetParagraphWithNameAndAttributeAs##kind("p", "a", def), nullptr);                           \
        t.mbvDeny = true;                                                                                      \
        EXPECT_FALSE(t.SetAttributeAs##kind("a", value __VA_OPT__(, ) __VA_ARGS__));                             \
        EXPECT_FALSE(t.SetValueAs##kind(value __VA_OPT__(, ) __VA_ARGS__));                                      \
    }

TEST(Paragraph, ValuesAndAttributesHaveOneStoredTextAndHandOnTheResult)
{
    EXPECT_TEXT(GUID, "ab-1", LCGUID("d"), LCGUID("{ab-1}"));
    EXPECT_TEXT(Integer, "-5", 7, -5);
    EXPECT_TEXT(Long, "-2147483648", 7, -2147483647 - 1);
    EXPECT_TEXT(Double, "-1234567.5", 7.0, -1234567.5, -9);
    EXPECT_TEXT(Bool, "1", false, true);
    EXPECT_TEXT(Bool, "0", true, false);

    // Other decimals than those of the look-up are another text.
    EXPECT_STORED(Double, "=100.000", 7.0, 100.0, 3);
    TestParagraph t;
    t.CreateParagraph("p")->SetAttributeAsDouble("a", 1.5, 3);
    EXPECT_EQ(t.GetParameterAttributeAsString("p", "a", "d"), "1.500");
    EXPECT_EQ(t.GetParameterAttributeAsString("missing", "a", "d"), "d");
    EXPECT_EQ(t.GetParagraphWithNameAndAttributeAsDouble("p", "a", 1.5), nullptr);
}

TEST(Paragraph, TheDefaultAnswersOnlyWhatIsNotStored)
{
    TestParagraph t;
    LCParagraph & empty = *t.CreateParagraph("empty");
    t.SetParameterAsString("word", "false", true);
    auto const scalars = [](LCParagraph & p) {
        return std::tuple(p.GetValueAsInteger(7), p.GetValueAsLong(7), p.GetValueAsDouble(7), p.GetValueAsBool(false),
                          p.GetValueAsTimeSpan(LCTimeSpan(7)).AsSeconds());
    };
    EXPECT_EQ(scalars(empty), std::tuple(7, 7, 7.0, false, 7.0));
    EXPECT_EQ(scalars(*t.GetParagraph("word")), std::tuple(0, 0, 0.0, true, 0.0));
    EXPECT_EQ(empty.GetValueAsGUID(LCGUID("d")), LCGUID("d"));
    EXPECT_EQ(empty.GetValueAsBarCode(LCBarCode("d", "d")), LCBarCode());
    EXPECT_EQ(empty.GetValueAsColor(LCColor()), LCColor(0, 0, 0));
    // A default goes through the stored text, unless there is nothing to ask for it.
    EXPECT_EQ(t.GetParameterAsDouble("missing", 1e-15), 1e-15);
    EXPECT_TRUE(t.GetParameterAsDouble("empty", 1e-15) == 0.0 && empty.GetAttributeAsDouble("missing", 1e-15) == 0.0);

    empty.SetAttributeAsString("text", "");
    EXPECT_EQ(empty.GetAttributeAsInteger("text", 7), 0);
    EXPECT_TRUE(empty.GetAttributeAsBool("text", false));
    EXPECT_FALSE(empty.GetAttributeAsGUID("text", LCGUID("d")).IsValid());
}

TEST(Paragraph, TextParametersAreChildrenAndTheReadersFlagAsksForAnAttribute)
{
    TestParagraph t;
    t.SetAttributeAsString("p", "attribute");
    t.mbvFind = true;
    for (bool const flag : {true, false}) {
        EXPECT_EQ(t.SetParameterAsString("self", "text", flag), flag);
        EXPECT_TRUE(t.SetParameterAsString("p", "text", flag));
        EXPECT_EQ(t.GetParameterAsString("self", "d", flag), flag ? "d" : "text");
        EXPECT_EQ(t.GetParameterAsString("p", "d", flag), flag ? "attribute" : "text");
    }
    EXPECT_TRUE(t.SetValueAsInteger(5));
}

TEST(Paragraph, NullableDoublesAreStoredByTheirAbsence)
{
    TestParagraph t;
    double value = 1.25;
    EXPECT_EQ(t.GetParameterAsNullableDouble("p"), nullptr);
    EXPECT_TRUE(t.SetParameterAsNullableDouble("p", &value, 3) && t.SetParameterAsNullableDouble("p", nullptr, -1));
    std::unique_ptr<double> const read(t.GetParameterAsNullableDouble("p"));
    EXPECT_TRUE(Text(t) == "{p=1.250}" && read && *read == 1.25);
    for (auto const * text : {"", "abc"}) {
        t.GetParagraph("p")->SetValueAsString(text, true);
        EXPECT_EQ(t.GetParameterAsNullableDouble("p"), nullptr) << text;
    }
}

TEST(Paragraph, DatesAndColoursReadWhatThereIsOfThem)
{
    // A missing field of a date is the default's, a missing zone the machine's.
    LCDateTime const def(2001, 2, 3, 4, 5, 6, 7, 600);
    TestParagraph t;
    t.SetParameterAsInteger("year", 2024);
    t.SetParameterAsString("month", "letters", true);
    LCDateTime const expected(2024, 0, 3, 4, 5, 6, 7);
    EXPECT_EQ(t.GetValueAsDateTime(def), expected);
    EXPECT_EQ(t.GetValueAsDateTime(def).GetTimeZoneBias(), expected.GetTimeZoneBias());
    t.CreateParagraph("TZ");
    EXPECT_EQ(t.GetValueAsDateTime(def).GetTimeZoneBias(), 0);

    // Without fields, or with -1 for red, the value is read in the TBGR form.
    t.SetValueAsTBGRColorValue(LCColor(1, 2, 3, 128));
    EXPECT_EQ(t.GetValueAsColor(LCColor()), LCColor(1, 2, 3, 255));
    t.SetParameterAsInteger("R", -1);
    EXPECT_EQ(t.GetValueAsColor(LCColor()), LCColor(1, 2, 3, 255));
    t.GetParagraph("R")->SetValueAsString("letters", true);
    EXPECT_EQ(t.GetValueAsColor(LCColor()), LCColor(0, 0, 0, 0, 255));
}

TEST(Paragraph, MarkedLinesReadAsListVectorAndText)
{
    struct { bool marked; char const * text; std::size_t size; char const * joined; } const rows[] = {
        {true, "a\n\n", 2, "a\n"}, {true, "\n", 1, ""}, {true, "\r\na\r\n", 2, "\r\na\r"}, {true, "", 1, ""},
        {false, "a\nb", 1, "a\nb"}, {false, "", 1, ""}};
    for (auto const & row : rows) {
        TestParagraph t;
        t.SetAttributeAsString("Type", "ml");  // not the mark
        row.marked ? t.SetValueAsMultiLineString(row.text) : t.SetValueAsString(row.text, true);
        LCStringList list;
        LCStringVector lines;
        t.GetValueAsStringList(list);
        t.GetValueAsStringVector(lines);
        LCString const text = t.GetValueAsMultiLineString("d");
        EXPECT_EQ(std::tuple(list.size(), lines.size(), list.Str('\n'), lines.Str('\n'), text),
                  std::tuple(row.size, row.size, row.joined, row.joined, row.joined)) << Text(t).str();
    }
}

TEST(Paragraph, ListsAreFilledFromTheirItemsOnly)
{
    TestParagraph t;
    LCIntVector list;
    for (auto const * name : {"other", "ITEM"}) t.SetParameterAsString(name, "letters", true);
    t.SetValueAsIntVector(LCIntVector(1, 5));
    t.GetValueAsIntVector(list);
    EXPECT_EQ(list, Make<LCIntVector>({0, 5}));

    // The list may hold the name that it is read by.
    LCStringVector vector(1, "a name that is no short text");
    t.SetParameterAsString(vector[0], "value", true);
    t.GetParameterAsStringVector(vector[0], vector);
    EXPECT_EQ(vector.Str(','), "value");
}

// It reaches every paragraph: named fields are overwritten then, and items of lists always appended.
TEST(Paragraph, TheSwitchSaysWhetherAWriteFindsOrAppends)
{
    TestParagraph t;
    for (int const value : {1, 2, 3, 4}) {
        t.mbvFind = value > 2;
        t.SetParameterAsInteger("p", value);
        if (!t.mbvFind) continue;
        t.SetParameterAsBarCode("code", LCBarCode("QR", LCString(value)));
        t.SetParameterAsIntVector("list", LCIntVector(1, value));
    }
    EXPECT_EQ(Text(t), "{p=4 p=2 code{Type=QR Value=4} list{ITEM=3 ITEM=4}}");
}

TEST(Paragraph, CleanEndTakesLineEndsAndBlanksOnly)
{
    char const * const rows[][2] = {{"a \r\n", "a"}, {" a\t\n", " a\t"}, {" \n", ""}, {"", ""}, {"\xFF ", "\xFF"}};
    for (auto const & row : rows) EXPECT_EQ(TestParagraph::CleanEnd(row[0]), row[1]);
}

}  // namespace
