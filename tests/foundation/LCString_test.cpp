#include "foundation/LCString.h"

#include <limits>
#include <memory>
#include <unordered_set>

#include "support/Allocations.h"
namespace {

using namespace std::string_literals;
using Texts = std::vector<LCString>;

template <typename From> constexpr bool converts = std::is_convertible_v<From, LCString>;
template <typename... From> constexpr bool constructs = std::is_constructible_v<LCString, From...>;

// What must not compile into text by accident.
static_assert(converts<char const *> && converts<wchar_t const *> && converts<std::string> && converts<char>);
static_assert(!converts<int> && !converts<bool> && !converts<double> && !converts<std::nullptr_t>);
static_assert(!constructs<bool> && !constructs<double> && !constructs<int, char const *> && !constructs<int, int>);
static_assert(!constructs<double, int, int> && !constructs<double, bool> && !constructs<int, int, char, int>);
template <typename Text> constexpr bool takesTextAsFlag = requires(Text text) { text.AsInt(0, "hex"); };
template <typename Text> constexpr bool comparesWithNull = requires(Text text) { text == nullptr; };
static_assert(!takesTextAsFlag<LCString> && !comparesWithNull<LCString>);
template <typename T> constexpr bool isByte =
    requires(LCString text, T c) { text.Find(c); } || requires(LCString text, T c) { text.ReverseFind(c); } ||
    requires(LCString text, T c) { text.TrimLeft(c); };
static_assert(isByte<char> && !isByte<bool> && !isByte<int> && !isByte<double>);
static_assert(std::is_nothrow_move_constructible_v<LCString> && std::is_nothrow_move_assignable_v<LCString>);

/// The text that a call gives, or what it raises.
std::string Outcome(auto call)
{
    try {
        return call().str();
    } catch (std::logic_error const & e) {
        return (dynamic_cast<std::out_of_range const *>(&e) != nullptr ? "out of range: "s : "length: "s) + e.what();
    }
}

TEST(String, ConstructionFromTextAndBytes)
{
    EXPECT_EQ((Texts{LCString(), "a\0b", "a\0b"s, '\0', 'x', LCString(3, 'x'), LCString(0, 'x')}),
              (Texts{""s, "a"s, {"a\0b"s}, ""s, "x"s, "xxx"s, ""s}));
    EXPECT_EQ(Outcome([] { return LCString(-1, 'x'); }), "length: string too long");

    LCString text("ab");
    text.resize(5);
    EXPECT_EQ(text.str() + text.c_str(), "ab\0\0\0ab"s);
    EXPECT_EQ(text.assign("x\0yz", 3).str(), "x\0y"s);
    text.SetAt(1, '-');
    text[0u] = 'X';
    EXPECT_EQ(text, "X-y");
    EXPECT_EQ(std::unordered_set<LCString>({"a", "b", "a"}).size(), 2u);

    std::wstring wide;  // converts by number up to the first foreign character
    for (wchar_t c = 1; c <= 0xFF; ++c) wide += c;
    LCString const narrow((wide + L"\x20AC z").c_str());
    EXPECT_EQ(narrow.str().substr(253), "\xFE\xFF");
    EXPECT_EQ(std::unique_ptr<wchar_t[]>(narrow.ToCharPointer()).get(), wide);
}

TEST(String, EveryNativeNumberGivesItsTextAndDefaultsAnswerWhatCannotBeRead)
{
    EXPECT_EQ((Texts{LCString(std::numeric_limits<int>::min()), LCString(std::numeric_limits<unsigned>::max()),
                     LCString(-123456789012345L), LCString(1234567890123456UL), LCString(std::numeric_limits<long long>::min()),
                     LCString(std::numeric_limits<LCUInt64>::max()), LCString(255, true)}),
              (Texts{"-2147483648", "4294967295", "-123456789012345", "1234567890123456", "-9223372036854775808",
                     "18446744073709551615", "ff"}));
    EXPECT_EQ(LCString(1.0, 400, false).size(), 402u);
    EXPECT_EQ(std::tuple(LCString("x").AsDouble(2.5), LCString("").AsInt(7, false), LCString(-1, true).AsInt(9, true),
                         LCString("2147483648").AsLong(3), LCString("x").AsUInt(-1, false)),
              std::tuple(2.5, 7, 9, 3, 4294967295u));
}

TEST(String, CleansNumbers)
{
    struct { std::string text, expected; } const rows[] = {
        {"1.500", "1.5"}, {"1.000", "1"}, {"100", "100"}, {"0.0", "0"}, {"1.", "1"}, {".", ""}, {"", ""}, {".0", ""},
        {"1.50  ", "1.50"}, {"100  ", "100  "}, {"1 .00", "1"}, {"1.0.0", "1.0"}};
    for (auto const & row : rows) EXPECT_EQ(LCString::CleanDoubleString(LCString(row.text)), row.expected) << row.text;
}

TEST(String, FilesKeepTheirLinesButForLeadingEmptyOnes)
{
    TemporaryFolder const folder;
    LCString text, self = folder.Write("self", "content");
    struct { std::string content, expected; } const rows[] = {
        {"abc\n", "abc"}, {"\n\nabc", "abc"}, {"abc\n\ndef", "abc\n\ndef"}, {"abc\n\n", "abc\n"},
        {"", ""}, {"\n\n\n", ""}, {"a\0b\r\n"s, "a\0b\r"s}};
    for (auto const & row : rows) {
        EXPECT_TRUE(LCString(row.content).SaveToFile(folder.Path("file")));
        EXPECT_EQ(folder.Read("file"), row.content);
        EXPECT_TRUE(text.LoadFromFile(folder.Path("file")));
        EXPECT_EQ(text.str(), row.expected);
        EXPECT_LT(text.str().capacity(), 5000u);
    }
    for (auto const & path : {folder.Path(""), folder.Path("missing/file")}) {
        text = "before";
        EXPECT_FALSE(text.LoadFromFile(path) || text.SaveToFile(path) || !text.empty()) << path.str();
    }
    EXPECT_TRUE(self.LoadFromFile(self) && self == "content");
}

TEST(String, OrderIsThatOfUnsignedBytesAndFoldedOrderThatOfUpperCase)
{
    ExpectTotalOrder(Texts{"", "A", "AB", "B", "_", "a", "\x80", "\xFF"});
    Texts const ordered = {"", "a", "Ab", "B", "z", "_", "\x80"};
    for (LCString const & a : ordered)
        for (LCString const & b : ordered)
            EXPECT_EQ(LCString::LCCompareCI()(a.LowerCase(), b.UpperCase()), &a < &b) << a.str() << b.str();
    EXPECT_TRUE(LCString("ABC").EqCI("abc") && LCString("abc").NEqCI("abcd") && LCString("\xC4").NEqCI("\xE4"));
    std::locale const & classic = std::locale::classic();
    for (unsigned i = 1; i < 256; ++i) {
        char const c = static_cast<char>(i);
        EXPECT_EQ((Texts{LCString(c).UpperCase(), LCString(c).LowerCase()}),
                  (Texts{std::toupper(c, classic), std::tolower(c, classic)})) << i;
    }
}

TEST(String, JoinsPathsWithOneBackslash)
{
    struct { std::string left, right, expected; } const rows[] = {
        {"C:\\a", "b", "C:\\a\\b"}, {"C:\\a\\", "b", "C:\\a\\b"}, {"C:\\a", "\\b", "C:\\a\\b"},
        {"C:\\a\\", "\\b", "C:\\a\\b"}, {"", "b", "b"}, {"a", "", "a"}, {"a/", "b", "a/\\b"}, {"\\", "\\", "\\"}};
    for (auto const & row : rows) EXPECT_EQ(LCString(row.left) & row.right, row.expected);
}

TEST(String, TrimsBlanksOnly)
{
    struct { LCString text; Texts trimmed; } const rows[] = {
        {"  a b  ", {"a b  ", "  a b", "a b"}}, {"   ", Texts(3, "")}, {"", Texts(3, "")}, {"\t a", Texts(3, "\t a")}};
    for (auto const & [text, trimmed] : rows) {
        Texts edited(3, text);
        edited[0].TrimLeft();
        edited[1].TrimRight();
        edited[2].Trim();
        EXPECT_EQ(edited, trimmed);
        EXPECT_EQ((Texts{text.CopyTrimLeft(), text.CopyTrimRight(), text.CopyTrim()}), trimmed);
        EXPECT_EQ(text.IsTrimEmpty(), trimmed[2].empty());
    }
    Texts others = {"xxaxb", "xxx", ""};
    for (LCString & text : others) text.TrimLeft('x');
    EXPECT_EQ(others, (Texts{"axb", "", ""}));
}

TEST(String, SubstringsAtTheirEdgesAndTextsThatAreTheirOwnArgument)
{
    LCString const abc("abc");
    std::string const raises = "out of range: invalid string position";
    struct { LCString (LCString::*part)(int) const; int n; std::string expected; } const rows[] = {
        {&LCString::Left, 10, "abc"}, {&LCString::Left, -1, "abc"}, {&LCString::Right, 3, "abc"},
        {&LCString::Right, 0, ""}, {&LCString::Right, 4, raises}, {&LCString::Right, -1, raises},
        {&LCString::Tail, 3, ""}, {&LCString::Tail, 4, raises}, {&LCString::Tail, -1, raises}};
    for (auto const & row : rows) EXPECT_EQ(Outcome([&] { return (abc.*row.part)(row.n); }), row.expected) << row.n;
    EXPECT_EQ((Texts{abc.Mid(3, 2), abc.Mid(4, 2), abc.Mid(1, 100), abc.Mid(1, -1), abc.Mid(1, 1)}),
              (Texts{"", "", "bc", "bc", "b"}));
    LCString edited(abc);
    EXPECT_EQ(Outcome([&] { return abc.Mid(-1, 1); }) + Outcome([&] { return edited.erase(4, 1); }), raises + raises);
    EXPECT_EQ(Outcome([&] { return edited.insert(4, "x"); }), raises);
    EXPECT_EQ(edited.insert(1, edited), "aabcbc");
    EXPECT_EQ(edited.erase(1, 3), "abc");
    edited.Reverse();
    LCString & alias = edited;
    edited = std::move(alias);
    edited += alias;
    edited &= alias;
    EXPECT_EQ(LCString("<") + edited + ">", "<cbacba\\cbacba>");
    edited = "ab";
    edited.ReplaceInString(edited, edited + edited);
    edited.ReplaceInString("b", edited);
    EXPECT_EQ(edited + LCString::QuotedStr("it's"), "aababaabab'it's'");
}

TEST(String, WithoutMemoryACallDoesNothingOrReportsIt)
{
    LCString const text(std::string(40, 'x')), other(std::string(90, 'y'));
    for (auto const call : std::initializer_list<void (*)(LCString &, LCString const &)>{
             [](LCString & s, LCString const & o) { s += o; }, [](LCString & s, LCString const & o) { s &= o; },
             [](LCString & s, LCString const & o) { s &= o + s; }, [](LCString & s, LCString const & o) { s = o; },
             [](LCString & s, LCString const & o) { s.insert(3, o); }, [](LCString & s, LCString const &) { s &= *&s; },
             [](LCString & s, LCString const & o) { s.ReplaceInString("x", o); },
             [](LCString & s, LCString const & o) { s.ReplaceInStringCI("X", o); },
             [](LCString & s, LCString const & o) { s.assign(o.c_str(), 90); },
             [](LCString & s, LCString const &) { s.resize(1000); },
             [](LCString & s, LCString const & o) { s = o.UpperCase() & s.Mid(1, 30) & LCString(L"wide and long enough"); },
             [](LCString & s, LCString const &) { s = LCString(60, 'z') + LCString(s).CopyTrim().Replace("x", "yy"); }})
        ExpectAllOrNothing(text, [&](LCString & s) { call(s, other); });

    TemporaryFolder const folder;
    LCString const path = folder.Write("a file with a long name", other.str());
    ExpectAllOrNothing(text, [&](LCString & s) {
        auto const isNumber = [](LCString const & t, LCUInt64 size) { return t.size() == size || t == "+NAN"; };
        EXPECT_TRUE(isNumber(LCString(-1e300, 40, false), 343) && isNumber(LCString(7, 50, '0', false), 50) &&
                    isNumber(LCString(1.5, 3, 70, ' '), 70) && isNumber(LCString(LCUInt64{0} - 1), 20));
        EXPECT_TRUE(s.LoadFromFile(path) ? s == other : s.empty());
        EXPECT_TRUE(other.SaveToFile(path));
    });
}

TEST(String, FindsPositionsFromEitherEnd)
{
    using Places = std::vector<LCUInt64>;
    LCUInt64 const npos = LCString::npos;
    LCString const text("xabab"), abc("abc");
    EXPECT_EQ((Places{text.Find("ab", 0), text.find("ab", 2), text.Find("ab", 4), abc.Find("", 3), abc.Find("", 4),
                      text.rfind("ab"), text.rfind("ab", 2), text.rfind("xababx"), text.Find('b'), abc.Find('\0'),
                      text.ReverseFind('a'), abc.ReverseFind('\0'), abc.find_first_of("xy"),
                      text.find_last_of("ab", 100), text.find_last_of("xa", 0)}),
              (Places{1, 3, npos, 3, npos, 3, 1, npos, 2, 0, 3, 3, npos, 4, 0}));
    EXPECT_TRUE(LCString("").Contains("") && !LCString("").ContainsCI(""));
    // What compares at each place takes hours.
    EXPECT_EQ(LCString(20'000'000, 'a').CompareWildCards(LCString("*") + LCString(10'000'000, 'a') + "b"), 0);
    EXPECT_FALSE(LCString(20'000'000, 'a').ContainsCI(std::string(4'000'000, 'a') + "b" + std::string(4'000'000, 'a')));
}

TEST(String, ComparesSearchesAndFormatsNumbersWithoutAnAllocation)
{
    LCString const text(std::string(1000, 'x') + "Needle"), other = text.UpperCase(), size("-1234.567");
    bool good = false;
    EXPECT_EQ(AllocationsOf([&] {
        good = text.EqCI(other) && other < text && text.FindCI("NEEDLE") == 1000 && text.FindCI("y") == LCString::npos;
        good = good && LCString(size.AsDouble(), -1, true) == size && LCString(1234567890).AsInt() == 1234567890;
    }), 0u);
    EXPECT_TRUE(good);
}

}  // namespace
