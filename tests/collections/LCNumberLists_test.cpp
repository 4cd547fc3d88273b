#include "collections/LCNumberLists.h"

#include <initializer_list>

#include "collections/LCIntRange.h"
#include "collections/LCPairLists.h"
#include "support/Support.h"

namespace {

/// What a class has beside its standard container.
struct Members {
    bool virtualDestructor, moves;
    bool count, countAndValue;
    bool contains;
    bool searchesPairs;

    bool operator==(Members const &) const = default;
};

template <typename Collection, typename Value = typename Collection::value_type>
constexpr Members membersOf = {
    .virtualDestructor = std::has_virtual_destructor_v<Collection>,
    .moves =
        std::is_nothrow_move_constructible_v<Collection> && std::is_nothrow_move_assignable_v<Collection>,
    .count = std::is_constructible_v<Collection, int>,
    .countAndValue = std::is_constructible_v<Collection, int, Value>,
    .contains = requires(Collection const & c, Value v){c.Contains(v);
}  // namespace
, .searchesPairs = requires(Collection c, Value v)
{
    c.FindCI(v);
    c.FindFirst(v.first);
    c.FindCIFirst(v.first);
}
&&requires(Collection const & c, Value v) { c.ContainsCI(v); }
}
;

template <typename Collection, typename Container>
constexpr bool isNamed =
    std::derived_from<Collection, Container> && std::copyable<Collection> &&
    !std::convertible_to<int, Collection> &&
    !std::is_constructible_v<Collection, std::initializer_list<typename Container::value_type>>;

using Bools = std::deque<bool>;
static_assert(isNamed<LCBoolList, std::list<bool>> && membersOf<LCBoolList> == Members{0, 1, 0, 0, 0, 0});
static_assert(isNamed<LCBoolVector, Bools> && membersOf<LCBoolVector> == Members{0, 0, 1, 1, 0, 0});
static_assert(isNamed<LCIntList, std::list<int>> && membersOf<LCIntList> == Members{1, 0, 0, 0, 1, 0});
static_assert(isNamed<LCIntVector, std::vector<int>> && membersOf<LCIntVector> == Members{0, 0, 1, 1, 1, 0});
static_assert(isNamed<LCIntSet, std::set<int>> && membersOf<LCIntSet> == Members{1, 0, 0, 0, 1, 0});
static_assert(isNamed<LCLongList, std::list<LCLong>> && membersOf<LCLongList> == Members{0, 1, 0, 0, 1, 0});
static_assert(isNamed<LCLongVector, std::vector<LCLong>> &&
              membersOf<LCLongVector> == Members{0, 1, 1, 1, 1, 0});
static_assert(isNamed<LCLongSet, std::set<LCLong>> && membersOf<LCLongSet> == Members{0, 1, 0, 0, 1, 0});
static_assert(isNamed<LCDoubleList, std::list<double>> &&
              membersOf<LCDoubleList> == Members{0, 0, 0, 0, 0, 0});
static_assert(isNamed<LCDoubleVector, std::vector<double>> &&
              membersOf<LCDoubleVector> == Members{1, 0, 0, 1, 0, 0});
static_assert(isNamed<LCDoubleSet, std::set<double>> && membersOf<LCDoubleSet> == Members{0, 0, 0, 0, 0, 0});

template <typename Collection, typename Container>
constexpr bool isOfPairs =
    isNamed<Collection, Container> && membersOf<Collection> == Members{0, 1, 0, 0, 0, 0};
static_assert(isOfPairs<LCIntIntPairList, std::list<LCIntIntPair>>);
static_assert(isOfPairs<LCIntShortPairList, std::list<LCIntShortPair>>);

template <typename Collection, typename Container>
constexpr bool isOfTexts =
    isNamed<Collection, Container> && membersOf<Collection> == Members{0, 1, 0, 0, 0, 1};
static_assert(isOfTexts<LCStringPairList, std::list<LCStringPair>>);
static_assert(isOfTexts<LCStringPairVector, std::vector<LCStringPair>>);
static_assert(isOfTexts<LCStringPairSet, std::set<LCStringPair>>);
static_assert(isOfTexts<LCStringIntPairList, std::list<LCStringIntPair>>);
static_assert(isOfTexts<LCStringIntPairVector, std::vector<LCStringIntPair>>);
static_assert(isOfTexts<LCStringIntPairSet, std::set<LCStringIntPair>>);

// A text or a number is no flag, and braces with two numbers never mean two elements.
static_assert(!std::is_constructible_v<LCBoolVector, int, char const *>);
static_assert(!std::is_constructible_v<LCBoolVector, int, int>);
template <typename Collection>
concept TakesBraces = requires
{
    Collection{3, 4};
}
|| requires { Collection{{3, 4}}; };
static_assert(!TakesBraces<LCIntList> && !TakesBraces<LCIntSet> && !TakesBraces<LCLongList>);
static_assert(!TakesBraces<LCDoubleList> && !TakesBraces<LCDoubleSet>);
template <typename Vector, typename Flag>
concept Divides = requires(Vector & v, Flag flag)
{
    v.DivideText("", ';', flag);
};
static_assert(Divides<LCIntVector, bool> && Divides<LCDoubleVector, bool>);
static_assert(!Divides<LCIntVector, char const *> && !Divides<LCDoubleVector, int>);

template <typename Collection>
Collection Make(std::initializer_list<typename Collection::value_type> elements)
{
    Collection made;
    for (auto const & element : elements) made.insert(made.end(), element);
    return made;
}

template <typename Collection> class NumberCollections : public testing::Test {};
using All = testing::Types<LCBoolList, LCBoolVector, LCIntList, LCIntVector, LCIntSet, LCLongList,
                           LCLongVector, LCLongSet, LCDoubleList, LCDoubleVector, LCDoubleSet,
                           LCIntIntPairList, LCIntShortPairList, LCStringPairList, LCStringPairVector,
                           LCStringPairSet, LCStringIntPairList, LCStringIntPairVector, LCStringIntPairSet>;
TYPED_TEST_SUITE(NumberCollections, All);

TYPED_TEST(NumberCollections, AreEmptyAfterAMoveOrKeepTheirElements)
{
    std::size_t const left = membersOf<TypeParam>.moves ? 0 : 1;
    TypeParam source = Make<TypeParam>({{}});
    TypeParam built = std::move(source);
    EXPECT_EQ(source.size(), left);
    TypeParam assigned;
    assigned = std::move(built);
    EXPECT_EQ(built.size(), left);
    EXPECT_EQ(assigned.size(), 1u);
}

TEST(NumberCollections, FillWithACount)
{
    EXPECT_EQ(LCBoolVector(3), Make<LCBoolVector>({false, false, false}));
    LCBoolVector flags(2, true);
    bool & first = flags[0];
    first = false;
    EXPECT_EQ(flags, Make<LCBoolVector>({false, true}));
    EXPECT_EQ(LCIntVector(2), Make<LCIntVector>({0, 0}));
    EXPECT_EQ((LCIntVector{2, 7}), Make<LCIntVector>({7, 7}));
    EXPECT_EQ(LCLongVector(2, -1), Make<LCLongVector>({-1, -1}));
    EXPECT_EQ(LCDoubleVector(2, 0.5), Make<LCDoubleVector>({0.5, 0.5}));
}

template <typename Collection> void ExpectContains()
{
    Collection const numbers = Make<Collection>({3, -1, 2});
    for (int const v : {3, -1, 2}) EXPECT_TRUE(numbers.Contains(v));
    for (int const v : {0, 1, -3}) EXPECT_FALSE(numbers.Contains(v));
}

TEST(NumberCollections, ContainTheirNumbers)
{
    ExpectContains<LCIntList>();
    ExpectContains<LCIntVector>();
    ExpectContains<LCIntSet>();
    ExpectContains<LCLongList>();
    ExpectContains<LCLongVector>();
    ExpectContains<LCLongSet>();
}

TEST(IntVector, RemovesAllElementsOfOneValue)
{
    LCIntVector numbers = Make<LCIntVector>({3, 1, 3, 3, 2});
    EXPECT_TRUE(numbers.Remove(numbers.front()));
    EXPECT_EQ(numbers, Make<LCIntVector>({1, 2}));
    EXPECT_FALSE(numbers.Remove(9));
    EXPECT_FALSE(LCIntVector().Remove(0));
}

// The first hit, not the nearest one.
TEST(DoubleCollections, FindTheFirstElementWithinTheTolerance)
{
    LCDoubleVector vector = Make<LCDoubleVector>({0.5, 1.000005, 1.000001});
    EXPECT_EQ(vector.FindAlmostEq(1.0), vector.begin() + 1);
    EXPECT_EQ(vector.FindAlmostEq(1.00002), vector.end());
    LCDoubleSet set = Make<LCDoubleSet>({1.000005, 0.999995, 1.0, 0.5});
    EXPECT_EQ(set.FindAlmostEq(1.0), std::next(set.begin()));
    EXPECT_EQ(set.FindAlmostEq(1.00002), set.end());
    LCDoubleList list = Make<LCDoubleList>({0.5, 1.25, 1.0});
    EXPECT_EQ(list.FindAlmostEq(1.0, 0.25), std::next(list.begin()));
    EXPECT_EQ(list.FindAlmostEq(1.0, 0.0), std::next(list.begin(), 2));
    EXPECT_EQ(list.FindAlmostEq(2.0, 0.5), list.end());
}

TEST(NumberVectors, ReadTheFieldsOfAText)
{
    struct {
        char const * text;
        bool strict, result;
        LCIntVector numbers;
    } const rows[] = {
        {"1;x;3", false, true, Make<LCIntVector>({1, 3})},
        {"1;x;3", true, false, Make<LCIntVector>({1})},
        {"1;;3", true, false, Make<LCIntVector>({1})},
        {"1;;3", false, true, Make<LCIntVector>({1, 3})},
        {"", false, true, {}},
        {"", true, false, {}},
        {"1;2;", true, true, Make<LCIntVector>({1, 2})},
        {" 12abc;-7", true, true, Make<LCIntVector>({12, -7})},
        {"99999999999;4", false, true, Make<LCIntVector>({4})},
        {"5", true, true, Make<LCIntVector>({5})},
    };
    for (auto const & row : rows) {
        LCIntVector integers = Make<LCIntVector>({8, 8});
        EXPECT_EQ(integers.DivideText(row.text, ';', row.strict), row.result) << row.text;
        EXPECT_EQ(integers, row.numbers) << row.text;
    }
    LCDoubleVector doubles(1, 8.0);
    EXPECT_TRUE(doubles.DivideText("1.5|x|-2e3mm|", '|', false));
    EXPECT_EQ(doubles, Make<LCDoubleVector>({1.5, -2000.0}));
    EXPECT_FALSE(doubles.DivideText("0.25|x|1", '|', true));
    EXPECT_EQ(doubles, LCDoubleVector(1, 0.25));
}

TEST(Pairs, AreOrderedByBothMembersAndStartAtNothing)
{
    ExpectTotalOrder(std::vector<LCStringPair>{{"", ""}, {"A", "b"}, {"a", "b"}, {"a", "c"}});
    ExpectTotalOrder(std::vector<LCStringIntPair>{{"", -1}, {"a", 1}, {"a", 2}});
    ExpectTotalOrder(std::vector<LCIntIntPair>{{-1, 5}, {0, -1}, {0, 0}});
    ExpectTotalOrder(std::vector<LCIntShortPair>{{-1, 5}, {0, -1}, {0, 0}});
    EXPECT_EQ(LCStringPair(), LCStringPair("", ""));
    EXPECT_EQ(LCStringIntPair(), LCStringIntPair("", 0));
    EXPECT_EQ(LCIntIntPair(), LCIntIntPair(0, 0));
    EXPECT_EQ(LCIntShortPair(), LCIntShortPair(0, 0));
    EXPECT_EQ(LCIntRange().First, LCIntRange().Last);
    LCIntRange const range(7, -7);
    EXPECT_TRUE(range.First == 7 && range.Last == -7);
}

template <typename Collection, typename Second> void ExpectPairSearch(Second one, Second oneCI, Second two)
{
    Collection pairs = Make<Collection>({{"A", one}, {"a", two}});
    EXPECT_EQ(pairs.FindFirst("a"), std::next(pairs.begin()));
    EXPECT_EQ(pairs.FindCIFirst("a"), pairs.begin());
    EXPECT_EQ(pairs.FindFirst("b"), pairs.end());
    EXPECT_EQ(pairs.FindCIFirst("b"), pairs.end());
    EXPECT_EQ(pairs.FindCI({"a", oneCI}), pairs.begin());
    EXPECT_EQ(pairs.FindCI({"A", two}), std::next(pairs.begin()));
    EXPECT_EQ(pairs.FindCI({"b", one}), pairs.end());
    EXPECT_TRUE(std::as_const(pairs).ContainsCI({"a", oneCI}));
    EXPECT_FALSE(std::as_const(pairs).ContainsCI({"b", one}));
}

TEST(PairCollections, AreSearchedFromTheFront)
{
    ExpectPairSearch<LCStringPairList>("x", "X", "y");
    ExpectPairSearch<LCStringPairVector>("x", "X", "y");
    ExpectPairSearch<LCStringPairSet>("x", "X", "y");
    ExpectPairSearch<LCStringIntPairList>(1, 1, 2);
    ExpectPairSearch<LCStringIntPairVector>(1, 1, 2);
    ExpectPairSearch<LCStringIntPairSet>(1, 1, 2);
}

}  // namespace
