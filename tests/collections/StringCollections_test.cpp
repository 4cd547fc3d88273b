#include <algorithm>
#include <concepts>
#include <random>

#include "collections/LCStringList.h"
#include "collections/LCStringSet.h"
#include "collections/LCStringVector.h"
#include "support/Support.h"

namespace {

using Texts = std::vector<LCString>;
Texts All(auto const & collection) { return Texts(collection.begin(), collection.end()); }

template <typename Collection> class StringCollections : public testing::Test {};
using Three = testing::Types<LCStringList, LCStringVector, LCStringSet>;
TYPED_TEST_SUITE(StringCollections, Three);
template <typename Collection> class StringSequences : public testing::Test {};
using Two = testing::Types<LCStringList, LCStringVector>;
TYPED_TEST_SUITE(StringSequences, Two);

// A braced list must not mean elements in one class and a count in another.
template <typename T> constexpr bool isTextCollection =
    std::has_virtual_destructor_v<T> && !std::is_constructible_v<T, int> &&
    !std::is_constructible_v<T, std::initializer_list<LCString>> &&
    std::constructible_from<T, int, LCString> == std::same_as<T, LCStringVector>;
static_assert(isTextCollection<LCStringList> && isTextCollection<LCStringVector> && isTextCollection<LCStringSet>);

TYPED_TEST(StringCollections, AreCopiedAndSearchedExactlyAndWithoutCase)
{
    TypeParam source = Make<TypeParam>({"Bend", "PUNCH", "_cut", ""});
    TypeParam collection = std::move(source);
    EXPECT_EQ(All(source), All(collection));
    struct { char const * sought; bool exact, ignoringCase; } const rows[] = {
        {"Bend", true, true}, {"bEND", false, true}, {"Ben", false, false}, {"cend", false, false},
        {"", true, true}, {"_CUT", false, true}, {"@cut", false, false}};
    for (auto const & [sought, exact, ignoringCase] : rows) {
        EXPECT_TRUE(collection.Contains(sought) == exact && collection.ContainsCI(sought) == ignoringCase) << sought;
        EXPECT_EQ(collection.Find(sought) != collection.end(), exact) << sought;
        EXPECT_EQ(collection.FindCI(sought) != collection.end(), ignoringCase) << sought;
    }
    TypeParam twice = Make<TypeParam>({"X", "x"});
    EXPECT_EQ(twice.FindCI("x"), twice.begin()) << "the first in the order of the collection";
    EXPECT_EQ(twice.Find("x"), std::next(twice.begin()));
}

TYPED_TEST(StringCollections, JoinAndSaveWhatTheyLoad)
{
    // Files are read in pieces of this size.
    std::string const piece(1 << 17, 'a'), less(piece, 1), more = piece + piece + "a";
    struct { std::string content; Texts lines; std::string joined; } const rows[] = {
        {"", {}, ""}, {"a", {"a"}, "a"}, {"a\nb\r\n", {"a", "b\r"}, "a;b\r"}, {"\n", Texts(1), ""},
        {"\na\nb\n", {"", "a", "b"}, ";a;b"}, {less + "\nb\n", {less, "b"}, less + ";b"},
        {piece + "\nb", {piece, "b"}, piece + ";b"}, {"\n" + more + "\nb", {"", more, "b"}, ";" + more + ";b"}};
    TemporaryFolder const folder;
    for (auto const & row : rows) {
        SCOPED_TRACE(testing::PrintToString(row.content.substr(0, 9)) + std::to_string(row.content.size()));
        TypeParam loaded = Make<TypeParam>({"old"});
        EXPECT_TRUE(loaded.LoadFromFile(folder.Write("in.txt", row.content)));
        EXPECT_TRUE(All(loaded) == row.lines && loaded.Str(';') == LCString(row.joined));
        bool const ended = row.content.empty() || row.content.back() == '\n';
        EXPECT_TRUE(loaded.SaveToFile(folder.Write("out.txt", "what stood there before")));
        EXPECT_TRUE(folder.Read("out.txt") == (ended ? row.content : row.content + '\n'));
    }
    EXPECT_EQ(Make<TypeParam>({"", "a", "b"}).Str('\0'), "ab");
    for (char const * const unreadable : {"missing.txt", "."}) {
        TypeParam loaded = Make<TypeParam>({folder.Path(unreadable)});
        EXPECT_FALSE(loaded.LoadFromFile(*loaded.begin())) << "the path is an element of the collection itself";
        EXPECT_TRUE(loaded.empty());
    }
    EXPECT_FALSE(TypeParam().SaveToFile(folder.Path("no/such/folder")));
}

TYPED_TEST(StringSequences, WalkFromTheSecondElementAndAppendInOrder)
{
    TypeParam sequence = Make<TypeParam>({"a", "b"}), target = Make<TypeParam>({"0"});
    auto p = sequence.GetHeadPosition();
    for (char const * const text : {"b", "", ""}) EXPECT_EQ(sequence.GetNext(p), text);
    EXPECT_EQ(p, sequence.GetEndPosition());
    p = sequence.GetHeadPosition();
    for (char const * const text : {"", "b", "a", "", "b"}) EXPECT_EQ(sequence.GetPrev(p), text);
    sequence.AppendToList(target);
    EXPECT_EQ(target.Str(' '), "0 a b");
    sequence.Reverse();
    sequence.AppendList(target);
    sequence.AppendList(sequence);
    EXPECT_EQ(sequence.Str(' '), "b a 0 a b b a 0 a b");
    sequence.ReInitList();
    EXPECT_TRUE(sequence.IsEmpty());
    p = sequence.GetHeadPosition();
    EXPECT_EQ(sequence.GetNext(p) + sequence.GetPrev(p), "");
    EXPECT_EQ(p, sequence.GetEndPosition());
}

TYPED_TEST(StringSequences, GiveTheValueOfTheFirstLineWithTheName)
{
    struct { Texts lines; char const * key; char const * value; } const rows[] = {
        {{"a=1", "B=2", "b=3"}, "b", "2"}, {{"x=1=2"}, "X", "1=2"}, {{"abc"}, "ABC", ""}, {{" n = v"}, "n", ""},
        {{"=v"}, "", "v"}, {{" n = v"}, " n ", " v"}};
    for (auto const & row : rows) EXPECT_EQ(Make<TypeParam>(row.lines).GetValue(row.key), row.value) << row.key;
}

// Few letters, so that prefixes of 8 and 16 bytes, their zero bytes and whole texts tie often.
TYPED_TEST(StringSequences, SortByTheUpperCaseForms)
{
    std::mt19937 random(7);
    auto const upperLess = [](LCString const & a, LCString const & b) { return a.UpperCase() < b.UpperCase(); };
    for (unsigned const size : {0u, 1u, 2u, 3u, 10u, 500u}) {
        Texts texts(size);
        for (LCString & text : texts) {
            if (random() % 4 == 0) text = LCString(static_cast<int>(7 + random() % 11), 'x');
            for (auto n = random() % 4; n > 0; --n) text += LCString(std::string(1, "aAbB_\0\xE4"[random() % 7]));
        }
        TypeParam sequence = Make<TypeParam>(texts);
        sequence.SortCI();
        std::stable_sort(texts.begin(), texts.end(), upperLess);
        bool const stable = std::same_as<TypeParam, LCStringList>;
        EXPECT_TRUE(stable ? All(sequence) == texts : std::ranges::is_sorted(sequence, upperLess));
        EXPECT_TRUE(std::ranges::is_permutation(sequence, texts));
    }
}

TYPED_TEST(StringCollections, ChangeCaseAndLoseNeighbours)
{
    TypeParam collection = Make<TypeParam>({"B", "a", "A", "_", "a"});
    constexpr bool isSet = std::same_as<TypeParam, LCStringSet>;
    if constexpr (!isSet) {
        collection.UniqueCI();
        EXPECT_EQ(collection.Str(' '), "B a _ a");
    }
    collection.ToUpperCase();
    EXPECT_EQ(collection.Str(' '), isSet ? "A B _" : "B A _ A") << "in a set, what becomes equal merges";
    collection.ToLowerCase();
    EXPECT_EQ(collection.Str(' '), isSet ? "_ a b" : "b a _ a");
}

template <typename T> concept Divides = requires(LCStringList & l, T flag) { l.DivideTextInLines("", ';', flag); };
static_assert(Divides<char> && Divides<bool> && !Divides<int> && !Divides<char const *>);

// The text is an element of the list itself.
TEST(StringList, SplitsAText)
{
    struct { char const * text; Texts kept, dropped, atEither; } const rows[] = {
        {"", Texts(1), Texts(1), Texts(1)}, {";", Texts(1), {}, Texts(1)}, {"a", {"a"}, {"a"}, {"a"}},
        {"a;", {"a"}, {"a"}, {"a"}}, {";a", {"", "a"}, {"a"}, {"", "a"}}, {";;", {"", ""}, {}, {"", ""}},
        {"a;;b\n;", {"a", "", "b\n"}, {"a", "b\n"}, {"a", "", "b", ""}}, {"\n", {"\n"}, {"\n"}, Texts(1)},
        {"\n;a\nb", {"\n", "a\nb"}, {"\n", "a\nb"}, {"", "", "a", "b"}}};
    for (auto const & row : rows) {
        SCOPED_TRACE(testing::PrintToString(row.text));
        LCStringList list = Make<LCStringList>({row.text});
        LCStringVector vector = Make<LCStringVector>({row.text});
        vector.DivideTextInLines(vector.front(), ';');
        EXPECT_EQ(All(vector), row.kept);
        list.DivideTextInLines(list.front(), ';', true);
        EXPECT_EQ(All(list), row.kept);
        list.DivideTextInLines(row.text, ';', false);
        EXPECT_EQ(All(list), row.dropped);
        list.DivideTextInLines(row.text, ';', '\n');
        EXPECT_EQ(All(list), row.atEither);
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
    struct { Texts other; bool exact, ignoringCase; } const rows[] = {
        {{}, true, true}, {{"B", "a"}, true, true}, {{"a", "b"}, false, true}, {{"a", "c"}, false, false}};
    for (auto const & row : rows) {
        auto const check = [&](auto const & collection, auto const & other) {
            EXPECT_EQ(collection.Contains(other), row.exact) << testing::PrintToString(row.other);
            EXPECT_EQ(collection.ContainsCI(other), row.ignoringCase) << testing::PrintToString(row.other);
        };
        auto const set = Make<LCStringSet>({"a", "B"});
        check(Make<LCStringList>({"a", "B"}), Make<LCStringList>(row.other));
        check(set, Make<LCStringList>(row.other));
        check(set, Make<LCStringVector>(row.other));
        check(set, Make<LCStringSet>(row.other));
        EXPECT_EQ(LCStringSet().Contains(Make<LCStringList>(row.other)), row.other.empty());
    }
}

}  // namespace
