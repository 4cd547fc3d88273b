#include "identity/LCKeyContainers.h"

#include "support/Allocations.h"
#include "support/Support.h"

namespace {

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

template <typename L, typename V, typename S, typename Of, bool move, bool ignoresCase, bool keys, bool flags,
          bool texts> constexpr bool Three =
    Is<L, std::list<Of>, move, 1, ignoresCase, ignoresCase, ignoresCase, ignoresCase, keys, flags, texts> &&
    Is<V, std::vector<Of>, move, 1, ignoresCase, ignoresCase, ignoresCase, 0, keys, flags, texts> &&
    Is<S, std::set<Of>, move, 1, ignoresCase, ignoresCase, ignoresCase, 0, keys, flags, texts>;

using Pair = LCKeyIDRevPair; using Flag = LCKeyIDRevBoolPair; using Text = LCKeyIDRevStringPair;
// moved; has Contains, ContainsCI, FindCI, changes of case, sorting, search by key, flags, texts
static_assert(Is<LCKey2IDRevSet,  std::set<LCKey2IDRev>,   0, 1, 1, 0, 1, 0, 0, 0, 0>);
static_assert(Is<LCKeyKindIDList, std::list<LCKeyKindID>,  0, 1, 1, 1, 1, 1, 0, 0, 0>);
static_assert(Is<LCKeyKindIDSet,  std::set<LCKeyKindID>,   0, 1, 1, 1, 1, 0, 0, 0, 0>);
// moved; has what ignores case, search by key, flags, texts
static_assert(Three<LCKeyIDRevList, LCKeyIDRevVector, LCKeyIDRevSet, LCKeyIDRev, 0, 1, 0, 0, 0>);
static_assert(Three<LCKeyGUIDList, LCKeyGUIDVector, LCKeyGUIDSet, LCKeyGUID, 0, 0, 0, 0, 0>);
static_assert(Three<LCKeyIDRevPairList, LCKeyIDRevPairVector, LCKeyIDRevPairSet, Pair, 1, 1, 0, 0, 0>);
static_assert(Three<LCKeyIDRevBoolPairList, LCKeyIDRevBoolPairVector, LCKeyIDRevBoolPairSet, Flag, 1, 1, 0, 1, 0>);
static_assert(
    Three<LCKeyIDRevStringPairList, LCKeyIDRevStringPairVector, LCKeyIDRevStringPairSet, Text, 1, 1, 1, 0, 1>);

// A text or a number is no flag.
static_assert(!TurnsIntoKeys<LCKeyIDRevBoolPairList, char const *> && !TurnsIntoKeys<LCKeyIDRevBoolPairSet, int>);
static_assert(!std::is_constructible_v<LCKeyIDRevBoolPairList, LCKeyIDRevList, char const *>);

/// An element with this ID in its key, and "x" in what stands beside it.
template <typename Element> Element New(LCString const & id, int revision)
{
    if constexpr (std::same_as<Element, LCKeyIDRev>) return {id, 1, revision};
    else if constexpr (std::same_as<Element, LCKey2IDRev>) return {"x", id, 1, revision};
    else if constexpr (std::same_as<Element, LCKeyKindID>) return {LCString(revision), id};
    else if constexpr (std::same_as<Element, Pair>) return {{id, 1, revision}, {"x", 5, 6}};
    else if constexpr (std::same_as<Element, Flag>) return {{id, 1, revision}, true};
    else return {{id, 1, revision}, "x"};
}

template <typename Container> class KeyContainers : public testing::Test {};
using Kinds = testing::Types<LCKeyIDRevList, LCKeyIDRevVector, LCKeyIDRevSet, LCKey2IDRevSet, LCKeyKindIDList,
    LCKeyKindIDSet, LCKeyIDRevPairList, LCKeyIDRevPairSet, LCKeyIDRevBoolPairVector, LCKeyIDRevBoolPairSet,
    LCKeyIDRevStringPairList, LCKeyIDRevStringPairSet>;
TYPED_TEST_SUITE(KeyContainers, Kinds);

TYPED_TEST(KeyContainers, AreSearchedAndChangeCaseAndAreEmptyAfterAMoveOrKeepTheirElements)
{
    constexpr auto key = &New<typename TypeParam::value_type>;
    auto const upper = key("ID", 2), lower = key("id", 2), mixed = key("iD", 2);
    TypeParam container = Make<TypeParam>({key("A", 2), upper, lower});
    EXPECT_TRUE(container.Contains(lower) && container.Contains(upper) && !container.Contains(mixed));
    EXPECT_TRUE(container.ContainsCI(mixed) && !container.ContainsCI(key("id", 3)));
    if constexpr (HasFindCI<TypeParam>) {
        EXPECT_EQ(container.FindCI(lower), std::next(container.begin())) << "the first in the container's order";
        EXPECT_EQ(container.FindCI(key("b", 2)), container.end());
    }
    container.ToLowerCase();
    EXPECT_TRUE(container.Contains(lower) && !container.Contains(upper));
    std::size_t const size = qrtcl::OrderedSet<TypeParam> ? 2 : 3;
    EXPECT_EQ(container.size(), size);
    container.ToUpperCase();
    EXPECT_FALSE(container.Contains(lower));
    TypeParam const target = std::move(container);
    EXPECT_EQ(container.size(), std::is_nothrow_move_constructible_v<TypeParam> ? 0 : size);
    EXPECT_EQ(target.size(), size);
}

// Keys in a list are changed where they stand; in a set they are built anew, and so normalised. A text is no key.
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
    pairs.UniqueCI();
    EXPECT_EQ(pairs, Make<LCKeyIDRevPairList>({{a1, a1}, {A1, A1}})) << "the second key is compared exactly";
    pairs.SortCI();
    EXPECT_EQ(pairs, Make<LCKeyIDRevPairList>({{A1, A1}, {a1, a1}}));
}

template <typename Flags, typename Texts, typename Keys> void ExpectPairs()
{
    LCKeyIDRev const a("a", 1, 1), A("A", 1, 1), b("b", 1, 1), c("c", 1, 1);
    auto pairs = Make<Texts>({{A, "x"}, {a, "x"}, {a, "y"}});
    EXPECT_TRUE(pairs.FindKey(a) == std::next(pairs.begin()) && pairs.FindKeyCI(a) == pairs.begin());
    EXPECT_TRUE(pairs.FindKey({"a", 1, 3}) == pairs.end() && !pairs.ContainsKeyCI({"a", 1, 3}));
    EXPECT_TRUE(pairs.ContainsKey(a) && !pairs.ContainsKey(b) && !pairs.ContainsKey({"", 1, 1}));
    EXPECT_TRUE(pairs.ContainsCI({a, "Y"}) && !pairs.Contains({a, "Y"}));

    auto const keys = Make<Keys>({a, b});
    Flags const flags(keys);
    EXPECT_EQ(flags, Make<Flags>({{a, false}, {a, true}, {b, false}, {b, true}}));
    EXPECT_EQ(Flags(keys, true), Make<Flags>({{a, true}, {b, true}}));
    EXPECT_EQ(Texts(keys), Make<Texts>({{a, ""}, {b, ""}}));
    EXPECT_EQ(Texts(keys, "x"), Make<Texts>({{a, "x"}, {b, "x"}}));

    auto list = Make<LCKeyIDRevList>({c, b, c}), selected = LCKeyIDRevList();
    auto set = Make<LCKeyIDRevSet>({c});
    flags.ToKeyIDRevList(list);
    flags.ToKeyIDRevSet(set);
    EXPECT_EQ(list, Make<LCKeyIDRevList>({c, b, c, a})) << "what is there already is not added, and stays";
    EXPECT_EQ(set, Make<LCKeyIDRevSet>({a, b, c}));
    Make<Flags>({{a, false}, {b, true}}).ToKeyIDRevList(selected, true);
    for (char const * const text : {"x", ""}) Make<Texts>({{a, ""}, {c, "X"}}).ToKeyIDRevList(selected, text);
    EXPECT_EQ(selected, Make<LCKeyIDRevList>({b, a}));
    std::string const longText(50, 'x');
    EXPECT_EQ(AllocationsOf([&] { pairs.ToKeyIDRevList(selected, longText); }), 3u) << "the text is converted once";
}

TEST(KeyContainers, OfPairsAreSearchedByKeyAndComeFromKeysAndGiveThemBack)
{
    ExpectPairs<LCKeyIDRevBoolPairList, LCKeyIDRevStringPairList, LCKeyIDRevList>();
    ExpectPairs<LCKeyIDRevBoolPairVector, LCKeyIDRevStringPairVector, LCKeyIDRevVector>();
    ExpectPairs<LCKeyIDRevBoolPairSet, LCKeyIDRevStringPairSet, LCKeyIDRevSet>();
}

}  // namespace
