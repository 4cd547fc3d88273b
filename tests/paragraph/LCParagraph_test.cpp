#include "paragraph/LCParagraph.h"

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

// A text in quotes where a flag is asked for does not compile; a bool does.
#define BOOL(call) (requires(P p, bool flag) { p.call; } && !requires(P p, char const * flag) { p.call; })
template <typename P>
constexpr bool onlyABoolIsAFlag =
    BOOL(SetValueAsString("v", flag)) && BOOL(SetValueAsBool(flag)) && BOOL(GetValueAsBool(flag)) &&
    BOOL(SetAttributeAsBool("a", flag)) && BOOL(GetAttributeAsBool("a", flag)) && BOOL(SetParameterAsBool("p", flag)) &&
    BOOL(GetParameterAsBool("p", flag)) && BOOL(GetParameterAttributeAsBool("p", "a", flag)) &&
    BOOL(SetParameterAsString("p", "v", flag)) && BOOL(GetParameterAsString("p", "v", flag)) &&
    BOOL(GetParagraphsWithName("p", std::declval<LCParagraphList &>(), flag)) &&
    BOOL(GetParagraphWithNameAndAttributeAsBool("p", "a", flag));
static_assert(onlyABoolIsAFlag<LCParagraph &> && onlyABoolIsAFlag<LHCParagraph &>);

// Writes the parameter "p", compares what is stored and reads it back. One that is missing is `def`, or an empty list.
#define EXPECT_STORED(kind, ...)                                                                                 \
    ExpectStored([](auto & p, auto const &... v) { return p.SetParameterAs##kind("p", v...); },                  \
                 [](auto & p, char const * name, auto & d) { return p.GetParameterAs##kind(name, d); }, __VA_ARGS__)
template <typename Value>
void ExpectStored(auto set, auto get, LCString const & stored, std::type_identity_t<Value> const & def,
                  Value const & value, auto... digits)
{
    TestTree t;
    EXPECT_TRUE(set(t.root, value, digits...));
    EXPECT_EQ(t.root.Text(), "{p" + stored + "}");
    for (bool const there : {true, false}) {
        Value read = def;
        constexpr bool filled = std::is_void_v<decltype(get(t.root, "p", read))>;
        if constexpr (filled) get(t.root, there ? "p" : "missing", read);
        if constexpr (!filled) read = get(t.root, there ? "p" : "missing", def);
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
#define EXPECT_ATTRIBUTE(kind, stored, def, value, ...)                                                          \
    {                                                                                                            \
        TestTree t;                                                                                              \
        TestParagraph & child = *t.root.CreateParagraph("p");                                                    \
        EXPECT_TRUE(child.SetAttributeAs##kind("a", value __VA_OPT__(, ) __VA_ARGS__));                          \
        EXPECT_EQ(child.Text(), "p{@a=" stored "}");                                                             \
        EXPECT_EQ(t.root.GetParameterAttributeAs##kind("p", "a", def), value);                                   \
        EXPECT_EQ(t.root.GetParameterAttributeAs##kind("p", "b", def), def);                                     \
        EXPECT_EQ(t.root.GetParameterAttributeAs##kind("missing", "a", def), def);                               \
        EXPECT_EQ(t.root.GetParagraphWithNameAndAttributeAs##kind("p", "a", value), &child);                     \
        EXPECT_EQ(t.root.GetParagraphWithNameAndAttributeAs##kind("p", "a", def), nullptr);                      \
        child.mbvRefuse = true;                                                                                  \
        EXPECT_FALSE(child.SetAttributeAs##kind("a", value __VA_OPT__(, ) __VA_ARGS__));                         \
    }
#define EXPECT_TEXT(kind, stored, ...)                                                                           \
    EXPECT_STORED(kind, "=" stored, __VA_ARGS__);                                                                \
    EXPECT_ATTRIBUTE(kind, stored, __VA_ARGS__)

TEST(Paragraph, ValuesAndAttributesHaveOneStoredText)
{
    EXPECT_ATTRIBUTE(String, "x", LCString("d"), LCString("x"));
    EXPECT_TEXT(GUID, "ab-1", LCGUID("d"), LCGUID("{ab-1}"));
    EXPECT_TEXT(Integer, "-5", 7, -5);
    EXPECT_TEXT(Long, "-2147483648", 7, -2147483647 - 1);
    EXPECT_TEXT(Double, "-1234567.5", 7.0, -1234567.5, -9);
    EXPECT_TEXT(Bool, "1", false, true);
    EXPECT_TEXT(Bool, "0", true, false);

    // Other decimals than those of the look-up are another text.
    EXPECT_STORED(Double, "=100.000", 7.0, 100.0, 3);
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
    auto const scalars = [](TestParagraph & p) {
        return std::tuple(p.GetValueAsInteger(7), p.GetValueAsLong(7), p.GetValueAsDouble(7), p.GetValueAsBool(false),
                          p.GetValueAsTimeSpan(LCTimeSpan(7)).AsSeconds());
    };
    EXPECT_EQ(scalars(empty), std::tuple(7, 7, 7.0, false, 7.0));
    EXPECT_EQ(scalars(word), std::tuple(0, 0, 0.0, true, 0.0));
    EXPECT_EQ(empty.GetValueAsGUID(LCGUID("d")), LCGUID("d"));
    EXPECT_EQ(empty.GetValueAsBarCode(LCBarCode("d", "d")), LCBarCode());
    EXPECT_EQ(empty.GetValueAsColor(LCColor()), LCColor(0, 0, 0));
    // A default goes through the stored text, unless there is nothing to ask for it.
    EXPECT_EQ(t.root.GetParameterAsDouble("missing", 1e-15), 1e-15);
    EXPECT_EQ(t.root.GetParameterAsDouble("empty", 1e-15), 0.0);
    EXPECT_EQ(empty.GetAttributeAsDouble("missing", 1e-15), 0.0);

    empty.SetAttributeAsString("text", "");
    EXPECT_EQ(empty.GetAttributeAsInteger("text", 7), 0);
    EXPECT_TRUE(empty.GetAttributeAsBool("text", false));
    EXPECT_FALSE(empty.GetAttributeAsGUID("text", LCGUID("d")).IsValid());
}

TEST(Paragraph, TextParametersAreChildrenAndTheReadersFlagAsksForAnAttribute)
{
    TestTree t;
    t.root.SetAttributeAsString("q", "attribute");
    for (char const * const name : {"p", "q"}) {
        EXPECT_TRUE(t.root.SetParameterAsString(name, "text", *name == 'p'));
        EXPECT_EQ(t.root.GetParagraph(name)->mbvFlag, *name == 'p');
        EXPECT_EQ(t.root.GetParameterAsString(name, "d", false), "text");
        EXPECT_EQ(t.root.GetParameterAsString(name, "d", true), *name == 'p' ? "d" : "attribute");
    }
    t.root.GetParagraph("q")->SetValueAsInteger(5);
    EXPECT_TRUE(t.root.GetParagraph("q")->mbvFlag);
}

TEST(Paragraph, NullableDoublesAreStoredByTheirAbsence)
{
    TestTree t;
    double value = 1.25;
    EXPECT_EQ(t.root.GetParameterAsNullableDouble("p"), nullptr);
    EXPECT_TRUE(t.root.SetParameterAsNullableDouble("p", &value, 3) &&
                t.root.SetParameterAsNullableDouble("p", nullptr, -1));
    std::unique_ptr<double> const read(t.root.GetParameterAsNullableDouble("p"));
    EXPECT_TRUE(t.root.Text() == "{p=1.250}" && read && *read == 1.25);
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

TEST(Paragraph, DatesAndColoursReadWhatThereIsOfThem)
{
    // A missing field of a date is the default's, a missing zone the machine's.
    LCDateTime const def(2001, 2, 3, 4, 5, 6, 7, 600);
    TestTree t;
    t.root.SetParameterAsInteger("year", 2024);
    t.root.SetParameterAsString("month", "letters", true);
    LCDateTime const expected(2024, 0, 3, 4, 5, 6, 7);
    EXPECT_EQ(t.root.GetValueAsDateTime(def), expected);
    EXPECT_EQ(t.root.GetValueAsDateTime(def).GetTimeZoneBias(), expected.GetTimeZoneBias());
    t.root.CreateParagraph("TZ");
    EXPECT_EQ(t.root.GetValueAsDateTime(def).GetTimeZoneBias(), 0);

    // Without fields, or with -1 for red, the value is read in the TBGR form.
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
    struct { bool marked; char const * text; std::size_t size; char const * joined; } const rows[] = {
        {true, "a\n\n", 2, "a\n"}, {true, "\n", 1, ""}, {true, "\r\na\r\n", 2, "\r\na\r"}, {true, "", 1, ""},
        {false, "a\nb", 1, "a\nb"}, {false, "", 1, ""}};
    for (auto const & row : rows) {
        TestTree t;
        t.root.SetAttributeAsString("Type", "ml");  // not the mark
        row.marked ? t.root.SetValueAsMultiLineString(row.text) : t.root.SetValueAsString(row.text, true);
        LCStringList list;
        LCStringVector vector;
        t.root.GetValueAsStringList(list);
        t.root.GetValueAsStringVector(vector);
        EXPECT_EQ(std::tuple(list.size(), vector.size(), list.Str('\n'), vector.Str('\n')),
                  std::tuple(row.size, row.size, row.joined, row.joined)) << t.root.Text().str();
        EXPECT_EQ(t.root.GetValueAsMultiLineString("d"), row.joined);
    }
}

TEST(Paragraph, ListsAreFilledFromTheirItemsOnly)
{
    TestTree t;
    LCIntVector list;
    for (auto const * name : {"other", "ITEM"}) t.root.SetParameterAsString(name, "letters", true);
    t.root.SetValueAsIntVector(LCIntVector(1, 5));
    t.root.GetValueAsIntVector(list);
    EXPECT_TRUE(list == Make<LCIntVector>({0, 5}) && t.root.mbvFlag);

    // The list may hold the name that it is read by.
    LCStringVector vector(1, "a name that is no short text");
    t.root.SetParameterAsString(vector[0], "value", true);
    t.root.GetParameterAsStringVector(vector[0], vector);
    EXPECT_EQ(vector.Str(','), "value");
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
    char const * const rows[][2] = {{"ab \r\n", "ab"}, {" ab\t\n", " ab\t"}, {" \n", ""}, {"", ""}, {"\xFF ", "\xFF"}};
    for (auto const & row : rows) EXPECT_EQ(TestParagraph::CleanEnd(row[0]), row[1]);
}

}  // namespace
