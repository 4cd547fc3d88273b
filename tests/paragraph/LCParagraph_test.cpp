#include "paragraph/LCParagraph.h"

#include <functional>
#include <memory>
#include <type_traits>

#include "collections/LCNumberLists.h"
#include "collections/LCStringList.h"
#include "colour/LCColor.h"
#include "identity/LCGUID.h"
#include "input/LCBarCode.h"
#include "paragraph/TestParagraph.h"
#include "time/LCDateTime.h"

namespace {

static_assert(civPT_Node == 0 && civPT_Text == 1 && civPT_Comment == 2 && civPT_Attribute == 3);
static_assert(std::is_abstract_v<LCParagraph> && std::has_virtual_destructor_v<LCParagraph>);
static_assert(!std::is_copy_assignable_v<LCParagraph>);

// A text in quotes where a flag is asked for does not compile; a bool does.
template <typename Paragraph, typename Flag>
constexpr bool takesFlag[] = {requires(Paragraph p, Flag flag){p.SetValueAsString("text", flag);
}  // namespace
, requires(Paragraph p, Flag flag) { p.SetValueAsBool(flag); }
, requires(Paragraph p, Flag flag) { p.GetValueAsBool(flag); }
, requires(Paragraph p, Flag flag) { p.SetAttributeAsBool("name", flag); }
, requires(Paragraph p, Flag flag) { p.GetAttributeAsBool("name", flag); }
, requires(Paragraph p, Flag flag) { p.SetParameterAsString("name", "text", flag); }
, requires(Paragraph p, Flag flag) { p.SetParameterAsBool("name", flag); }
, requires(Paragraph p, Flag flag) { p.GetParameterAsString("name", "default", flag); }
, requires(Paragraph p, Flag flag) { p.GetParameterAsBool("name", flag); }
, requires(Paragraph p, Flag flag) { p.GetParameterAttributeAsBool("name", "attribute", flag); }
, requires(Paragraph p, LCParagraphList list, Flag flag) { p.GetParagraphsWithName("name", list, flag); }
, requires(Paragraph p, Flag flag) { p.GetParagraphWithNameAndAttributeAsBool("name", "attribute", flag); }
,
}
;
template <typename Paragraph>
constexpr bool onlyABoolIsAFlag = std::ranges::all_of(takesFlag<Paragraph &, bool>, std::identity()) &&
                                  std::ranges::none_of(takesFlag<Paragraph &, char const (&)[5]>,
                                                       std::identity()) &&
                                  std::ranges::none_of(takesFlag<Paragraph &, char *>, std::identity());
static_assert(onlyABoolIsAFlag<LCParagraph> && onlyABoolIsAFlag<TestParagraph>);

/// Fills the container that a list reader takes, so that lists can be read like values.
template <typename List> List Read(LCParagraph & p, void (LCParagraph::*read)(List &))
{
    List list;
    list.resize(3);
    (p.*read)(list);
    return list;
}

LCIntVector Ints(std::vector<int> const & numbers)
{
    LCIntVector list;
    list.assign(numbers.begin(), numbers.end());
    return list;
}

template <typename List> List Lines(std::vector<LCString> const & lines)
{
    List list;
    list.assign(lines.begin(), lines.end());
    return list;
}

// Writes `value` into a paragraph and as the parameter "p", compares what is stored, and reads both back.
#define EXPECT_STORED(kind, stored, def, value, ...)                                                         \
    {                                                                                                        \
        SCOPED_TRACE(#kind);                                                                                 \
        TestTree t;                                                                                          \
        EXPECT_TRUE(t.root.SetValueAs##kind(value __VA_OPT__(, ) __VA_ARGS__));                              \
        EXPECT_EQ(t.root.Text(), stored);                                                                    \
        EXPECT_EQ(t.root.GetValueAs##kind(def), value);                                                      \
        TestTree u;                                                                                          \
        EXPECT_TRUE(u.root.SetParameterAs##kind("p", value __VA_OPT__(, ) __VA_ARGS__));                     \
        EXPECT_EQ(u.root.Text(), "{p" stored "}");                                                           \
        EXPECT_EQ(u.root.GetParameterAs##kind("p", def), value);                                             \
        EXPECT_EQ(u.root.GetParameterAs##kind("P", def), def);                                               \
    }

TEST(Paragraph, EveryKindHasOneStoredFormAsValueAndAsParameter)
{
    LCDateTime const date(2024, 3, 5, 10, 20, 30, 250, 60);
    LCColor const none;
    EXPECT_STORED(MultiLineString, "{@Type=ML L=a L= L=b\r}", LCString("d"), LCString("a\n\nb\r"));
    EXPECT_STORED(GUID, "=ab-1", LCGUID("d"), LCGUID("{ab-1}"));
    EXPECT_STORED(DateTime, "{year=2024 month=3 day=5 hour=10 min=20 sec=30 msec=250 TZ=60}", LCDateTime(),
                  date);
    EXPECT_STORED(TimeSpan, "=90", LCTimeSpan(7), LCTimeSpan(90));
    EXPECT_STORED(BarCode, "{Type=QR Value=x 1}", LCBarCode("d", "d"), LCBarCode("QR", "x 1"));
    EXPECT_STORED(Color, "{T=1 R=2 G=3 B=4 A=5}", none, LCColor(1, 2, 3, 4, 5));
    EXPECT_STORED(TBGRColorValue, "=197121", none, LCColor(1, 2, 3));
    EXPECT_STORED(TRGBColorValue, "=66051", none, LCColor(1, 2, 3));
    EXPECT_STORED(TRGBColorValue, "=-16777201", none, LCColor(255, 0, 0, 15, 255));
    EXPECT_STORED(Integer, "=-5", 7, -5);
    EXPECT_STORED(Long, "=-2147483648", 7, -2147483647 - 1);
    EXPECT_STORED(Double, "=1.5", 7.0, 1.5, -1);
    EXPECT_STORED(Double, "=1.5", 7.0, 1.5, -9);
    EXPECT_STORED(Double, "=100.000", 7.0, 100.0, 3);
    EXPECT_STORED(Double, "=100000000000000000000", 7.0, 1e20, 0);
    EXPECT_STORED(Bool, "=1", false, true);
    EXPECT_STORED(Bool, "=0", true, false);
}

#define EXPECT_STORED_LIST(kind, stored, list)                                                               \
    {                                                                                                        \
        SCOPED_TRACE(#kind);                                                                                 \
        TestTree t;                                                                                          \
        EXPECT_TRUE(t.root.SetValueAs##kind(list));                                                          \
        EXPECT_EQ(t.root.Text(), stored);                                                                    \
        EXPECT_EQ(Read(t.root, &LCParagraph::GetValueAs##kind), list);                                       \
        TestTree u;                                                                                          \
        EXPECT_TRUE(u.root.SetParameterAs##kind("p", list));                                                 \
        EXPECT_EQ(u.root.Text(), "{p" stored "}");                                                           \
        auto read = list;                                                                                    \
        u.root.GetParameterAs##kind("missing", read);                                                        \
        EXPECT_TRUE(read.empty());                                                                           \
        read.resize(2);                                                                                      \
        u.root.GetParameterAs##kind("p", read);                                                              \
        EXPECT_EQ(read, list);                                                                               \
    }

TEST(Paragraph, EveryListHasOneStoredForm)
{
    EXPECT_STORED_LIST(StringList, "{@Type=ML L=a L=b\nc L=}", Lines<LCStringList>({"a", "b\nc", ""}));
    EXPECT_STORED_LIST(StringList, "{@Type=ML}", LCStringList());
    EXPECT_STORED_LIST(StringVector, "{@Type=ML L=a L=b}", Lines<LCStringVector>({"a", "b"}));
    EXPECT_STORED_LIST(IntVector, "{ITEM=1 ITEM=-2}", Ints({1, -2}));
    EXPECT_STORED_LIST(IntVector, "", LCIntVector());
    EXPECT_STORED_LIST(DoubleVector, "{ITEM=0.5 ITEM=0.5}", LCDoubleVector(2, 0.5));
}

// The attributes of a paragraph, of a parameter, and the look-up by them share one text for each kind.
#define EXPECT_ATTRIBUTE(kind, stored, def, value, ...)                                                      \
    {                                                                                                        \
        SCOPED_TRACE(#kind);                                                                                 \
        TestTree t;                                                                                          \
        TestParagraph & child = *t.root.CreateParagraph("p");                                                \
        t.root.CreateParagraph("q")->SetAttributeAsString("a", stored);                                      \
        EXPECT_TRUE(child.SetAttributeAs##kind("a", value __VA_OPT__(, ) __VA_ARGS__));                      \
        EXPECT_EQ(child.Text(), "p{@a=" stored "}");                                                         \
        EXPECT_EQ(child.GetAttributeAs##kind("a", def), value);                                              \
        EXPECT_EQ(child.GetAttributeAs##kind("b", def), def);                                                \
        EXPECT_EQ(t.root.GetParameterAttributeAs##kind("p", "a", def), value);                               \
        EXPECT_EQ(t.root.GetParameterAttributeAs##kind("p", "b", def), def);                                 \
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
    EXPECT_ATTRIBUTE(Double, "-1.25", 7.0, -1.25, -3);
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
    t.root.SetParameterAsString("letters", "abc", true);
    t.root.SetParameterAsString("nothing", "", true);
    t.root.SetParameterAsString("false", "false", true);
    EXPECT_EQ(t.root.GetParameterAsInteger("missing", 7), 7);
    EXPECT_EQ(t.root.GetParameterAsInteger("empty", 7), 7);
    EXPECT_EQ(t.root.GetParameterAsInteger("letters", 7), 0);
    EXPECT_EQ(t.root.GetParameterAsLong("empty", 7), 7);
    EXPECT_EQ(t.root.GetParameterAsLong("letters", 7), 0);
    EXPECT_EQ(t.root.GetParameterAsDouble("missing", 1e-15), 1e-15);
    EXPECT_EQ(t.root.GetParameterAsDouble("empty", 1e-15), 0.0);
    EXPECT_EQ(t.root.GetParameterAsDouble("letters", 7), 0.0);
    EXPECT_EQ(t.root.GetParameterAsTimeSpan("empty", LCTimeSpan(7)), LCTimeSpan(7));
    EXPECT_TRUE(t.root.GetParameterAsBool("missing", true));
    EXPECT_FALSE(t.root.GetParameterAsBool("empty", false));
    EXPECT_TRUE(t.root.GetParameterAsBool("false", false));
    EXPECT_TRUE(t.root.GetParameterAsBool("nothing", false));
    EXPECT_EQ(t.root.GetParameterAsGUID("nothing", LCGUID("d")), LCGUID("d"));
    EXPECT_EQ(t.root.GetParameterAsBarCode("empty", LCBarCode("d", "d")), LCBarCode());
    EXPECT_EQ(t.root.GetParameterAsMultiLineString("empty", "d"), "");
    EXPECT_EQ(t.root.GetParameterAsTRGBColorValue("empty", LCColor()), LCColor(0, 0, 0));
    EXPECT_EQ(t.root.GetParameterAsColor("empty", LCColor()), LCColor(0, 0, 0));

    empty.SetAttributeAsString("text", "abc");
    empty.SetAttributeAsString("nothing", "");
    EXPECT_EQ(empty.GetAttributeAsInteger("text", 7), 0);
    EXPECT_EQ(empty.GetAttributeAsLong("text", 7), 0);
    EXPECT_EQ(empty.GetAttributeAsDouble("text", 7), 0.0);
    EXPECT_EQ(empty.GetAttributeAsDouble("missing", 1e-15), 0.0);
    EXPECT_TRUE(empty.GetAttributeAsBool("text", false));
    EXPECT_FALSE(empty.GetAttributeAsGUID("nothing", LCGUID("d")).IsValid());
}

TEST(Paragraph, TextParametersAreChildrenAndTheReadersFlagAsksForAnAttribute)
{
    TestTree t;
    EXPECT_TRUE(t.root.SetParameterAsString("p", "text", true));
    EXPECT_TRUE(t.root.GetParagraph("p")->mbvFlag);
    EXPECT_EQ(t.root.GetParameterAsString("p", "d", true), "d");
    EXPECT_EQ(t.root.GetParameterAsString("p", "d", false), "text");
    EXPECT_EQ(t.root.GetParameterAsString("missing", "d", false), "d");
    t.root.SetAttributeAsString("p", "attribute");
    EXPECT_EQ(t.root.GetParameterAsString("p", "d", true), "attribute");

    t.findExisting = true;
    EXPECT_TRUE(t.root.SetParameterAsString("p", "text", false));
    EXPECT_FALSE(t.root.GetParagraph("p")->mbvFlag);
    EXPECT_TRUE(t.root.SetParameterAsInteger("p", 5));
    EXPECT_TRUE(t.root.GetParagraph("p")->mbvFlag);
}

TEST(Paragraph, NullableDoublesAreStoredByTheirAbsence)
{
    TestTree t;
    double value = 1.25;
    EXPECT_TRUE(t.root.SetParameterAsNullableDouble("p", nullptr, -1));
    EXPECT_EQ(t.root.Text(), "");
    EXPECT_TRUE(t.root.SetParameterAsNullableDouble("p", &value, 3));
    EXPECT_TRUE(t.root.SetParameterAsNullableDouble("p", nullptr, -1));
    EXPECT_EQ(t.root.Text(), "{p=1.250}");
    std::unique_ptr<double> const read(t.root.GetParameterAsNullableDouble("p"));
    ASSERT_TRUE(read);
    EXPECT_EQ(*read, 1.25);
    EXPECT_EQ(t.root.GetParameterAsNullableDouble("missing"), nullptr);
    for (auto const * text : {"", "abc"}) {
        t.root.GetParagraph("p")->SetValueAsString(text, true);
        EXPECT_EQ(t.root.GetParameterAsNullableDouble("p"), nullptr) << text;
    }
}

TEST(Paragraph, ScalarsHandOnTheResultAndTheRestIsTrue)
{
    TestTree t;
    t.root.mbvRefuse = true;
    EXPECT_FALSE(t.root.SetValueAsInteger(1));
    EXPECT_FALSE(t.root.SetValueAsLong(1));
    EXPECT_FALSE(t.root.SetValueAsDouble(1, -1));
    EXPECT_FALSE(t.root.SetValueAsBool(true));
    EXPECT_FALSE(t.root.SetValueAsGUID(LCGUID("a")));
    EXPECT_TRUE(t.root.SetValueAsTimeSpan(LCTimeSpan(1)));
    EXPECT_TRUE(t.root.SetValueAsTBGRColorValue(LCColor()));
    EXPECT_TRUE(t.root.SetValueAsTRGBColorValue(LCColor()));
    EXPECT_TRUE(t.root.SetValueAsStringList(LCStringList()));
}

TEST(Paragraph, MissingFieldsOfADateAreTheDefaultsAndAMissingZoneIsTheMachines)
{
    LCDateTime const def(2001, 2, 3, 4, 5, 6, 7, 600);
    TestTree t;
    t.root.SetParameterAsInteger("year", 2024);
    t.root.SetParameterAsString("month", "letters", true);
    LCDateTime const read = t.root.GetValueAsDateTime(def);
    LCDateTime const expected(2024, 0, 3, 4, 5, 6, 7);
    EXPECT_EQ(read.GetTimeZoneBias(), expected.GetTimeZoneBias());
    EXPECT_EQ(read, expected);
    t.root.CreateParagraph("TZ");
    EXPECT_EQ(t.root.GetValueAsDateTime(def).GetTimeZoneBias(), 0);
}

TEST(Paragraph, ColoursReadTheOtherFormsAsFarAsTheyHold)
{
    LCColor const colour(1, 2, 3, 128);
    TestTree t;
    t.root.SetValueAsTBGRColorValue(colour);
    EXPECT_EQ(t.root.GetValueAsColor(LCColor()), LCColor(1, 2, 3, 255));
    t.root.SetValueAsTRGBColorValue(colour);
    EXPECT_EQ(t.root.GetValueAsColor(LCColor()), LCColor(3, 2, 1, 255));
    t.root.SetParameterAsInteger("R", -1);
    EXPECT_EQ(t.root.GetValueAsColor(LCColor()), LCColor(3, 2, 1, 255));
    t.findExisting = true;
    t.root.SetParameterAsString("R", "letters", true);
    EXPECT_EQ(t.root.GetValueAsColor(LCColor()), LCColor(0, 0, 0, 0, 255));
}

TEST(Paragraph, MarkedLinesReadAsListVectorAndText)
{
    struct {
        std::function<void(LCParagraph &)> write;
        std::vector<LCString> lines;
        char const * text;
    } const rows[] = {
        {[](LCParagraph & p) { p.SetValueAsMultiLineString("a\nb\n"); }, {"a", "b"}, "a\nb"},
        {[](LCParagraph & p) { p.SetValueAsMultiLineString("a\n\n"); }, {"a", ""}, "a\n"},
        {[](LCParagraph & p) { p.SetValueAsMultiLineString("\n"); }, {""}, ""},
        {[](LCParagraph & p) { p.SetValueAsMultiLineString("\r\na\r\n"); }, {"\r", "a\r"}, "\r\na\r"},
        {[](LCParagraph & p) { p.SetValueAsMultiLineString(""); }, {""}, ""},
        {[](LCParagraph & p) { p.SetValueAsStringVector({}); }, {}, ""},
        {[](LCParagraph & p) {
             p.SetValueAsStringList(Lines<LCStringList>({"a", "b\nc"}));
         },
         {"a", "b\nc"},
         "a\nb\nc"},
        {[](LCParagraph & p) { p.SetValueAsString("a\nb", true); }, {"a\nb"}, "a\nb"},
        {[](LCParagraph &) {}, {""}, ""},
        {[](LCParagraph & p) { p.SetAttributeAsString("Type", "ml"); }, {""}, ""},
    };
    for (auto const & row : rows) {
        TestTree t;
        row.write(t.root);
        SCOPED_TRACE(t.root.Text().str());
        EXPECT_EQ(Read(t.root, &LCParagraph::GetValueAsStringList), Lines<LCStringList>(row.lines));
        EXPECT_EQ(Read(t.root, &LCParagraph::GetValueAsStringVector), Lines<LCStringVector>(row.lines));
        EXPECT_EQ(t.root.GetValueAsMultiLineString("d"), row.text);
    }
}

TEST(Paragraph, VectorsReadTheirItemsOnly)
{
    TestTree t;
    t.root.SetParameterAsInteger("other", 9);
    t.root.SetValueAsIntVector(Ints({1}));
    t.root.CreateParagraph("ITEM")->SetValueAsString("letters", true);
    EXPECT_EQ(Read(t.root, &LCParagraph::GetValueAsIntVector), Ints({1, 0}));
    EXPECT_TRUE(t.root.mbvFlag);
}

TEST(Paragraph, TheSwitchSaysWhetherAWriteFindsOrAppends)
{
    TestTree t;
    t.root.SetParameterAsInteger("p", 1);
    t.root.SetParameterAsInteger("p", 2);
    EXPECT_EQ(t.root.Text(), "{p=1 p=2}");
    t.findExisting = true;
    t.root.SetParameterAsInteger("p", 3);
    t.root.SetParameterAsInteger("q", 4);
    EXPECT_EQ(t.root.Text(), "{p=3 p=2 q=4}");

    // It reaches every paragraph; named fields are overwritten then, items of lists always appended.
    TestTree u;
    u.findExisting = true;
    for (int const day : {1, 2}) u.root.SetParameterAsBarCode("code", LCBarCode("QR", LCString(day)));
    for (int const item : {1, 2}) u.root.SetParameterAsIntVector("list", Ints({item}));
    EXPECT_EQ(u.root.Text(), "{code{Type=QR Value=2} list{ITEM=1 ITEM=2}}");
}

TEST(Paragraph, CopyAppendsChildrenOverwritesTheValueAndKeepsOtherAttributes)
{
    TestTree from;
    from.findExisting = true;
    for (int const value : {1, 2}) from.root.CreateParagraph("p")->SetParameterAsInteger("x", value);
    from.root.GetParagraph("p")->SetAttributeAsString("a", "1");
    from.root.SetAttributeAsString("both", "new");
    TestTree to;
    to.findExisting = true;
    to.root.SetValueAsString("old", true);
    to.root.CreateParagraph("p")->SetValueAsString("old", true);
    to.root.SetAttributeAsString("both", "old");
    to.root.SetAttributeAsString("own", "old");
    from.root.CopyToParagraph(to.root);
    EXPECT_EQ(to.root.Text(), "={@both=new @own=old p=old p={@a=1 x=1} p={x=2}}");
    EXPECT_EQ(from.root.Text(), "{@both=new p{@a=1 x=1} p{x=2}}");
}

TEST(Paragraph, CleanEndTakesLineEndsAndBlanksOnly)
{
    struct {
        LCString before, after;
    } const rows[] = {
        {"ab \r\n", "ab"}, {"ab\t\n", "ab\t"}, {" \n", ""}, {"", ""}, {" a b", " a b"}, {"\xFF ", "\xFF"},
    };
    for (auto const & row : rows) EXPECT_EQ(TestParagraph::CleanEnd(row.before), row.after);
}

}  // namespace
