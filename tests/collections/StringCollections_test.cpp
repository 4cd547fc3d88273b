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

template <typename Collection> Texts All(Collection const & collection)
{
    return Texts(collection.begin(), collection.end());
}

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
    static_assert(std::has_virtual_destructor_v<TypeParam>);
    static_assert(!std::is_constructible_v<TypeParam, std::initializer_list<LCString>>);
    static_assert(!std::is_constructible_v<TypeParam, int> &&
                  !std::is_constructible_v<TypeParam, std::size_t>);
    static_assert(!std::is_aggregate_v<TypeParam>);
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

TYPED_TEST(StringCollections, JoinWithASeparatorBetweenEachTwo)
{
    EXPECT_EQ(TypeParam().Str(';'), "");
    EXPECT_EQ(Make<TypeParam>({"only"}).Str(';'), "only");
    EXPECT_EQ(Make<TypeParam>({"", "a", "b"}).Str(';'), ";a;b");
    EXPECT_EQ(Make<TypeParam>({"", "a", "b"}).Str('\0'), "ab");
}

TYPED_TEST(StringCollections, LoadOneElementPerLine)
{
    bool const isSet = std::same_as<TypeParam, LCStringSet>;
    struct {
        std::string content;
        Texts lines;
    } const rows[] = {{"", {}},
                      {"a", {"a"}},
                      {"a\nb\n", {"a", "b"}},
                      {"\n", {""}},
                      {"\na\n\nb", isSet ? Texts{"", "a", "b"} : Texts{"", "a", "", "b"}},
                      {"b\r\na\nb\r\n", isSet ? Texts{"a", "b\r"} : Texts{"b\r", "a", "b\r"}}};
    TemporaryFolder const folder;
    for (auto const & row : rows) {
        TypeParam loaded = Make<TypeParam>({"old"});
        EXPECT_TRUE(loaded.LoadFromFile(folder.Write("lines.txt", row.content)));
        EXPECT_EQ(All(loaded), row.lines) << testing::PrintToString(row.content);
    }
    for (char const * const unreadable : {"missing.txt", "."}) {
        TypeParam loaded = Make<TypeParam>({folder.Path(unreadable)});
        EXPECT_FALSE(loaded.LoadFromFile(*loaded.begin()))
            << "the path is an element of the collection itself";
        EXPECT_TRUE(loaded.empty());
    }
}

TYPED_TEST(StringCollections, SaveEachElementWithALineEnd)
{
    TemporaryFolder const folder;
    LCString const path = folder.Write("lines.txt", "what stood there before");
    EXPECT_TRUE(Make<TypeParam>({"", "a", LCString(std::string("z\0z", 3))}).SaveToFile(path));
    EXPECT_EQ(folder.Read("lines.txt"), std::string("\na\nz\0z\n", 7));
    EXPECT_TRUE(TypeParam().SaveToFile(path));
    EXPECT_EQ(folder.Read("lines.txt"), "");
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

    TypeParam empty;
    EXPECT_TRUE(empty.IsEmpty());
    p = empty.GetHeadPosition();
    EXPECT_EQ(empty.GetNext(p), "");
    EXPECT_EQ(empty.GetPrev(p), "");
    EXPECT_EQ(p, empty.GetEndPosition());
}

TYPED_TEST(StringSequences, AppendInOrderAlsoToThemselves)
{
    TypeParam sequence = Make<TypeParam>({"a", "b"});
    sequence.AppendList(Make<TypeParam>({"c"}));
    TypeParam target = Make<TypeParam>({"0"});
    sequence.AppendToList(target);
    EXPECT_EQ(All(target), Texts({"0", "a", "b", "c"}));
    sequence.AppendList(sequence);
    EXPECT_EQ(All(sequence), Texts({"a", "b", "c", "a", "b", "c"}));
    sequence.Reverse();
    EXPECT_EQ(All(sequence), Texts({"c", "b", "a", "c", "b", "a"}));
    sequence.ReInitList();
    EXPECT_TRUE(sequence.IsEmpty());
}

TYPED_TEST(StringSequences, GiveTheValueOfTheFirstLineWithTheName)
{
    struct {
        Texts lines;
        char const * key;
        char const * value;
    } const rows[] = {{{"a=1", "B=2", "b=3"}, "b", "2"}, {{"x=1=2"}, "X", "1=2"}, {{"abc"}, "ABC", ""},
                      {{"abc", "ABC="}, "abc", ""},      {{"=v"}, "", "v"},       {{" n = v"}, "n", ""},
                      {{" n = v"}, " n ", " v"}};
    for (auto const & row : rows) {
        EXPECT_EQ(Make<TypeParam>(row.lines).GetValue(row.key), row.value)
            << testing::PrintToString(row.lines);
    }
}

TYPED_TEST(StringSequences, LoseNeighboursThatDifferOnlyInCase)
{
    TypeParam sequence = Make<TypeParam>({"a", "A", "b", "a", "a"});
    sequence.UniqueCI();
    EXPECT_EQ(All(sequence), Texts({"a", "b", "a"}));
    sequence.ToUpperCase();
    EXPECT_EQ(All(sequence), Texts({"A", "B", "A"}));
    sequence.ToLowerCase();
    EXPECT_EQ(All(sequence), Texts({"a", "b", "a"}));
}

// Few letters, so that prefixes of 8 and 16 bytes, their zero bytes and whole texts tie often.
TYPED_TEST(StringSequences, SortByTheUpperCaseForms)
{
    std::mt19937 random(7);
    auto const below = [&](std::size_t n) { return random() % n; };
    for (unsigned const size : {0u, 1u, 2u, 3u, 10u, 500u}) {
        Texts texts(size);
        for (LCString & text : texts) {
            if (below(4) == 0) text = LCString(static_cast<int>(7 + below(11)), 'x');
            for (std::size_t n = below(4); n > 0; --n)
                text += LCString(std::string(1, "aAbB_\0\xE4"[below(7)]));
        }
        TypeParam sequence = Make<TypeParam>(texts);
        sequence.SortCI();

        auto const upperLess = [](LCString const & a, LCString const & b) {
            return a.UpperCase() < b.UpperCase();
        };
        std::stable_sort(texts.begin(), texts.end(), upperLess);
        if (std::same_as<TypeParam, LCStringList>) {
            EXPECT_EQ(All(sequence), texts);
        } else {
            EXPECT_TRUE(std::is_sorted(sequence.begin(), sequence.end(), upperLess));
            EXPECT_TRUE(std::is_permutation(sequence.begin(), sequence.end(), texts.begin(), texts.end()));
        }
    }
}

TYPED_TEST(StringSequences, SplitAtEachSeparator)
{
    struct {
        char const * text;
        Texts kept, dropped;
    } const rows[] = {
        {"", {""}, {""}},     {"a;;b", {"a", "", "b"}, {"a", "b"}},
        {"a;", {"a"}, {"a"}}, {";a", {"", "a"}, {"a"}},
        {";;", {"", ""}, {}}, {"no separator", {"no separator"}, {"no separator"}},
    };
    for (auto const & row : rows) {
        SCOPED_TRACE(row.text);
        TypeParam parts = Make<TypeParam>({row.text});
        if constexpr (std::same_as<TypeParam, LCStringVector>) {
            parts.DivideTextInLines(parts.front(), ';');
        } else {
            parts.DivideTextInLines(row.text, ';', false);
            EXPECT_EQ(All(parts), row.dropped);
            parts.AddHead(row.text);
            parts.DivideTextInLines(parts.front(), ';', true);
        }
        EXPECT_EQ(All(parts), row.kept);
    }
}

// The third argument is a byte or a flag, and nothing turns silently into either.
template <typename Third>
concept Divides = requires(LCStringList & list, Third third)
{
    list.DivideTextInLines("", ';', third);
};

TEST(StringList, SplitsAtEitherOfTwoBytes)
{
    LCStringList list;
    list.DivideTextInLines("one\r\ntwo\n\nthree\r", '\r', '\n');
    EXPECT_EQ(All(list), Texts({"one", "", "two", "", "three"}));
    list.DivideTextInLines("a||b", '|', '|');
    EXPECT_EQ(All(list), Texts({"a", "", "b"}));

    static_assert(Divides<char> && Divides<bool> && !Divides<int> && !Divides<char const *>);
}

TEST(StringList, AddsAtBothEndsAndCopiesToStandardLists)
{
    LCStringList list;
    EXPECT_EQ(*list.AddTail("b"), "b");
    auto const head = list.AddHead(list.front());
    EXPECT_EQ(head, list.GetHeadPosition());
    auto const tail = list.AddTail("c");
    EXPECT_EQ(std::next(tail), list.GetEndPosition());
    std::list<std::string> target{"a"};
    list.AppendToList(target);
    EXPECT_EQ(target, (std::list<std::string>{"a", "b", "b", "c"}));
}

TEST(StringVector, HoldsCopiesOfOneText)
{
    static_assert(!std::convertible_to<std::initializer_list<int>, LCStringVector>);
    EXPECT_EQ(All(LCStringVector(2, "x")), Texts({"x", "x"}));
    EXPECT_TRUE(LCStringVector(0, "x").empty());
}

TEST(StringSet, MergesWhatBecomesEqual)
{
    LCStringSet set = Make<LCStringSet>({"a", "A", "b", "_"});
    set.ToUpperCase();
    EXPECT_EQ(All(set), Texts({"A", "B", "_"}));
    set.ToLowerCase();
    EXPECT_EQ(All(set), Texts({"_", "a", "b"}));
}

TEST(StringCollections, ContainAllOfAnother)
{
    Texts const rows[] = {{}, {"a"}, {"B", "a"}, {"a", "c"}};
    LCStringList const list = Make<LCStringList>({"a", "B"});
    LCStringSet const set = Make<LCStringSet>({"a", "B"});
    for (Texts row : rows) {
        SCOPED_TRACE(testing::PrintToString(row));
        for (bool const otherCase : {false, true}) {
            bool const foundCI = row != Texts{"a", "c"};
            bool const found = foundCI && (!otherCase || row.empty());
            Texts sought = row;
            if (otherCase)
                for (LCString & text : sought) text = text == "a" ? "A" : text.LowerCase();
            auto const other = Make<LCStringList>(sought);
            EXPECT_EQ(list.Contains(other), found);
            EXPECT_EQ(list.ContainsCI(other), foundCI);
            auto const check = [&](auto const & collection) {
                EXPECT_EQ(set.Contains(collection), found);
                EXPECT_EQ(set.ContainsCI(collection), foundCI);
                EXPECT_EQ((decltype(set)().Contains(collection)), row.empty());
            };
            check(other);
            check(Make<LCStringVector>(sought));
            check(Make<LCStringSet>(sought));
        }
    }
}

}  // namespace
