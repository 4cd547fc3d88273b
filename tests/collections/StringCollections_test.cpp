#include <concepts>
#include <sstream>

#include "collections/LCStringList.h"
#include "collections/LCStringSet.h"
#include "collections/LCStringVector.h"
#include "support/Allocations.h"

namespace {

using Texts = std::vector<LCString>;

template <typename Collection> class StringCollections : public testing::Test {};
using Three = testing::Types<LCStringList, LCStringVector, LCStringSet>;
TYPED_TEST_SUITE(StringCollections, Three);
template <typename Collection> class StringSequences : public testing::Test {};
using Two = testing::Types<LCStringList, LCStringVector>;
TYPED_TEST_SUITE(StringSequences, Two);

TYPED_TEST(StringCollections, AreCopiedAndSearchedExactlyAndWithoutCase)
{
    using Braces = std::initializer_list<LCString>;  // would mean elements in one class and a count in another
    static_assert(std::has_virtual_destructor_v<TypeParam> && !std::is_constructible_v<TypeParam, Braces>);
    TypeParam source = Make<TypeParam>({"Bend", "PUNCH", "_cut", ""}), collection = std::move(source);
    EXPECT_EQ(source, collection);
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
    TemporaryFolder const folder;
    std::string const piece(1 << 17, 'a');  // files are read in pieces of this size
    for (std::string const & content : std::initializer_list<std::string>{"", "a", "b\na\r\n", "\n", "\nb\na\nb\n\n",
             piece.substr(1) + "\nb\n", piece + "\nb", "b\n" + piece + piece + "\na"}) {
        SCOPED_TRACE(testing::PrintToString(content.substr(0, 9)) + " " + std::to_string(content.size()));
        std::istringstream in(content);
        TypeParam expected, loaded = Make<TypeParam>({"old"});
        for (std::string line; std::getline(in, line);) expected.insert(expected.end(), line);
        EXPECT_TRUE(loaded.LoadFromFile(folder.Write("in.txt", content)) && loaded == expected);
        std::string saved;
        for (LCString const & line : expected) saved += line.str() + '\n';
        EXPECT_TRUE(loaded.SaveToFile(folder.Write("out.txt", "what stood there before")));
        EXPECT_TRUE(folder.Read("out.txt") == saved && (loaded.Str('\n') + "\n" == LCString(saved) || saved.empty()));
    }
    EXPECT_EQ(Make<TypeParam>({"", "a", "b"}).Str('\0') + Make<TypeParam>({""}).Str(';'), "ab");
    for (char const * const unreadable : {"missing.txt", "."}) {
        TypeParam loaded = Make<TypeParam>({folder.Path(unreadable)});
        EXPECT_FALSE(loaded.LoadFromFile(*loaded.begin())) << "the path is an element of the collection itself";
        EXPECT_TRUE(loaded.empty());
    }
    EXPECT_FALSE(TypeParam().SaveToFile(folder.Path("no/such/folder")));
    LCString const line(40, 'x');
    ExpectAllOrNothing(Make<TypeParam>({folder.Write("in.txt", line.str() + "\n" + line.str())}), [&](auto & loaded) {
        EXPECT_TRUE(loaded.LoadFromFile(*loaded.begin()) || loaded.empty() || *loaded.begin() == line);
    });
}

TYPED_TEST(StringCollections, AllocateNothingToSearchAndBlocksToSort)
{
    LCString const upper(40, 'A'), lower = upper.LowerCase();
    TypeParam collection = Make<TypeParam>({upper + "x", upper, upper + "a"});
    bool found = false;
    bool const isSet = std::same_as<TypeParam, LCStringSet>, isVector = std::same_as<TypeParam, LCStringVector>;
    auto const count = AllocationsOf([&] {
        found = collection.FindCI(lower) != collection.end() && !collection.Contains(lower);
        if constexpr (requires { collection.SortCI(); }) collection.SortCI();
        collection.ToLowerCase();
    });
    EXPECT_TRUE(found && count == (isSet ? 0u : isVector ? 2u : 1u)) << count;
}

TYPED_TEST(StringSequences, AreAsTheyWereWhenTheMemoryGivesOut)
{
    LCString const text(40, 'x');
    auto const two = Make<TypeParam>({text + ";;" + text + ";", text}), parts = Make<TypeParam>({text, "", text});
    ExpectAllOrNothing(two, [](auto & sequence) { sequence.AppendList(sequence); });
    ExpectAllOrNothing(two, [](auto & sequence) { sequence.SortCI(); });
    ExpectAllOrNothing(two, [&](auto & sequence) {
        if constexpr (requires { sequence.AddHead(""); }) sequence.DivideTextInLines(sequence.front(), ';', true);
        else sequence.DivideTextInLines(sequence.front(), ';');
        EXPECT_TRUE(sequence == parts) << "the text is an element of the sequence itself";
    });
}

TYPED_TEST(StringSequences, WalkFromTheSecondElementAndAppendInOrder)
{
    TypeParam sequence = Make<TypeParam>({"a", "b"}), target = Make<TypeParam>({"0"});
    auto p = sequence.GetHeadPosition();
    for (char const * const text : {"b", "", ""}) EXPECT_EQ(sequence.GetNext(p), text);
    for (char const * const text : {"b", "a", "", "b"}) EXPECT_EQ(sequence.GetPrev(p), text) << "goes round";
    sequence.AppendToList(target);
    sequence.Reverse();
    sequence.AppendList(target);
    sequence.AppendList(sequence);
    EXPECT_EQ(sequence.Str(' '), "b a 0 a b b a 0 a b");
    sequence.ReInitList();
    EXPECT_TRUE(sequence.IsEmpty());
    p = sequence.GetHeadPosition();
    EXPECT_TRUE(sequence.GetNext(p) == "" && sequence.GetPrev(p) == "" && p == sequence.GetEndPosition());
}

TYPED_TEST(StringSequences, GiveTheValueOfTheFirstLineWithTheName)
{
    struct { Texts lines; char const * key; char const * value; } const rows[] = {
        {{"a=1", "B=2", "b=3"}, "b", "2"}, {{"x=1=2"}, "X", "1=2"}, {{"abc"}, "ABC", ""}, {{" n = v"}, "n", ""},
        {{"=v"}, "", "v"}, {{" n = v"}, " n ", " v"}};
    for (auto const & row : rows) EXPECT_EQ(Make<TypeParam>(row.lines).GetValue(row.key), row.value) << row.key;
}

TYPED_TEST(StringCollections, ChangeCaseAndLoseNeighbours)
{
    TypeParam collection = Make<TypeParam>({"B", "a", "A", "_", "a"});
    if constexpr (requires { collection.UniqueCI(); }) collection.UniqueCI();
    LCString before = collection.Str(' ');
    collection.ToUpperCase();
    before += "|" + collection.Str(' ');
    collection.ToLowerCase();
    bool const merges = std::same_as<TypeParam, LCStringSet>;
    EXPECT_EQ(before + "|" + collection.Str(' '), merges ? "A B _ a|A B _|_ a b" : "B a _ a|B A _ A|b a _ a");
}

template <typename T> concept Divides = requires(LCStringList & l, T flag) { l.DivideTextInLines("", ';', flag); };
static_assert(Divides<char> && Divides<bool> && !Divides<int> && !Divides<char const *>);

TEST(StringList, AddsAtBothEndsAndCopiesToStandardLists)
{
    LCStringList list;
    auto const last = list.AddTail("b"), first = list.AddHead(list.front());
    EXPECT_TRUE(first == list.GetHeadPosition() && std::next(last) == list.GetEndPosition());
    std::list<std::string> target{"a"};
    list.AppendToList(target);
    EXPECT_EQ(target, (std::list<std::string>{"a", "b", "b"}));
}

TEST(StringList, ContainsAllOfAnother)
{
    struct { Texts other; std::pair<bool, bool> exactAndCI; } const rows[] = {
        {{}, {true, true}}, {{"B", "a"}, {true, true}}, {{"a", "b"}, {false, true}}, {{"a", "c"}, {false, false}}};
    for (auto const & row : rows) {
        auto const expect = [&](auto const & collection, auto const & other) {
            EXPECT_EQ(std::pair(collection.Contains(other), collection.ContainsCI(other)), row.exactAndCI);
        };
        expect(Make<LCStringList>({"a", "B"}), Make<LCStringList>(row.other));
        expect(Make<LCStringSet>({"a", "B"}), Make<LCStringList>(row.other));
        expect(Make<LCStringSet>({"a", "B"}), Make<LCStringVector>(row.other));
        expect(Make<LCStringSet>({"a", "B"}), Make<LCStringSet>(row.other));
    }
    EXPECT_TRUE(LCStringSet().Contains(LCStringList()) && !LCStringList().ContainsCI(Make<LCStringList>({""})));
}

}  // namespace
