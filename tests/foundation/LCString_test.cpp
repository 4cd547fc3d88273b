#include "foundation/LCString.h"

#include <bit>
#include <cmath>
#include <iomanip>
#include <limits>
#include <random>
#include <sstream>
#include <unordered_set>

namespace {

using namespace std::string_literals;

template <typename From> constexpr bool converts = std::is_convertible_v<From, LCString>;

// What must not compile into text by accident.
static_assert(converts<char const *> && converts<wchar_t const *> && converts<std::string> && converts<char>);
static_assert(!converts<int> && !converts<bool> && !converts<double> && !converts<std::nullptr_t>);
static_assert(!std::is_constructible_v<LCString, bool> && !std::is_constructible_v<LCString, double>);
static_assert(!std::is_constructible_v<LCString, int, char const *> &&
              !std::is_constructible_v<LCString, int, int>);
static_assert(!std::is_constructible_v<LCString, double, int, int> && !std::is_constructible_v<LCString, double, bool>);
static_assert(!std::is_constructible_v<LCString, int, int, char, int>);
template <typename Text>
constexpr bool takesTextAsFlag = requires(Text text, int number) { text.AsInt(0, "hex"); } || requires(Text text, int number) { text.AsIntWithCheck(number, "hex"); };
template <typename Text> constexpr bool comparesWithNull = requires(Text text) { text == nullptr; };
static_assert(!takesTextAsFlag<LCString> && !comparesWithNull<LCString>);
static_assert(std::is_nothrow_move_constructible_v<LCString> && std::is_nothrow_move_assignable_v<LCString>);

TEST(String, ConstructionFromTextAndBytes)
{
    EXPECT_EQ(LCString().size(), 0u);
    EXPECT_EQ(LCString("a\0b"s).size(), 3u);
    EXPECT_EQ(LCString("a\0b"), "a");
    EXPECT_EQ(LCString('\0').size(), 0u);
    EXPECT_EQ(LCString('x'), "x");
    EXPECT_EQ(LCString(3, 'x'), "xxx");
    EXPECT_EQ(LCString(0, 'x'), "");
    EXPECT_THROW(
        try { LCString(-1, 'x'); } catch (std::length_error const & e) {
            EXPECT_STREQ(e.what(), "string too long");
            throw;
        },
        std::length_error);

    LCString text("ab");
    text.resize(5);
    EXPECT_EQ(text.str(), "ab\0\0\0"s);
    EXPECT_STREQ(text.c_str(), "ab");
    EXPECT_EQ(text.assign("x\0yz", 3).str(), "x\0y"s);
    EXPECT_EQ(text.GetLength(), 3);
    text.SetAt(1, '-');
    text[0u] = 'X';
    EXPECT_EQ(text.GetAt(0), 'X');
    EXPECT_EQ(text, "X-y");
    EXPECT_EQ(std::unordered_set<LCString>({"a", "b", "a"}).size(), 2u);
}

TEST(String, WideTextConvertsByNumberUpToTheFirstForeignCharacter)
{
    std::wstring wide;
    for (wchar_t c = 1; c <= 0xFF; ++c) wide += c;
    LCString const narrow(wide.c_str());
    ASSERT_EQ(narrow.size(), 255u);
    EXPECT_EQ(static_cast<unsigned char>(narrow.GetAt(254)), 0xFF);
    std::unique_ptr<wchar_t[]> const back(narrow.ToCharPointer());
    EXPECT_EQ(back.get(), wide);
    EXPECT_EQ(LCString(L"ab\x20AC z"), "ab");
}

TEST(String, EveryNativeIntegerGivesItsDecimalDigits)
{
    EXPECT_EQ(LCString(std::numeric_limits<int>::min()), "-2147483648");
    EXPECT_EQ(LCString(std::numeric_limits<unsigned>::max()), "4294967295");
    EXPECT_EQ(LCString(-7L), "-7");
    EXPECT_EQ(LCString(7UL), "7");
    EXPECT_EQ(LCString(std::numeric_limits<long long>::min()), "-9223372036854775808");
    EXPECT_EQ(LCString(std::numeric_limits<LCUInt64>::max()), "18446744073709551615");

    struct { int v, width; char fill; bool hex; char const * expected; } const rows[] = {
        {255, 0, ' ', true, "ff"}, {255, 6, '0', true, "0000ff"}, {-1, 0, ' ', true, "ffffffff"},
        {-255, 0, ' ', false, "-255"}, {-5, 4, '0', false, "00-5"}, {12345, 3, '0', false, "12345"},
        {5, -3, '#', false, "5"},
    };
    for (auto const & row : rows) EXPECT_EQ(LCString(row.v, row.width, row.fill, row.hex), row.expected);
    EXPECT_EQ(LCString(255, true), "ff");
}

TEST(String, DoublesInTheirStoredForms)
{
    struct { double v; int precision; bool trim; char const * expected; } const rows[] = {
        {0.0, -1, false, "0"}, {-0.0, -1, false, "-0"}, {123.5, -1, false, "123.5"},
        {1e15, -1, true, "1000000000000000"}, {1.0 / 3.0, -1, false, "0.333333333333"}, {-1e-13, -1, false, "-0"},
        {0.1, -1, false, "0.1"}, {100.0, -1, false, "100"}, {3.14159, 2, false, "3.14"}, {3.10, 2, true, "3.1"},
        {3.0, 2, true, "3"}, {3.0, 2, false, "3.00"}, {120.0, 0, true, "120"}, {0.0, 0, true, "0"},
        {2.5, 0, false, "2"}, {0.5, 0, false, "0"}, {1.5, 0, false, "2"}, {HUGE_VAL, -1, false, "inf"},
        {-HUGE_VAL, 2, true, "-inf"},
    };
    for (auto const & row : rows) EXPECT_EQ(LCString(row.v, row.precision, row.trim), row.expected) << row.v;
    EXPECT_EQ(LCString(2.5, 1, 8, '#'), "#####2.5");
    EXPECT_EQ(LCString(-2.5, 2, 8, '0'), "000-2.50");
    EXPECT_EQ(LCString(2.5, -3, 0, ' '), "2.500000");
}

/// Doubles of every kind: all bit patterns, short decimals, ties, the neighbours of powers.
double AnyDouble(std::mt19937_64 & random)
{
    double const scale = std::pow(10.0, static_cast<double>(random() % 20) - 4.0);
    switch (random() % 5) {
    case 0: return std::bit_cast<double>(random());
    case 1: return static_cast<double>(static_cast<std::int64_t>(random() % 2000001) - 1000000) / scale;
    case 2: return std::ldexp(static_cast<double>(random() % 4097), static_cast<int>(random() % 80) - 60);
    case 3: return std::nextafter(scale, random() % 2 != 0 ? 0.0 : HUGE_VAL);
    default: return (random() % 2 != 0 ? 1.0 : -1.0) * static_cast<double>(random() % 1000000) / 1000.0;
    }
}

TEST(String, FixedNotationIsThatOfTheStreams)
{
    std::mt19937_64 random(2);
    for (int i = 0; i < 60000; ++i) {
        double const v = AnyDouble(random);
        int const precision = static_cast<int>(random() % 21);
        std::ostringstream expected;
        expected.imbue(std::locale::classic());
        expected << std::fixed << std::setprecision(precision) << v;
        ASSERT_EQ(LCString(v, precision, false), expected.str().c_str())
            << std::hexfloat << v << ", " << precision;
    }
    EXPECT_EQ(LCString(1.0, 400, false).size(), 402u);
}

template <typename Value> void ExpectReadAsByTheStream(std::string const & text, bool hex)
{
    Value const before = static_cast<Value>(77);
    Value expected = before;
    Value read = before;
    std::istringstream stream(text);
    stream.imbue(std::locale::classic());
    if (hex) stream >> std::hex;
    bool const expectedResult = static_cast<bool>(stream >> expected);
    bool result = false;
    if constexpr (std::is_same_v<Value, double>)
        result = LCString(text).AsDoubleWithCheck(read);
    else if constexpr (std::is_same_v<Value, int>)
        result = LCString(text).AsIntWithCheck(read, hex);
    else
        result = LCString(text).AsUIntWithCheck(read, hex);
    EXPECT_EQ(result, expectedResult) << '"' << text << '"' << (hex ? " hex" : "");
    EXPECT_EQ(read, expected) << '"' << text << '"' << (hex ? " hex" : "");
    EXPECT_EQ(std::signbit(static_cast<double>(read)), std::signbit(static_cast<double>(expected))) << text;
}

TEST(String, NumbersAreReadAsTheStreamsReadThem)
{
    std::vector<std::string> texts = {
        "", " ", "\t\n\v\f\r ", "42abc", "12.7", "1,5", "\t5", "1e3", "ff", "FF", "0xff", "0Xg", "0x", "00x5",
        "0x0x5", "x5", "2147483647", "2147483648", "-2147483648", "-2147483649", "ffffffff", "100000000", "-1",
        "-4294967295", "-4294967296", "4294967295", "4294967296", "99999999999999999999", "-99999999999999999999",
        "+5", "+-5", "-", "+", ".", "-.", "1e", "1e+", "1e5e3", "1.2.3", "e5", ".5e1", "5.", "-.5", "1e400", "-1e400",
        "1e-400", "-1e-400", "0e99999999999", "1e99999999999999999999", "1e-99999999999999999999", "0x1p3", "inf",
        "nan", "4.9e-324", "2.4e-324", "1.7976931348623159e308", "1 2",
        "1\0002"s,
        "00000000000000000000007",
        "7fffffff",
        "- 5",
        "1'000",
        std::string(400, '9'),
        "0." + std::string(400, '0') + "5",
        std::string(400, '9') + "e-400",
    };
    std::mt19937_64 random(3);
    std::string const alphabet = "0123456789+-.eExX aAfF\t,";
    for (int i = 0; i < 60000; ++i) {
        std::string text;
        for (auto n = random() % 12; n > 0; --n) text += alphabet[random() % alphabet.size()];
        texts.push_back(text);
    }
    for (int i = 0; i < 20000; ++i) {
        std::ostringstream digits;
        digits.imbue(std::locale::classic());
        digits << std::setprecision(static_cast<int>(random() % 19) + 1) << AnyDouble(random);
        texts.push_back(digits.str());
    }
    for (auto const & text : texts) {
        ExpectReadAsByTheStream<double>(text, false);
        for (bool const hex : {false, true}) {
            ExpectReadAsByTheStream<int>(text, hex);
            ExpectReadAsByTheStream<unsigned>(text, hex);
        }
        ASSERT_FALSE(testing::Test::HasFailure());
    }
}

TEST(String, DefaultsAnswerWhatCannotBeRead)
{
    EXPECT_EQ(LCString("").AsInt(7, false), 7);
    EXPECT_EQ(LCString("x").AsDouble(2.5), 2.5);
    EXPECT_EQ(LCString("2147483648").AsLong(3), 3);
    EXPECT_EQ(LCString("x").AsUInt(-1, false), 4294967295u);
    EXPECT_EQ(LCString("-1").AsUInt(0, false), 4294967295u);
    EXPECT_EQ(LCString(-1, true).AsInt(9, true), 9);
    long native = 5;
    EXPECT_TRUE(LCString("-12").AsLongWithCheck(native));
    EXPECT_EQ(native, -12);
    EXPECT_FALSE(LCString("3000000000").AsLongWithCheck(native));
    EXPECT_EQ(native, 2147483647);
    EXPECT_FALSE(LCString("").AsLongWithCheck(native));
    EXPECT_EQ(native, 2147483647);
    native = static_cast<long>(0x100000001);
    EXPECT_FALSE(LCString("x").AsLongWithCheck(native));
    EXPECT_EQ(native, 0);
}

TEST(String, CleansAndDigsOutNumbers)
{
    struct { char const * text; char const * expected; } const rows[] = {
        {"1.500", "1.5"}, {"1.000", "1"}, {"100", "100"}, {"0.0", "0"}, {"1.", "1"}, {".", ""}, {"", ""}, {".0", ""},
        {"1.50  ", "1.50"}, {"100  ", "100  "}, {"1 .00", "1"}, {"1.0.0", "1.0"},
    };
    for (auto const & row : rows) {
        LCString text(row.text);
        EXPECT_EQ(LCString::CleanDoubleString(text), row.expected) << row.text;
        text.CleanDoubleString();
        EXPECT_EQ(text, row.expected) << row.text;
    }
    struct { char const * text; double expected; } const dug[] = {
        {"12.5 mm", 12.5}, {"none", 0.0}, {"a-5b", -5.0}, {"+5", 5.0}, {"1 2", 1.0}, {"1,5", 1.0}, {"--5", 0.0},
        {"\xB2"
         "3",
         3.0},
    };
    for (auto const & row : dug)
        EXPECT_EQ(LCString(row.text).IgnoreCharactersToDouble(), row.expected) << row.text;
}

TEST(String, FilesKeepTheirLinesButForLeadingEmptyOnes)
{
    TemporaryFolder const folder;
    struct { std::string content, expected; } const rows[] = {
        {"abc\n", "abc"}, {"\n\nabc", "abc"}, {"abc\n\ndef", "abc\n\ndef"}, {"abc\n\n", "abc\n"},
        {"", ""}, {"\n\n\n", ""}, {"a\0b\r\n"s, "a\0b\r"s},
    };
    for (auto const & row : rows) {
        LCString text("before");
        EXPECT_TRUE(text.LoadFromFile(folder.Write("in", row.content)));
        EXPECT_EQ(text.str(), row.expected);
    }
    LCString const content("x\0y\n"s);
    EXPECT_TRUE(content.SaveToFile(folder.Path("out")));
    EXPECT_EQ(folder.Read("out"), content.str());
    EXPECT_TRUE(LCString().SaveToFile(folder.Path("out")));
    EXPECT_EQ(folder.Read("out"), "");

    for (auto const & path : {folder.Path(""), folder.Path("missing/file")}) {
        LCString text("before");
        EXPECT_FALSE(text.LoadFromFile(path)) << path.str();
        EXPECT_TRUE(text.empty());
        EXPECT_FALSE(text.SaveToFile(path)) << path.str();
    }
    LCString self = folder.Write("self", "content");
    EXPECT_TRUE(self.LoadFromFile(self));
    EXPECT_EQ(self, "content");
}

TEST(String, OrderIsThatOfUnsignedBytesAndFoldedOrderThatOfUpperCase)
{
    ExpectTotalOrder(std::vector<LCString>{"", "A", "AB", "B", "_", "a", "\x80", "\xFF"});
    EXPECT_TRUE(LCString("ABC").EqCI("abc"));
    EXPECT_TRUE(LCString("abc").NEqCI("abcd"));
    EXPECT_FALSE(LCString("\xC4").EqCI("\xE4"));
    LCString::LCCompareCI const less;
    struct { char const * a; char const * b; bool expected; } const rows[] = {
        {"B", "_", true}, {"b", "_", true}, {"a", "A", false}, {"A", "a", false},
        {"a", "ab", true}, {"B", "a", false}, {"z", "\x80", true},
    };
    for (auto const & row : rows) EXPECT_EQ(less(row.a, row.b), row.expected) << row.a << " < " << row.b;
}

TEST(String, JoinsPathsWithOneBackslash)
{
    struct { char const * left; char const * right; char const * expected; } const rows[] = {
        {"C:\\a", "b", "C:\\a\\b"}, {"C:\\a\\", "b", "C:\\a\\b"}, {"C:\\a", "\\b", "C:\\a\\b"},
        {"C:\\a\\", "\\b", "C:\\a\\b"}, {"", "b", "b"}, {"a", "", "a"}, {"a/", "b", "a/\\b"}, {"\\", "\\", "\\"},
    };
    for (auto const & row : rows) EXPECT_EQ(LCString(row.left) & row.right, row.expected);
    LCString self("a");
    LCString const & alias = self;
    self &= alias;
    EXPECT_EQ(self, "a\\a");
}

TEST(String, TrimsBlanksOnly)
{
    struct { char const * text; char const * left; char const * right; char const * both; } const rows[] = {
        {"  a b  ", "a b  ", "  a b", "a b"}, {"   ", "", "", ""}, {"", "", "", ""}, {"\t a", "\t a", "\t a", "\t a"},
    };
    for (auto const & row : rows) {
        LCString left(row.text), right(row.text), both(row.text);
        left.TrimLeft();
        right.TrimRight();
        both.Trim();
        EXPECT_EQ(left, row.left);
        EXPECT_EQ(right, row.right);
        EXPECT_EQ(both, row.both);
        EXPECT_EQ(LCString(row.text).CopyTrimLeft(), left);
        EXPECT_EQ(LCString(row.text).CopyTrimRight(), right);
        EXPECT_EQ(LCString(row.text).CopyTrim(), both);
    }
    for (auto const & [text, expected] :
         {std::pair("xxaxb", "axb"), std::pair("xxx", ""), std::pair("", "")}) {
        LCString trimmed(text);
        trimmed.TrimLeft('x');
        EXPECT_EQ(trimmed, expected);
    }
    EXPECT_TRUE(LCString("   ").IsTrimEmpty());
    EXPECT_FALSE(LCString(" \t").IsTrimEmpty());
}

TEST(String, SubstringsAtTheirEdges)
{
    LCString const abc("abc");
    constexpr char const * raises = nullptr;
    auto const expect = [&](char const * expected, auto call) {
        try {
            EXPECT_STREQ(call().c_str(), expected);
        } catch (std::out_of_range const & e) {
            EXPECT_EQ(expected, raises);
            EXPECT_STREQ(e.what(), "invalid string position");
        }
    };
    expect("abc", [&] { return abc.Left(10); });
    expect("abc", [&] { return abc.Left(-1); });
    expect("abc", [&] { return abc.Right(3); });
    expect("", [&] { return abc.Right(0); });
    expect(raises, [&] { return abc.Right(4); });
    expect(raises, [&] { return abc.Right(-1); });
    expect("", [&] { return abc.Tail(3); });
    expect(raises, [&] { return abc.Tail(4); });
    expect(raises, [&] { return abc.Tail(-1); });
    expect("", [&] { return abc.Mid(3, 2); });
    expect("", [&] { return abc.Mid(4, 2); });
    expect("bc", [&] { return abc.Mid(1, 100); });
    expect("bc", [&] { return abc.Mid(1, -1); });
    expect("b", [&] { return abc.Mid(1, 1); });
    expect(raises, [&] { return abc.Mid(-1, 1); });
    expect("", [&] { return abc.substr(3); });
    expect(raises, [&] { return abc.substr(4, 0); });

    LCString edited(abc);
    edited.insert(1, edited);
    EXPECT_EQ(edited, "aabcbc");
    edited.erase(1, 3);
    EXPECT_EQ(edited, "abc");
    EXPECT_THROW(edited.erase(4, 1), std::out_of_range);
    EXPECT_THROW(edited.insert(4, "x"), std::out_of_range);
    edited.Reverse();
    EXPECT_EQ(edited, "cba");
    LCString const & alias = edited;
    edited += alias;
    EXPECT_EQ(LCString("<") + edited + ">", "<cbacba>");
}

TEST(String, FoldingChangesAsciiLettersOnly)
{
    std::string all;
    for (int c = 1; c < 256; ++c) all += static_cast<char>(c);
    std::string upper = all, lower = all;
    for (char & c : upper) c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c;
    for (char & c : lower) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
    EXPECT_EQ(LCString(all).UpperCase().str(), upper);
    EXPECT_EQ(LCString(all).LowerCase().str(), lower);
}

TEST(String, FindsPositionsFromEitherEnd)
{
    LCUInt64 const npos = LCString::npos;
    LCString const text("xabab");
    EXPECT_EQ(text.Find("ab", 0), 1u);
    EXPECT_EQ(text.find("ab", 2), 3u);
    EXPECT_EQ(text.Find("ab", 4), npos);
    EXPECT_EQ(text.rfind("ab", npos), 3u);
    EXPECT_EQ(text.rfind("ab", 2), 1u);
    EXPECT_EQ(text.rfind("xababx"), npos);
    EXPECT_EQ(LCString("abc").Find("", 3), 3u);
    EXPECT_EQ(LCString("abc").Find("", 4), npos);
    EXPECT_EQ(LCString("abc").Find('\0'), 0u);
    EXPECT_EQ(LCString("abc").ReverseFind('\0'), 3u);
    EXPECT_EQ(text.Find('b'), 2u);
    EXPECT_EQ(text.ReverseFind('a'), 3u);
    EXPECT_EQ(LCString("abc").find_first_of("xy", 0), npos);
    EXPECT_EQ(LCString("abab").find_last_of("ab", 100), 3u);
    EXPECT_EQ(LCString("abab").find_last_of("ab", 0), 0u);
    EXPECT_EQ(LCString("").find_last_of("ab"), npos);

    EXPECT_EQ(LCString("abcBC").FindCI("BC", 0), 1u);
    EXPECT_EQ(LCString("abcBC").FindCI("BC", 2), 3u);
    EXPECT_EQ(LCString("abc").FindCI("", 0), 0u);
    EXPECT_EQ(LCString("abc").FindCI("", 3), npos);
    EXPECT_TRUE(LCString("").Contains(""));
    EXPECT_FALSE(LCString("").ContainsCI(""));
}

// Texts of two letters have every kind of period; long needles reach the linear search.
TEST(String, SearchWithoutCaseAgreesWithBruteForce)
{
    std::mt19937_64 random(4);
    auto const any = [&](std::size_t size, unsigned letters) {
        std::string s;
        while (s.size() < size) s += "aAbBcC"[random() % (2 * letters)];
        return s;
    };
    for (int i = 0; i < 20000; ++i) {
        unsigned const letters = 1 + static_cast<unsigned>(random() % 3);
        std::string const unit = any(1 + random() % 4, letters);
        std::string text = any(random() % 60, letters);
        for (auto n = random() % 40; n > 0; --n) text += unit;
        std::string needle =
            random() % 2 != 0 ? any(random() % 8, letters) : text.substr(random() % (text.size() + 1));
        if (random() % 4 == 0) needle += any(1, letters);
        auto const pos = random() % (text.size() + 2);
        LCString const lowerText = LCString(text).LowerCase(), lowerNeedle = LCString(needle).LowerCase();
        LCUInt64 expected = lowerText.find(lowerNeedle, pos);
        if (expected == text.size()) expected = LCString::npos;
        ASSERT_EQ(LCString(text).FindCI(needle, pos), expected) << text << " / " << needle << " from " << pos;
    }
}

TEST(String, ReplacesWithoutSearchingWhatItPutIn)
{
    struct {
        char const * text;
        char const * from;
        char const * to;
        char const * exact;
        char const * folded;
    } const rows[] = {
        {"aaa", "aa", "b", "ba", "ba"}, {"aba", "a", "aa", "aabaa", "aabaa"},
        {"abBA", "b", "x", "axBA", "axxA"}, {"abc", "z", "y", "abc", "abc"},
        {"abc", "", "y", "abc", "abc"}, {"xAx", "X", "", "xAx", "A"},
    };
    for (auto const & row : rows) {
        EXPECT_EQ(LCString(row.text).Replace(row.from, row.to), row.exact);
        EXPECT_EQ(LCString(row.text).ReplaceCI(row.from, row.to), row.folded);
    }
    LCString self("ab");
    self.ReplaceInString(self, self + self);
    EXPECT_EQ(self, "abab");
    self.ReplaceInString("b", self);
    EXPECT_EQ(self, "aababaabab");
    EXPECT_EQ(LCString::QuotedStr("it's"), "'it's'");
}

/// The rule by its definition: try every run of bytes for every star.
bool MatchesSlowly(std::string_view subject, std::string_view pattern)
{
    if (pattern.empty()) return subject.empty();
    if (pattern[0] == '*') {
        for (std::size_t i = 0; i <= subject.size(); ++i) {
            if (MatchesSlowly(subject.substr(i), pattern.substr(1))) return true;
        }
        return false;
    }
    return !subject.empty() && (pattern[0] == '?' || pattern[0] == subject[0]) &&
           MatchesSlowly(subject.substr(1), pattern.substr(1));
}

TEST(String, WildcardsMatchAsByTheirDefinition)
{
    struct { char const * subject; char const * pattern; int exact, folded; } const rows[] = {
        {"C:/dir/a.txt", "C:\\dir\\*.txt", 1, 1}, {"C:/dir/a.txt", "C:\\DIR\\*.TXT", 0, 1}, {"", "", 1, 1},
        {"", "***", 1, 1}, {"", "?", 0, 0}, {"abc", "a?c", 1, 1}, {"a\\b", "A/?", 0, 1},
    };
    for (auto const & row : rows) {
        EXPECT_EQ(LCString(row.subject).CompareWildCards(row.pattern), row.exact) << row.subject;
        EXPECT_EQ(LCString(row.subject).CompareWildCardsCI(row.pattern), row.folded) << row.subject;
    }
    EXPECT_EQ(LCString("ab\0c"s).CompareWildCards("ab\0*x"s), 1);

    std::mt19937_64 random(5);
    for (int i = 0; i < 30000; ++i) {
        std::string subject, pattern;
        for (auto n = random() % 9; n > 0; --n) subject += "ab"[random() % 2];
        for (auto n = random() % 7; n > 0; --n) pattern += "ab*?*"[random() % 5];
        ASSERT_EQ(LCString(subject).CompareWildCards(pattern) == 1, MatchesSlowly(subject, pattern))
            << subject << " / " << pattern;
    }
}

}  // namespace
