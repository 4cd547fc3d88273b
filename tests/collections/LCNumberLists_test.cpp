#include "collections/LCNumberLists.h"

#include "collections/LCPairLists.h"

namespace {

template <typename T, typename Flag> concept Divides = requires(T & v, Flag flag) { v.DivideText("", ';', flag); };
template <typename Flag> constexpr bool fills = std::is_constructible_v<LCBoolVector, int, Flag>;
static_assert(fills<bool> && !fills<char const *> && !fills<int>, "a text or a number is no flag");
static_assert(Divides<LCIntVector, bool> && !Divides<LCIntVector, char const *> && !Divides<LCDoubleVector, int>);
static_assert(std::has_virtual_destructor_v<LCIntList> && std::has_virtual_destructor_v<LCDoubleVector>);

/// Whether all are moved, or all only copied. None takes elements in braces, or is a number.
template <typename T> constexpr bool isMoved =
    std::is_nothrow_move_constructible_v<T> && std::is_nothrow_move_assignable_v<T>;
template <typename T> concept TakesBraces = std::is_constructible_v<T, std::initializer_list<typename T::value_type>>;
template <bool move, typename... T> constexpr bool haveMoves =
    ((isMoved<T> == move && !TakesBraces<T> && !std::is_convertible_v<int, T>) && ...);
static_assert(haveMoves<true, LCBoolList, LCLongList, LCLongVector, LCLongSet, LCIntIntPairList, LCIntShortPairList,
                        LCStringPairList, LCStringPairVector, LCStringPairSet, LCStringIntPairList,
                        LCStringIntPairVector, LCStringIntPairSet>);
static_assert(haveMoves<false, LCBoolVector, LCIntList, LCIntVector, LCIntSet, LCDoubleList, LCDoubleVector,
                        LCDoubleSet>);

TEST(NumberLists, FillWithACountAndRemoveAllElementsOfOneValue)
{
    LCBoolVector flags(2, true);
    bool & first = flags[0];
    first = false;
    EXPECT_EQ(flags, Make<LCBoolVector>({false, true}));
    EXPECT_EQ(LCBoolVector(2), Make<LCBoolVector>({false, false}));
    EXPECT_EQ((LCIntVector{2, 7}), Make<LCIntVector>({7, 7}));
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
}

template <typename... Collections> void ExpectPairSearch(auto one, auto oneCI, auto two)
{
    auto const expect = [=](auto pairs) {
        auto const first = pairs.begin(), second = std::next(first), none = pairs.end();
        EXPECT_TRUE(pairs.FindFirst("a") == second && pairs.FindFirst("b") == none);
        EXPECT_TRUE(pairs.FindCIFirst("a") == first && pairs.FindCIFirst("b") == none);
        EXPECT_TRUE(pairs.FindCI({"a", oneCI}) == first && pairs.FindCI({"A", two}) == second);
        EXPECT_TRUE(pairs.ContainsCI({"a", oneCI}) && !pairs.ContainsCI({"b", one}));
    };
    (expect(Make<Collections>({{"A", one}, {"a", two}})), ...);
}

TEST(PairLists, AreSearchedFromTheFront)
{
    ExpectPairSearch<LCStringPairList, LCStringPairVector, LCStringPairSet>("x", "X", "y");
    ExpectPairSearch<LCStringIntPairList, LCStringIntPairVector, LCStringIntPairSet>(1, 1, 2);
}

}  // namespace
