#include "collections/LCNumberLists.h"

#include "collections/LCIntRange.h"
#include "collections/LCPairLists.h"
#include "support/Support.h"

namespace {

template <typename T> concept HasContains = requires(T const & c, typename T::value_type v) { c.Contains(v); };
template <typename T> concept SearchesPairs = requires(T & c, typename T::value_type v) {
    std::as_const(c).ContainsCI(v); c.FindCI(v); c.FindFirst(v.first); c.FindCIFirst(v.first); };
template <typename T> concept TakesBraces = requires { T{3, 4}; } || requires { T{{3, 4}}; };
template <typename T, typename Flag> concept Divides = requires(T & v, Flag flag) { v.DivideText("", ';', flag); };

template <typename T>
constexpr bool moves = std::is_nothrow_move_constructible_v<T> && std::is_nothrow_move_assignable_v<T>;

/// What a class stands on and what it has beside that.
template <typename T, typename Container, bool virtualDestructor, bool move, bool count, bool countAndValue,
          bool contains, bool searchesPairs, typename Value = typename Container::value_type>
constexpr bool Is = std::derived_from<T, Container> && std::copyable<T> && !std::convertible_to<int, T> &&
    !std::is_constructible_v<T, std::initializer_list<Value>> &&
    std::has_virtual_destructor_v<T> == virtualDestructor && moves<T> == move &&
    std::is_constructible_v<T, int> == count && std::is_constructible_v<T, int, Value> == countAndValue &&
    HasContains<T> == contains && SearchesPairs<T> == searchesPairs;

//                                                                                virtual
//                                                                                | move
//                                                                                | | count, with value
//                                                                                | | | |  Contains, of pairs
static_assert(Is<LCBoolList,            std::list<bool>,              0, 1, 0, 0, 0, 0>);
static_assert(Is<LCBoolVector,          std::deque<bool>,             0, 0, 1, 1, 0, 0>);
static_assert(Is<LCIntList,             std::list<int>,               1, 0, 0, 0, 1, 0>);
static_assert(Is<LCIntVector,           std::vector<int>,             0, 0, 1, 1, 1, 0>);
static_assert(Is<LCIntSet,              std::set<int>,                1, 0, 0, 0, 1, 0>);
static_assert(Is<LCLongList,            std::list<LCLong>,            0, 1, 0, 0, 1, 0>);
static_assert(Is<LCLongVector,          std::vector<LCLong>,          0, 1, 1, 1, 1, 0>);
static_assert(Is<LCLongSet,             std::set<LCLong>,             0, 1, 0, 0, 1, 0>);
static_assert(Is<LCDoubleList,          std::list<double>,            0, 0, 0, 0, 0, 0>);
static_assert(Is<LCDoubleVector,        std::vector<double>,          1, 0, 0, 1, 0, 0>);
static_assert(Is<LCDoubleSet,           std::set<double>,             0, 0, 0, 0, 0, 0>);
static_assert(Is<LCIntIntPairList,      std::list<LCIntIntPair>,      0, 1, 0, 0, 0, 0>);
static_assert(Is<LCIntShortPairList,    std::list<LCIntShortPair>,    0, 1, 0, 0, 0, 0>);
static_assert(Is<LCStringPairList,      std::list<LCStringPair>,      0, 1, 0, 0, 0, 1>);
static_assert(Is<LCStringPairVector,    std::vector<LCStringPair>,    0, 1, 0, 0, 0, 1>);
static_assert(Is<LCStringPairSet,       std::set<LCStringPair>,       0, 1, 0, 0, 0, 1>);
static_assert(Is<LCStringIntPairList,   std::list<LCStringIntPair>,   0, 1, 0, 0, 0, 1>);
static_assert(Is<LCStringIntPairVector, std::vector<LCStringIntPair>, 0, 1, 0, 0, 0, 1>);
static_assert(Is<LCStringIntPairSet,    std::set<LCStringIntPair>,    0, 1, 0, 0, 0, 1>);

// Braces with two numbers never mean two elements, and a text or a number is no flag.
static_assert(!TakesBraces<LCIntList> && !TakesBraces<LCIntSet> && !TakesBraces<LCLongList>);
template <typename Flag> constexpr bool fills = std::is_constructible_v<LCBoolVector, int, Flag>;
static_assert(fills<bool> && !fills<char const *> && !fills<int>);
static_assert(Divides<LCIntVector, bool> && !Divides<LCIntVector, char const *> && !Divides<LCDoubleVector, int>);

template <typename Collection> class NumberCollections : public testing::Test {};
using Kinds = testing::Types<LCBoolList, LCBoolVector, LCIntSet, LCIntVector, LCLongVector, LCDoubleVector,
                             LCIntIntPairList, LCStringPairVector, LCStringIntPairSet>;
TYPED_TEST_SUITE(NumberCollections, Kinds);

TYPED_TEST(NumberCollections, AreEmptyAfterAMoveOrKeepTheirElements)
{
    TypeParam source = Make<TypeParam>({{}}), built = std::move(source), assigned;
    assigned = std::move(built);
    EXPECT_EQ(source.size(), moves<TypeParam> ? 0u : 1u);
    EXPECT_EQ(built.size(), source.size());
    EXPECT_EQ(assigned.size(), 1u);
}

TEST(NumberLists, FillWithACountAndRemoveAllElementsOfOneValue)
{
    LCBoolVector flags(2, true);
    bool & first = flags[0];
    first = false;
    EXPECT_EQ(flags, Make<LCBoolVector>({false, true}));
    EXPECT_EQ(LCBoolVector(2), Make<LCBoolVector>({false, false}));
    EXPECT_EQ(LCIntVector(2), Make<LCIntVector>({0, 0}));
    EXPECT_EQ((LCIntVector{2, 7}), Make<LCIntVector>({7, 7}));
    EXPECT_EQ(LCDoubleVector(2, 0.5), Make<LCDoubleVector>({0.5, 0.5}));
    LCIntVector numbers = Make<LCIntVector>({3, 1, 3, 3, 2});
    EXPECT_TRUE(numbers.Contains(1) && !numbers.Contains(0) && Make<LCIntSet>({2, -1}).Contains(-1));
    EXPECT_TRUE(numbers.Remove(numbers.front()) && !numbers.Remove(9) && !LCIntVector().Remove(0));
    EXPECT_EQ(numbers, Make<LCIntVector>({1, 2}));
}

// The first hit, not the nearest one.
TEST(NumberLists, FindTheFirstElementWithinTheTolerance)
{
    auto vector = Make<LCDoubleVector>({0.5, 1.000005, 1.000001});
    EXPECT_TRUE(vector.FindAlmostEq(1.0) == vector.begin() + 1 && vector.FindAlmostEq(1.00002) == vector.end());
    auto set = Make<LCDoubleSet>({1.000005, 0.999995, 1.0, 0.5});
    EXPECT_EQ(set.FindAlmostEq(1.0), std::next(set.begin()));
    auto list = Make<LCDoubleList>({0.5, 1.25, 1.0});
    EXPECT_EQ(list.FindAlmostEq(1.0, 0.25), std::next(list.begin()));
    EXPECT_EQ(list.FindAlmostEq(1.0, 0.0), std::next(list.begin(), 2));
    EXPECT_EQ(list.FindAlmostEq(2.0, 0.5), list.end());
}

TEST(NumberLists, ReadTheFieldsOfAText)
{
    struct { char const * text; bool strict, result; std::vector<int> numbers; } const rows[] = {
        {"1;x;3", false, true, {1, 3}}, {"1;x;3", true, false, {1}}, {"1;;3", false, true, {1, 3}},
        {"1;;3", true, false, {1}}, {"", false, true, {}}, {"", true, false, {}}, {"1;2;", true, true, {1, 2}},
        {" 12abc;-7", true, true, {12, -7}}, {"5", true, true, {5}}, {"99999999999;4", false, true, {4}}};
    for (auto const & row : rows) {
        LCIntVector integers(2, 8);
        EXPECT_EQ(integers.DivideText(row.text, ';', row.strict), row.result) << row.text;
        EXPECT_EQ(integers, row.numbers) << row.text;
    }
    LCDoubleVector doubles(1, 8.0);
    EXPECT_TRUE(doubles.DivideText("1.5|x|-2e3mm|", '|', false));
    EXPECT_EQ(doubles, Make<LCDoubleVector>({1.5, -2000.0}));
}

TEST(Pairs, AreOrderedByBothMembersAndStartAtNothing)
{
    ExpectTotalOrder(std::vector<LCStringPair>{{}, {"", "b"}, {"A", "b"}, {"a", "b"}, {"a", "c"}});
    ExpectTotalOrder(std::vector<LCStringIntPair>{{"", -1}, {}, {"a", 1}, {"a", 2}});
    ExpectTotalOrder(std::vector<LCIntIntPair>{{-1, 5}, {0, -1}, {}, {0, 1}});
    ExpectTotalOrder(std::vector<LCIntShortPair>{{-1, 5}, {0, -1}, {}, {0, 1}});
    EXPECT_TRUE(LCIntRange().First == 0 && LCIntRange().Last == 0);
    EXPECT_TRUE(LCIntRange(7, -7).First == 7 && LCIntRange(7, -7).Last == -7);
}

template <typename Collection, typename Second> void ExpectPairSearch(Second one, Second oneCI, Second two)
{
    Collection pairs = Make<Collection>({{"A", one}, {"a", two}});
    auto const first = pairs.begin(), second = std::next(first), none = pairs.end();
    EXPECT_TRUE(pairs.FindFirst("a") == second && pairs.FindCIFirst("a") == first);
    EXPECT_TRUE(pairs.FindFirst("b") == none && pairs.FindCIFirst("b") == none);
    EXPECT_TRUE(pairs.FindCI({"a", oneCI}) == first && pairs.FindCI({"A", two}) == second);
    EXPECT_TRUE(pairs.FindCI({"b", one}) == none && !pairs.ContainsCI({"b", one}) && pairs.ContainsCI({"a", oneCI}));
}

TEST(PairLists, AreSearchedFromTheFront)
{
    ExpectPairSearch<LCStringPairList>("x", "X", "y");
    ExpectPairSearch<LCStringPairSet>("x", "X", "y");
    ExpectPairSearch<LCStringIntPairVector>(1, 1, 2);
}

}  // namespace
