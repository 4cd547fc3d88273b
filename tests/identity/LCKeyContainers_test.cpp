#include "identity/LCKeyContainers.h"

#include "support/Support.h"

namespace {

// clang-format off
template <typename T> concept HasContains = requires(T & c, typename T::value_type v) { c.Contains(v); };
template <typename T> concept HasContainsCI = requires(T & c, typename T::value_type v) { c.ContainsCI(v); };
template <typename T> concept HasFindCI = requires(T & c, typename T::value_type v) { c.FindCI(v); };
template <typename T> concept ChangesCase = requires(T & c) { c.ToLowerCase(); c.ToUpperCase(); };
template <typename T> concept SortsCI = requires(T & c) { c.SortCI(); c.UniqueCI(); };
template <typename T> concept SearchesKeys = requires(T & c, LCKeyIDRev k) {
    std::as_const(c).ContainsKey(k) && std::as_const(c).ContainsKeyCI(k); c.FindKey(k); c.FindKeyCI(k); };
template <typename T, typename Second> concept TurnsIntoKeys =
    requires(T const & c, Second s, LCKeyIDRevList & l, LCKeyIDRevSet & k) {
        c.ToKeyIDRevList(l); c.ToKeyIDRevSet(k); c.ToKeyIDRevList(l, s); c.ToKeyIDRevSet(k, s); };

/// The container of keys, and what a class has beside it. Those that are moved have no virtual destructor.
template <typename T, typename Container, bool move, bool contains, bool containsCI, bool findCI, bool changesCase,
          bool sorts, bool searchesKeys, bool flags, bool texts, typename Value = typename Container::value_type>
constexpr bool Is = std::derived_from<T, Container> && std::copyable<T> && std::default_initializable<T> &&
    !std::is_constructible_v<T, std::initializer_list<Value>> && !std::is_constructible_v<T, int> &&
    (std::is_nothrow_move_constructible_v<T> && std::is_nothrow_move_assignable_v<T>) == move &&
    std::has_virtual_destructor_v<T> == !move && HasContains<T> == contains && HasContainsCI<T> == containsCI &&
    HasFindCI<T> == findCI && ChangesCase<T> == changesCase && SortsCI<T> == sorts &&
    SearchesKeys<T> == searchesKeys && TurnsIntoKeys<T, bool> == flags && TurnsIntoKeys<T, LCString> == texts;

using Pair = LCKeyIDRevPair; using Flag = LCKeyIDRevBoolPair; using Text = LCKeyIDRevStringPair;
//                                                                           move
//                                                                           |  Contains, ContainsCI, FindCI
//                                                                           |  |  |  |  case, sort, keys, flags, texts
static_assert(Is<LCKeyIDRevList,             std::list<LCKeyIDRev>,    0, 1, 1, 1, 1, 1, 0, 0, 0>);
static_assert(Is<LCKeyIDRevVector,           std::vector<LCKeyIDRev>,  0, 1, 1, 1, 1, 0, 0, 0, 0>);
static_assert(Is<LCKeyIDRevSet,              std::set<LCKeyIDRev>,     0, 1, 1, 1, 1, 0, 0, 0, 0>);
static_assert(Is<LCKey2IDRevSet,             std::set<LCKey2IDRev>,    0, 1, 1, 0, 1, 0, 0, 0, 0>);
static_assert(Is<LCKeyKindIDList,            std::list<LCKeyKindID>,   0, 1, 1, 1, 1, 1, 0, 0, 0>);
static_assert(Is<LCKeyKindIDSet,             std::set<LCKeyKindID>,    0, 1, 1, 1, 1, 0, 0, 0, 0>);
static_assert(Is<LCKeyGUIDList,              std::list<LCKeyGUID>,     0, 1, 0, 0, 0, 0, 0, 0, 0>);
static_assert(Is<LCKeyGUIDVector,            std::vector<LCKeyGUID>,   0, 1, 0, 0, 0, 0, 0, 0, 0>);
static_assert(Is<LCKeyGUIDSet,               std::set<LCKeyGUID>,      0, 1, 0, 0, 0, 0, 0, 0, 0>);
static_assert(Is<LCKeyIDRevPairList,         std::list<Pair>,          1, 1, 1, 1, 1, 1, 0, 0, 0>);
static_assert(Is<LCKeyIDRevPairVector,       std::vector<Pair>,        1, 1, 1, 1, 1, 0, 0, 0, 0>);
static_assert(Is<LCKeyIDRevPairSet,          std::set<Pair>,           1, 1, 1, 1, 1, 0, 0, 0, 0>);
static_assert(Is<LCKeyIDRevBoolPairList,     std::list<Flag>,          1, 1, 1, 1, 1, 1, 0, 1, 0>);
static_assert(Is<LCKeyIDRevBoolPairVector,   std::vector<Flag>,        1, 1, 1, 1, 1, 0, 0, 1, 0>);
static_assert(Is<LCKeyIDRevBoolPairSet,      std::set<Flag>,           1, 1, 1, 1, 1, 0, 0, 1, 0>);
static_assert(Is<LCKeyIDRevStringPairList,   std::list<Text>,          1, 1, 1, 1, 1, 1, 1, 0, 1>);
static_assert(Is<LCKeyIDRevStringPairVector, std::vector<Text>,        1, 1, 1, 1, 1, 0, 1, 0, 1>);
static_assert(Is<LCKeyIDRevStringPairSet,    std::set<Text>,           1, 1, 1, 1, 1, 0, 1, 0, 1>);

// A text or a number is no flag.
static_assert(!TurnsIntoKeys<LCKeyIDRevBoolPairList, char const *> && !TurnsIntoKeys<LCKeyIDRevBoolPairSet, int>);
static_assert(!std::is_constructible_v<LCKeyIDRevBoolPairList, LCKeyIDRevList, char const *>);
// clang-format on

template <typename Container> Container Make(std::initializer_list<typename Container::value_type> elements)
{
    Container made;
    for (auto const & element : elements) made.insert(made.end(), element);
    return made;
}

/// An element with these texts: the first in each of its keys, the second in what stands beside them.
template <typename Element> Element New(LCString const & id, LCString const & other, int revision)
{
    if constexpr (std::same_as<Element, LCKeyIDRev>)
        return {id, 1, revision};
    else if constexpr (std::same_as<Element, LCKey2IDRev>)
        return {other, id, 1, revision};
    else if constexpr (std::same_as<Element, LCKeyKindID>)
        return {LCString(revision), id};
    else if constexpr (std::same_as<Element, Pair>)
        return {{id, 1, revision}, {other, 5, 6}};
    else if constexpr (std::same_as<Element, Flag>)
        return {{id, 1, revision}, true};
    else
        return {{id, 1, revision}, other};
}

template <typename Container> class KeyContainers : public testing::Test {};
using Kinds = testing::Types<LCKeyIDRevList, LCKeyIDRevVector, LCKeyIDRevSet, LCKey2IDRevSet, LCKeyKindIDList,
                             LCKeyKindIDSet, LCKeyIDRevPairList, LCKeyIDRevPairSet, LCKeyIDRevBoolPairVector,
                             LCKeyIDRevBoolPairSet, LCKeyIDRevStringPairList, LCKeyIDRevStringPairSet>;
TYPED_TEST_SUITE(KeyContainers, Kinds);

TYPED_TEST(KeyContainers, AreSearchedAndChangeCase)
{
    using Element = typename TypeParam::value_type;
    Element const upper = New<Element>("ID", "x", 2), lower = New<Element>("id", "x", 2);
    TypeParam container = Make<TypeParam>({New<Element>("A", "x", 2), upper, lower});
    EXPECT_TRUE(container.Contains(lower) && container.Contains(upper));
    EXPECT_FALSE(container.Contains(New<Element>("iD", "x", 2)));
    EXPECT_TRUE(container.ContainsCI(New<Element>("iD", "x", 2)));
    EXPECT_FALSE(container.ContainsCI(New<Element>("id", "x", 3)));
    EXPECT_FALSE(TypeParam().Contains(lower) || TypeParam().ContainsCI(lower));
    if constexpr (HasFindCI<TypeParam>) {
        EXPECT_EQ(container.FindCI(lower), std::next(container.begin()))
            << "the first in the container's order";
        EXPECT_EQ(container.FindCI(New<Element>("b", "x", 2)), container.end());
    }
    container.ToLowerCase();
    EXPECT_EQ(container.size(), qrtcl::OrderedSet<TypeParam> ? 2u : 3u);
    EXPECT_TRUE(container.Contains(lower) && !container.Contains(upper));
    container.ToUpperCase();
    EXPECT_FALSE(container.Contains(lower));
}

TYPED_TEST(KeyContainers, AreEmptyAfterAMoveOrKeepTheirElements)
{
    TypeParam source = Make<TypeParam>({{}});
    TypeParam const target = std::move(source);
    EXPECT_EQ(source.size(), std::is_nothrow_move_constructible_v<TypeParam> ? 0u : 1u);
    EXPECT_EQ(target.size(), 1u);
}

TEST(KeyContainers, FindGUIDsExactly)
{
    EXPECT_TRUE(Make<LCKeyGUIDList>({LCGUID("A")}).Contains(LCGUID("A")));
    EXPECT_TRUE(Make<LCKeyGUIDSet>({LCGUID("A")}).Contains(LCKeyGUIDRev(LCGUID("A"), 1, 2)));
    EXPECT_FALSE(Make<LCKeyGUIDVector>({LCGUID("A")}).Contains(LCGUID("a")));
}

// Keys in a list are changed where they stand; in a set they are built anew, and so normalised. A text is no
// key.
TEST(KeyContainers, ChangeTheCaseOfTheirKeysOnly)
{
    LCKeyIDRev odd("x", 1, 2);
    odd.ID.clear();
    auto list = Make<LCKeyIDRevList>({odd});
    auto set = Make<LCKeyIDRevSet>({odd});
    list.ToUpperCase();
    set.ToUpperCase();
    EXPECT_EQ(list.front().Str() + set.begin()->Str(), "@1.2@-1.-1");
    auto pairs = Make<LCKeyIDRevPairSet>({{{"A", 1, 2}, {"B", 3, 4}}, {{"a", 1, 2}, {"b", 3, 4}}});
    pairs.ToLowerCase();
    EXPECT_EQ(pairs, Make<LCKeyIDRevPairSet>({{{"a", 1, 2}, {"b", 3, 4}}}));
    auto texts = Make<LCKeyIDRevStringPairVector>({{{"A", 1, 2}, "B"}});
    texts.ToLowerCase();
    EXPECT_EQ(texts, Make<LCKeyIDRevStringPairVector>({{{"a", 1, 2}, "B"}}));
}

// Sorting looks past the revision, finding equal neighbours does not.
TEST(KeyContainers, SortStablyAndMergeNeighbours)
{
    LCKeyIDRev const a1("a", 1, 0), A1("A", 1, 0), a2("a", 2, 0), b("B", 0, 0);
    auto keys = Make<LCKeyIDRevList>({b, a2, A1, a1, a2});
    keys.SortCI();
    EXPECT_EQ(keys, Make<LCKeyIDRevList>({a2, A1, a1, a2, b}));
    keys.UniqueCI();
    EXPECT_EQ(keys, Make<LCKeyIDRevList>({a2, A1, a2, b}));
    auto pairs = Make<LCKeyIDRevPairList>({{a1, a1}, {A1, A1}, {A1, A1}});
    EXPECT_TRUE(pairs.ContainsCI({a1, A1}));
    pairs.UniqueCI();
    EXPECT_EQ(pairs, Make<LCKeyIDRevPairList>({{a1, a1}, {A1, A1}})) << "the second key is compared exactly";
    pairs.SortCI();
    EXPECT_EQ(pairs, Make<LCKeyIDRevPairList>({{A1, A1}, {a1, a1}}));
}

TEST(KeyContainers, FindTheFirstPairWithAKey)
{
    LCKeyIDRev const upper("A", 1, 2), lower("a", 1, 2);
    auto const check = [&](auto pairs) {
        EXPECT_EQ(pairs.FindKey(lower), std::next(pairs.begin()));
        EXPECT_EQ(pairs.FindKeyCI(lower), pairs.begin());
        EXPECT_TRUE(pairs.ContainsKey(lower) && !pairs.ContainsKey({"b", 1, 2}) &&
                    !pairs.ContainsKey({"", 1, 2}));
        EXPECT_EQ(pairs.FindKey({"a", 1, 3}), pairs.end());
        EXPECT_FALSE(pairs.ContainsKeyCI({"a", 1, 3}));
        EXPECT_TRUE(pairs.ContainsCI({lower, "Y"}) && !pairs.Contains({lower, "Y"}));
    };
    check(Make<LCKeyIDRevStringPairList>({{upper, "x"}, {lower, "x"}, {lower, "y"}}));
    check(Make<LCKeyIDRevStringPairSet>({{upper, "x"}, {lower, "x"}, {lower, "y"}}));
}

template <typename Flags, typename Texts, typename Keys> void ExpectConversions()
{
    LCKeyIDRev const a("a", 1, 1), b("b", 1, 1), c("c", 1, 1);
    auto const keys = Make<Keys>({a, b});
    Flags const flags(keys);
    EXPECT_EQ(flags, Make<Flags>({{a, false}, {a, true}, {b, false}, {b, true}}));
    EXPECT_EQ(Flags(keys, true), Make<Flags>({{a, true}, {b, true}}));
    EXPECT_EQ(Texts(keys), Make<Texts>({{a, ""}, {b, ""}}));
    EXPECT_EQ(Texts(keys, "x"), Make<Texts>({{a, "x"}, {b, "x"}}));

    auto list = Make<LCKeyIDRevList>({c, b, c});
    flags.ToKeyIDRevList(list);
    EXPECT_EQ(list, Make<LCKeyIDRevList>({c, b, c, a})) << "what is there already is not added, and stays";
    auto set = Make<LCKeyIDRevSet>({c});
    flags.ToKeyIDRevSet(set);
    EXPECT_EQ(set, Make<LCKeyIDRevSet>({a, b, c}));
    LCKeyIDRevList selected;
    Make<Flags>({{a, false}, {b, true}}).ToKeyIDRevList(selected, true);
    Make<Texts>({{a, ""}, {c, "X"}}).ToKeyIDRevList(selected, "x");
    Make<Texts>({{a, ""}, {c, "X"}}).ToKeyIDRevList(selected, "");
    EXPECT_EQ(selected, Make<LCKeyIDRevList>({b, a}));
}

TEST(KeyContainers, OfPairsComeFromKeysAndGiveThemBack)
{
    ExpectConversions<LCKeyIDRevBoolPairList, LCKeyIDRevStringPairList, LCKeyIDRevList>();
    ExpectConversions<LCKeyIDRevBoolPairVector, LCKeyIDRevStringPairVector, LCKeyIDRevVector>();
    ExpectConversions<LCKeyIDRevBoolPairSet, LCKeyIDRevStringPairSet, LCKeyIDRevSet>();
}

}  // namespace
