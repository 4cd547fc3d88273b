#include <algorithm>
#include <concepts>
#include <initializer_list>
#include <random>

#include "collections/LCStringList.h"
#include "collections/LCStringSet.h"
#include "collections/LCStringVector.h"
#include "support/Support.h"

namespace {

using Texts = std::vector<LCString>;

template <typename Collection> Collection Make(Texts const & texts)
{
    Collection made;
    for (LCString const & text : texts) made.insert(made.end(), text);
    return made;
}
Texts All(auto const & collection) { return Texts(collection.begin(), collection.end()); }

template <typename Collection> class StringCollections : public testing::Test {};
using Three = testing::Types<LCStringList, LCStringVector, LCStringSet>;
TYPED_TEST_SUITE(StringCollections, Three);
template <typename Collection> class StringSequences : public testing::Test {};
using Two = testing::Types<LCStringList, LCStringVector>;
TYPED_TEST_SUITE(StringSequences, Two);

// A braced list must not mean elements in one class and a count in another; and what is moved from keeps its
// texts.
TYPED_TEST(StringCollections, AreCopiedAndNeverBuiltFromABracedList)
{
    static_assert(std::has_virtual_destructor_v<TypeParam> && !std::is_constructible_v<TypeParam, int>);
    static_assert(!std::is_constructible_v<TypeParam, std::initializer_list<LCString>>);
    static_assert(std::constructible_from<TypeParam, int, LCString> ==
                  std::same_as<TypeParam, LCStringVector>);
    TypeParam source = Make<TypeParam>({"a", "b"});
    TypeParam const copy = std::move(source);
    EXPECT_EQ(All(source), Texts({"a", "b"}));
    EXPECT_EQ(All(copy), All(source));
}

TYPED_TEST(StringCollections, AreSearchedExactlyAndWithoutCase)
{
    TypeParam collection = Make<TypeParam>({"Bend", "PUNCH", "_cut", ""});
    struct {
        char const * sought;
        bool exact, ignoringCase;
    } const rows[] = {{"Bend", true, true},   {"bEND", false, true}, {"Ben", false, false},
                      {"cend", false, false}, {"", true, true},      {"_CUT", false, true},
                      {"@cut", false, false}};
    for (auto const & row : rows) {
        SCOPED_TRACE(row.sought);
        EXPECT_EQ(collection.Contains(row.sought), row.exact);
        EXPECT_EQ(collection.ContainsCI(row.sought), row.ignoringCase);
        EXPECT_EQ(collection.Find(row.sought) != collection.end(), row.exact);
        EXPECT_EQ(collection.FindCI(row.sought) != collection.end(), row.ignoringCase);
    }
    TypeParam twice = Make<TypeParam>({"X", "x"});
    EXPECT_EQ(twice.FindCI("x"), twice.begin()) << "the first in the order of the collection";
    EXPECT_EQ(twice.Find("x"), std::next(twice.begin()));
}

TYPED_TEST(StringCollections, JoinAndSaveWhatTheyLoad)
{
    Texts const oneEmptyLine{"", "a", "b"};
    struct {
        std::string content;
        Texts lines;
        char const * joined;
    } const rows[] = {{"", {}, ""},
                      {"a", {"a"}, "a"},
                      {"a\nb\r\n", {"a", "b\r"}, "a;b\r"},
                      {"\n", {""}, ""},
                      {"\na\nb\n", oneEmptyLine, ";a;b"}};
    TemporaryFolder const folder;
    for (auto const & row : rows) {
        SCOPED_TRACE(testing::PrintToString(row.content));
        TypeParam loaded = Make<TypeParam>({"old"});
        EXPECT_TRUE(loaded.LoadFromFile(folder.Write("in.txt", row.content)));
        EXPECT_EQ(All(loaded), row.lines);
        EXPECT_EQ(loaded.Str(';'), row.joined);
        bool const ended = row.content.empty() || row.content.back() == '\n';
        EXPECT_TRUE(loaded.SaveToFile(folder.Write("out.txt", "what stood there before")));
        EXPECT_EQ(folder.Read("out.txt"), ended ? row.content : row.content + '\n');
    }
    EXPECT_EQ(Make<TypeParam>(oneEmptyLine).Str('\0'), "ab");
    for (char const * const unreadable : {"missing.txt", "."}) {
        TypeParam loaded = Make<TypeParam>({folder.Path(unreadable)});
        EXPECT_FALSE(loaded.LoadFromFile(*loaded.begin()))
            << "the path is an element of the collection itself";
        EXPECT_TRUE(loaded.empty());
    }
    EXPECT_FALSE(TypeParam().SaveToFile(folder.Path("no/such/folder")));
}

TYPED_TEST(StringSequences, WalkFromTheSecondElementAndMeetAtTheEnd)
{
    TypeParam sequence = Make<TypeParam>({"a", "b"});
    auto p = sequence.GetHeadPosition();
    for (char const * const text : {"b", "", ""}) EXPECT_EQ(sequence.GetNext(p), text);
    EXPECT_EQ(p, sequence.GetEndPosition());
    p = sequence.GetHeadPosition();
    for (char const * const text : {"", "b", "a", "", "b"}) EXPECT_EQ(sequence.GetPrev(p), text);
    sequence.ReInitList();
    EXPECT_TRUE(sequence.IsEmpty());
    p = sequence.GetHeadPosition();
    EXPECT_EQ(sequence.GetNext(p) + sequence.GetPrev(p), "");
    EXPECT_EQ(p, sequence.GetEndPosition());
}

TYPED_TEST(StringSequences, AppendInOrderAlsoToThemselves)
{
    TypeParam sequence = Make<TypeParam>({"a"});
    sequence.AppendList(Make<TypeParam>({"b", "c"}));
    TypeParam target = Make<TypeParam>({"0"});
    sequence.AppendToList(target);
    EXPECT_EQ(All(target), Texts({"0", "a", "b", "c"}));
    sequence.Reverse();
    sequence.AppendList(sequence);
    EXPECT_EQ(sequence.Str(' '), "c b a c b a");
}

TYPED_TEST(StringSequences, GiveTheValueOfTheFirstLineWithTheName)
{
    struct {
        Texts lines;
        char const * key;
        char const * value;
    } const rows[] = {{{"a=1", "B=2", "b=3"}, "b", "2"},
                      {{"x=1=2"}, "X", "1=2"},
                      {{"abc"}, "ABC", ""},
                      {{" n = v"}, "n", ""},
                      {{"=v"}, "", "v"},
                      {{" n = v"}, " n ", " v"}};
    for (auto const & row : rows) {
        EXPECT_EQ(Make<TypeParam>(row.lines).GetValue(row.key), row.value)
            << testing::PrintToString(row.lines);
    }
}

// Few letters, so that prefixes of 8 and 16 bytes, their zero bytes and whole texts tie often.
TYPED_TEST(StringSequences, SortByTheUpperCaseForms)
{
    std::mt19937 random(7);
    for (unsigned const size : {0u, 1u, 2u, 3u, 10u, 500u}) {
        Texts texts(size);
        for (LCString & text : texts) {
            if (random() % 4 == 0) text = LCString(static_cast<int>(7 + random() % 11), 'x');
            for (auto n = random() % 4; n > 0; --n)
                text += LCString(std::string(1, "aAbB_\0\xE4"[random() % 7]));
        }
        TypeParam sequence = Make<TypeParam>(texts);
        sequence.SortCI();
        auto const upperLess = [](LCString const & a, LCString const & b) {
            return a.UpperCase() < b.UpperCase();
        };
        std::stable_sort(texts.begin(), texts.end(), upperLess);
        bool const stable = std::same_as<TypeParam, LCStringList>;
        EXPECT_TRUE(stable ? All(sequence) == texts : std::ranges::is_sorted(sequence, upperLess));
        EXPECT_TRUE(std::ranges::is_permutation(sequence, texts));
    }
}

TYPED_TEST(StringCollections, ChangeCaseAndLoseNeighbours)
{
    TypeParam collection = Make<TypeParam>({"B", "a", "A", "_", "a"});
    if constexpr (std::same_as<TypeParam, LCStringSet>) {
        collection.ToUpperCase();
        EXPECT_EQ(collection.Str(' '), "A B _") << "what becomes equal merges, in the new order";
    } else {
        collection.UniqueCI();
        EXPECT_EQ(collection.Str(' '), "B a _ a");
        collection.ToUpperCase();
        EXPECT_EQ(collection.Str(' '), "B A _ A");
    }
    collection.ToLowerCase();
    EXPECT_EQ(collection.Contains("B") || collection.Contains("A"), false);
    EXPECT_TRUE(collection.Contains("b") && collection.Contains("a") && collection.Contains("_"));
}

/// Byte by byte, as splitting is defined.
Texts Split(std::string const & text, std::string const & separators, bool keepEmpty)
{
    Texts lines;
    LCString line;
    for (char const c : text) {
        if (separators.find(c) == std::string::npos) {
            line += c;
        } else {
            if (keepEmpty || !line.empty()) lines.push_back(line);
            line.clear();
        }
    }
    if (!line.empty() || text.empty()) lines.push_back(line);
    return lines;
}

template <typename Third>
concept Divides = requires(LCStringList & list, Third third)
{
    list.DivideTextInLines("", ';', third);
};

TEST(StringList, SplitsEveryText)
{
    static_assert(Divides<char> && Divides<bool> && !Divides<int> && !Divides<char const *>);
    std::vector<std::string> texts{""};
    for (std::size_t i = 0; texts[i].size() < 6; ++i) {
        for (char const c : {'a', ';', '\n'}) texts.push_back(texts[i] + c);
    }
    for (std::string const & text : texts) {
        SCOPED_TRACE(testing::PrintToString(text));
        LCStringList list = Make<LCStringList>({text});
        LCStringVector vector = Make<LCStringVector>({text});
        vector.DivideTextInLines(vector.front(), ';');
        EXPECT_EQ(All(vector), Split(text, ";", true));
        list.DivideTextInLines(list.front(), ';', true);
        EXPECT_EQ(All(list), Split(text, ";", true));
        list.DivideTextInLines(text, ';', false);
        EXPECT_EQ(All(list), Split(text, ";", false));
        list.DivideTextInLines(text, ';', '\n');
        EXPECT_EQ(All(list), Split(text, ";\n", true));
    }
}

TEST(StringList, AddsAtBothEndsAndCopiesToStandardLists)
{
    LCStringList list;
    auto const last = list.AddTail("b");
    auto const first = list.AddHead(list.front());
    EXPECT_TRUE(first == list.GetHeadPosition() && std::next(last) == list.GetEndPosition());
    std::list<std::string> target{"a"};
    list.AppendToList(target);
    EXPECT_EQ(target, (std::list<std::string>{"a", "b", "b"}));
    EXPECT_EQ(LCStringVector(2, "x").Str(';'), "x;x");
}

TEST(StringList, ContainsAllOfAnother)
{
    auto const list = Make<LCStringList>({"a", "B"});
    auto const set = Make<LCStringSet>({"a", "B"});
    struct { Texts other; bool exact, ignoringCase; } const rows[] = {
        {{}, true, true}, {{"B", "a"}, true, true}, {{"a", "b"}, false, true}, {{"a", "c"}, false, false}};
    for (auto const & row : rows) {
        SCOPED_TRACE(testing::PrintToString(row.other));
        auto const check = [&](auto const & collection, auto const & other) {
            EXPECT_EQ(collection.Contains(other), row.exact);
            EXPECT_EQ(collection.ContainsCI(other), row.ignoringCase);
        };
        check(list, Make<LCStringList>(row.other));
        check(set, Make<LCStringList>(row.other));
        check(set, Make<LCStringVector>(row.other));
        check(set, Make<LCStringSet>(row.other));
        EXPECT_EQ(LCStringSet().Contains(Make<LCStringList>(row.other)), row.other.empty());
    }
}

}  // namespace
