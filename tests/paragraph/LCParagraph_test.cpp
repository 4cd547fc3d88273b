#include "paragraph/LCParagraph.h"

#include <concepts>
#include <functional>
#include <memory>

#include "collections/LCNumberLists.h"
#include "collections/LCStringList.h"
#include "colour/LCColor.h"
#include "documents/LHCParagraph.h"
#include "identity/LCGUID.h"
#include "input/LCBarCode.h"
#include "paragraph/TestParagraph.h"
#include "time/LCDateTime.h"

namespace {

static_assert(civPT_Node == 0 && civPT_Text == 1 && civPT_Comment == 2 && civPT_Attribute == 3);
static_assert(std::is_abstract_v<LCParagraph> && !std::is_copy_assignable_v<LCParagraph>);

// A text in quotes where a flag is asked for does not compile; a bool does.
#define CALL(call) [](auto & p, auto flag) -> decltype(p.call) { throw flag; }
template <typename P>
constexpr auto onlyABoolIsAFlag = []<typename... Call>(Call...) {
    return ((std::invocable<Call, P &, bool> && !std::invocable<Call, P &, char const *>)&&...);
};
#define ALL_CALLS                                                                                            \
    CALL(SetValueAsString("text", flag)), CALL(SetValueAsBool(flag)), CALL(GetValueAsBool(flag)),            \
        CALL(SetAttributeAsBool("name", flag)), CALL(GetAttributeAsBool("name", flag)),                      \
        CALL(SetParameterAsString("name", "text", flag)), CALL(SetParameterAsBool("name", flag)),            \
        CALL(GetParameterAsString("name", "default", flag)), CALL(GetParameterAsBool("name", flag)),         \
        CALL(GetParameterAttributeAsBool("name", "attr", flag)),                                             \
        CALL(GetParagraphsWithName("name", std::declval<LCParagraphList &>(), flag)),                        \
        CALL(GetParagraphWithNameAndAttributeAsBool("name", "attr", flag))
static_assert(onlyABoolIsAFlag<LCParagraph>(ALL_CALLS) && onlyABoolIsAFlag<LHCParagraph>(ALL_CALLS));

/// What a getter gives for a default, or what it makes of a list that holds something.
template <typename Value, typename Get> Value Read(Value value, Get get)
{
    if constexpr (!std::is_void_v<decltype(get(value))>) return get(value);
    get(value);
    return value;
}

// Writes `value` into a paragraph and as the parameter "p", compares what is stored, and reads both back. A
// missing parameter is `missing`.
#define EXPECT_STORED(kind, stored, def, missing, value, ...)                                                \
    {                                                                                                        \
        TestTree t, u;                                                                                       \
        EXPECT_TRUE(t.root.SetValueAs##kind(value __VA_OPT__(, ) __VA_ARGS__));                              \
        EXPECT_TRUE(u.root.SetParameterAs##kind("p", value __VA_OPT__(, ) __VA_ARGS__));                     \
        EXPECT_EQ(t.root.Text(), stored);                                                                    \
        EXPECT_EQ(u.root.Text(), "{p" stored "}");                                                           \
        EXPECT_EQ(Read(def, [&](auto & d) { return t.root.GetValueAs##kind(d); }), value);                   \
        EXPECT_EQ(Read(def, [&](auto & d) { return u.root.GetParameterAs##kind("p", d); }), value);          \
        EXPECT_EQ(Read(def, [&](auto & d) { return u.root.GetParameterAs##kind("P", d); }), missing);        \
    }
#define EXPECT_VALUE(kind, stored, def, ...) EXPECT_STORED(kind, stored, def, def, __VA_ARGS__)

TEST(Paragraph, EveryKindHasOneStoredFormAsValueAndAsParameter)
{
    LCDateTime const none, date(2024, 3, 5, 10, 20, 30, 250, 60);
    LCStringList list;
    for (auto const * text : {"a", "b\nc", ""}) list.AddTail(text);
    LCStringVector const vector(2, "a"), old(3, "old");
    LCDoubleVector const halves(2, 0.5);
    EXPECT_STORED(StringList, "{@Type=ML L=a L=b\nc L=}", list, LCStringList(), list);
    EXPECT_STORED(StringList, "{@Type=ML}", list, LCStringList(), LCStringList());
    EXPECT_STORED(StringVector, "{@Type=ML L=a L=a}", old, LCStringVector(), vector);
    EXPECT_STORED(IntVector, "{ITEM=-1 ITEM=-1}", LCIntVector(3, 7), LCIntVector(), LCIntVector(2, -1));
    EXPECT_STORED(DoubleVector, "{ITEM=0.5 ITEM=0.5}", LCDoubleVector(3, 7), LCDoubleVector(), halves);
    EXPECT_VALUE(MultiLineString, "{@Type=ML L=a L= L=b\r}", LCString("d"), LCString("a\n\nb\r"));
    EXPECT_VALUE(GUID, "=ab-1", LCGUID("d"), LCGUID("{ab-1}"));
    EXPECT_VALUE(DateTime, "{year=2024 month=3 day=5 hour=10 min=20 sec=30 msec=250 TZ=60}", none, date);
    EXPECT_VALUE(TimeSpan, "=90", LCTimeSpan(7), LCTimeSpan(90));
    EXPECT_VALUE(BarCode, "{Type=QR Value=x 1}", LCBarCode("d", "d"), LCBarCode("QR", "x 1"));
    EXPECT_VALUE(Color, "{T=1 R=2 G=3 B=4 A=5}", LCColor(), LCColor(1, 2, 3, 4, 5));
    EXPECT_VALUE(TBGRColorValue, "=197121", LCColor(), LCColor(1, 2, 3));
    EXPECT_VALUE(TRGBColorValue, "=66051", LCColor(), LCColor(1, 2, 3));
    EXPECT_VALUE(TRGBColorValue, "=-16777201", LCColor(), LCColor(255, 0, 0, 15, 255));
    EXPECT_VALUE(Integer, "=-5", 7, -5);
    EXPECT_VALUE(Long, "=-2147483648", 7, -2147483647 - 1);
    EXPECT_VALUE(Double, "=1.5", 7.0, 1.5, -9);
    EXPECT_VALUE(Double, "=100.000", 7.0, 100.0, 3);
    EXPECT_VALUE(Bool, "=1", false, true);
    EXPECT_VALUE(Bool, "=0", true, false);
}

// The attributes of a paragraph, of a parameter, and the look-up by them share one text for each kind.
#define EXPECT_ATTRIBUTE(kind, stored, def, value, ...)                                                      \
    {                                                                                                        \
        TestTree t;                                                                                          \
        TestParagraph & child = *t.root.CreateParagraph("p");                                                \
        EXPECT_TRUE(child.SetAttributeAs##kind("a", value __VA_OPT__(, ) __VA_ARGS__));                      \
        EXPECT_EQ(child.Text(), "p{@a=" stored "}");                                                         \
        EXPECT_EQ(child.GetAttributeAs##kind("a", def), value);                                              \
        EXPECT_EQ(child.GetAttributeAs##kind("b", def), def);                                                \
        EXPECT_EQ(t.root.GetParameterAttributeAs##kind("p", "a", def), value);                               \
        EXPECT_EQ(t.root.GetParameterAttributeAs##kind("missing", "a", def), def);                           \
        EXPECT_EQ(t.root.GetParagraphWithNameAndAttributeAs##kind("p", "a", value), &child);                 \
        EXPECT_EQ(t.root.GetParagraphWithNameAndAttributeAs##kind("p", "a", def), nullptr);                  \
        child.mbvRefuse = true;                                                                              \
        EXPECT_FALSE(child.SetAttributeAs##kind("a", value __VA_OPT__(, ) __VA_ARGS__));                     \
    }

TEST(Paragraph, AttributesShareTheTextsOfValues)
{
    EXPECT_ATTRIBUTE(String, "x", "d", "x");
    EXPECT_ATTRIBUTE(GUID, "ab-1", LCGUID("d"), LCGUID("{ab-1}"));
    EXPECT_ATTRIBUTE(Integer, "-5", 7, -5);
    EXPECT_ATTRIBUTE(Long, "2147483647", 7, 2147483647);
    EXPECT_ATTRIBUTE(Double, "-1.125", 7.0, -1.125, -3);
    EXPECT_ATTRIBUTE(Bool, "1", false, true);
    EXPECT_ATTRIBUTE(Bool, "0", true, false);

    // Other decimals than those of the look-up are another text.
    TestTree t;
    t.root.CreateParagraph("p")->SetAttributeAsDouble("a", 1.5, 3);
    EXPECT_EQ(t.root.Text(), "{p{@a=1.500}}");
    EXPECT_EQ(t.root.GetParagraphWithNameAndAttributeAsDouble("p", "a", 1.5), nullptr);
}

TEST(Paragraph, TheDefaultAnswersOnlyWhatIsNotStored)
{
    TestTree t;
    TestParagraph & empty = *t.root.CreateParagraph("empty");
    TestParagraph & word = *t.root.CreateParagraph("word");
    word.SetValueAsString("false", true);
    EXPECT_TRUE(empty.GetValueAsInteger(7) == 7 && word.GetValueAsInteger(7) == 0);
    EXPECT_TRUE(empty.GetValueAsLong(7) == 7 && word.GetValueAsLong(7) == 0);
    EXPECT_TRUE(empty.GetValueAsDouble(7) == 7 && word.GetValueAsDouble(7) == 0);
    EXPECT_TRUE(!empty.GetValueAsBool(false) && word.GetValueAsBool(false));
    EXPECT_EQ(empty.GetValueAsTimeSpan(LCTimeSpan(7)), LCTimeSpan(7));
    EXPECT_EQ(empty.GetValueAsGUID(LCGUID("d")), LCGUID("d"));
    EXPECT_EQ(empty.GetValueAsBarCode(LCBarCode("d", "d")), LCBarCode());
    EXPECT_EQ(empty.GetValueAsColor(LCColor()), LCColor(0, 0, 0));
    // A default goes through the stored text, unless there is nothing to ask for it.
    EXPECT_EQ(t.root.GetParameterAsDouble("missing", 1e-15), 1e-15);
    EXPECT_EQ(t.root.GetParameterAsDouble("empty", 1e-15), 0.0);

    empty.SetAttributeAsString("text", "");
    EXPECT_EQ(empty.GetAttributeAsInteger("text", 7), 0);
    EXPECT_EQ(empty.GetAttributeAsDouble("missing", 1e-15), 0.0);
    EXPECT_TRUE(empty.GetAttributeAsBool("text", false));
    EXPECT_FALSE(empty.GetAttributeAsGUID("text", LCGUID("d")).IsValid());
}

TEST(Paragraph, TextParametersAreChildrenAndTheReadersFlagAsksForAnAttribute)
{
    TestTree t;
    EXPECT_TRUE(t.root.SetParameterAsString("p", "text", false) &&
                t.root.SetParameterAsString("q", "", true));
    EXPECT_TRUE(!t.root.GetParagraph("p")->mbvFlag && t.root.GetParagraph("q")->mbvFlag);
    t.root.GetParagraph("p")->SetValueAsInteger(5);
    EXPECT_TRUE(t.root.GetParagraph("p")->mbvFlag);
    EXPECT_EQ(t.root.GetParameterAsString("p", "d", false), "5");
    EXPECT_EQ(t.root.GetParameterAsString("p", "d", true), "d");
    t.root.SetAttributeAsString("p", "attribute");
    EXPECT_EQ(t.root.GetParameterAsString("p", "d", true), "attribute");
}

TEST(Paragraph, NullableDoublesAreStoredByTheirAbsence)
{
    TestTree t;
    double value = 1.25;
    EXPECT_EQ(t.root.GetParameterAsNullableDouble("p"), nullptr);
    EXPECT_TRUE(t.root.SetParameterAsNullableDouble("p", &value, 3));
    EXPECT_TRUE(t.root.SetParameterAsNullableDouble("p", nullptr, -1));
    EXPECT_EQ(t.root.Text(), "{p=1.250}");
    std::unique_ptr<double> const read(t.root.GetParameterAsNullableDouble("p"));
    EXPECT_TRUE(read && *read == 1.25);
    for (auto const * text : {"", "abc"}) {
        t.root.GetParagraph("p")->SetValueAsString(text, true);
        EXPECT_EQ(t.root.GetParameterAsNullableDouble("p"), nullptr) << text;
    }
}

TEST(Paragraph, ScalarsHandOnTheResultAndTheRestIsTrue)
{
    TestTree t;
    t.root.mbvRefuse = true;
    EXPECT_FALSE(t.root.SetValueAsInteger(1) || t.root.SetValueAsLong(1) || t.root.SetValueAsDouble(1, -1));
    EXPECT_FALSE(t.root.SetValueAsBool(true) || t.root.SetValueAsGUID(LCGUID("a")));
    EXPECT_TRUE(t.root.SetValueAsTimeSpan(LCTimeSpan(1)) && t.root.SetValueAsStringList(LCStringList()));
    EXPECT_TRUE(t.root.SetValueAsTBGRColorValue(LCColor()) && t.root.SetValueAsTRGBColorValue(LCColor()));
}

TEST(Paragraph, MissingFieldsOfADateAreTheDefaultsAndAMissingZoneIsTheMachines)
{
    LCDateTime const def(2001, 2, 3, 4, 5, 6, 7, 600);
    TestTree t;
    t.root.SetParameterAsInteger("year", 2024);
    t.root.SetParameterAsString("month", "letters", true);
    LCDateTime const read = t.root.GetValueAsDateTime(def), expected(2024, 0, 3, 4, 5, 6, 7);
    EXPECT_TRUE(read == expected && read.GetTimeZoneBias() == expected.GetTimeZoneBias());
    t.root.CreateParagraph("TZ");
    EXPECT_EQ(t.root.GetValueAsDateTime(def).GetTimeZoneBias(), 0);
}

TEST(Paragraph, ColoursReadTheOtherFormsAsFarAsTheyHold)
{
    TestTree t;
    t.root.SetValueAsTBGRColorValue(LCColor(1, 2, 3, 128));
    EXPECT_EQ(t.root.GetValueAsColor(LCColor()), LCColor(1, 2, 3, 255));
    t.root.SetValueAsTRGBColorValue(LCColor(1, 2, 3, 128));
    t.root.SetParameterAsInteger("R", -1);
    EXPECT_EQ(t.root.GetValueAsColor(LCColor()), LCColor(3, 2, 1, 255));
    t.root.GetParagraph("R")->SetValueAsString("letters", true);
    EXPECT_EQ(t.root.GetValueAsColor(LCColor()), LCColor(0, 0, 0, 0, 255));
}

TEST(Paragraph, MarkedLinesReadAsListVectorAndText)
{
    struct { std::function<void(LCParagraph &)> write; std::size_t size; char const * joined; } const rows[] = {
        {[](LCParagraph & p) { p.SetValueAsMultiLineString("a\n\n"); }, 2, "a\n"},
        {[](LCParagraph & p) { p.SetValueAsMultiLineString("\n"); }, 1, ""},
        {[](LCParagraph & p) { p.SetValueAsMultiLineString("\r\na\r\n"); }, 2, "\r\na\r"},
        {[](LCParagraph & p) { p.SetValueAsMultiLineString(""); }, 1, ""},
        {[](LCParagraph & p) { p.SetValueAsStringVector({}); }, 0, ""},
        {[](LCParagraph & p) { p.SetValueAsString("a\nb", true); }, 1, "a\nb"},
        {[](LCParagraph & p) { p.SetAttributeAsString("Type", "ml"); }, 1, ""},
    };
    for (auto const & row : rows) {
        TestTree t;
        row.write(t.root);
        LCStringList list;
        t.root.GetValueAsStringList(list);
        LCStringVector vector;
        t.root.GetValueAsStringVector(vector);
        EXPECT_TRUE(list.size() == row.size && vector.size() == row.size) << t.root.Text().str();
        EXPECT_TRUE(list.Str('\n') == row.joined && vector.Str('\n') == row.joined) << t.root.Text().str();
        EXPECT_EQ(t.root.GetValueAsMultiLineString("d"), row.joined);
    }
}

TEST(Paragraph, AListMayHoldTheNameItIsReadBy)
{
    TestTree t;
    LCStringVector vector(1, "a name longer than a short text");
    t.root.SetParameterAsString(vector[0], "value", true);
    t.root.GetParameterAsStringVector(vector[0], vector);
    EXPECT_EQ(vector[0], "value");
}

TEST(Paragraph, VectorsReadTheirItemsOnly)
{
    TestTree t;
    LCIntVector list;
    for (auto const * name : {"other", "ITEM"}) t.root.SetParameterAsString(name, "letters", true);
    t.root.SetValueAsIntVector(LCIntVector(1, 5));
    t.root.GetValueAsIntVector(list);
    EXPECT_TRUE(list.size() == 2 && list.front() == 0 && list.back() == 5 && t.root.mbvFlag);
}

// It reaches every paragraph: named fields are overwritten then, and items of lists always appended.
TEST(Paragraph, TheSwitchSaysWhetherAWriteFindsOrAppends)
{
    TestTree t;
    for (int const value : {1, 2, 3, 4}) {
        t.findExisting = value > 2;
        t.root.SetParameterAsInteger("p", value);
        if (!t.findExisting) continue;
        t.root.SetParameterAsBarCode("code", LCBarCode("QR", LCString(value)));
        t.root.SetParameterAsIntVector("list", LCIntVector(1, value));
    }
    EXPECT_EQ(t.root.Text(), "{p=4 p=2 code{Type=QR Value=4} list{ITEM=3 ITEM=4}}");
}

TEST(Paragraph, CopyAppendsChildrenOverwritesTheValueAndKeepsOtherAttributes)
{
    TestTree from, to;
    from.findExisting = to.findExisting = true;
    for (int const value : {1, 2}) from.root.CreateParagraph("p")->SetParameterAsInteger("x", value);
    from.root.GetParagraph("p")->SetAttributeAsString("a", "1");
    from.root.SetAttributeAsString("both", "new");
    to.root.SetValueAsString("old", true);
    to.root.SetParameterAsString("p", "old", true);
    for (char const * name : {"both", "own"}) to.root.SetAttributeAsString(name, "old");
    from.root.CopyToParagraph(to.root);
    EXPECT_EQ(to.root.Text(), "={@both=new @own=old p=old p={@a=1 x=1} p={x=2}}");
}

TEST(Paragraph, CleanEndTakesLineEndsAndBlanksOnly)
{
    char const * const rows[][2] = {
        {"ab \r\n", "ab"}, {" ab\t\n", " ab\t"}, {" \n", ""}, {"", ""}, {"\xFF ", "\xFF"}};
    for (auto const & row : rows) EXPECT_EQ(TestParagraph::CleanEnd(row[0]), row[1]);
}

}  // namespace
