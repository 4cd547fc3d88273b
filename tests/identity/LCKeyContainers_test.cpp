#include "identity/LCKeyContainers.h"

#include "support/Allocations.h"

namespace {

template <typename Flag> concept Selects = requires(LCKeyIDRevBoolPairSet pairs, LCKeyIDRevList keys, Flag flag) {
    pairs.ToKeyIDRevList(keys, flag); };
template <typename Flag> constexpr bool fills = std::is_constructible_v<LCKeyIDRevBoolPairList, LCKeyIDRevList, Flag>;
static_assert(Selects<bool> && !Selects<int> && fills<bool> && !fills<char const *>, "a text or a number is no flag");

/// Containers of keys have a virtual destructor and are copied; those of pairs are moved, and empty then.
template <typename... Containers> void ExpectKeys(auto key)
{
    auto const upper = key("ID", 2), lower = key("id", 2), mixed = key("iD", 2), revised = key("id", 3);
    auto const expect = [&]<typename T>(T keys) {
        SCOPED_TRACE(typeid(T).name());
        constexpr bool moves = !std::derived_from<typename T::value_type, LCKey>;
        static_assert(!std::is_constructible_v<T, std::initializer_list<typename T::value_type>>);
        static_assert(std::has_virtual_destructor_v<T> != moves && std::is_nothrow_move_assignable_v<T> == moves);
        EXPECT_EQ(AllocationsOf([&] {
            EXPECT_TRUE(keys.Contains(lower) && !keys.Contains(mixed));
            EXPECT_TRUE(keys.ContainsCI(mixed) && !keys.ContainsCI(revised));
        }), 0u);
        ExpectAllOrNothing(keys, [](T & changed) { changed.ToLowerCase(); });
        if constexpr (requires { keys.FindCI(lower); }) {
            EXPECT_TRUE(keys.FindCI(lower) == std::next(keys.begin()) && keys.FindCI(revised) == keys.end());
        }
        keys.ToLowerCase();
        EXPECT_TRUE(keys.Contains(lower) && !keys.Contains(upper));
        keys.ToUpperCase();
        EXPECT_TRUE(keys.Contains(upper) && !keys.Contains(lower));
        EXPECT_EQ(keys.size(), qrtcl::OrderedSet<T> ? 2u : 3u);
    };
    (expect(Make<Containers>({key("A", 2), upper, lower})), ...);
}

TEST(KeyContainers, AreSearchedAndChangeCase)
{
    LCString const rest(20, '0');
    auto const key = [&](LCString const & id, int revision) { return LCKeyIDRev(id + rest, 1, revision); };
    auto const with = [&]<typename Pair>(Pair const & pair) {
        return [=](char const * id, int revision) { return Pair(key(id, revision), pair.second); };
    };
    ExpectKeys<LCKeyIDRevList, LCKeyIDRevVector, LCKeyIDRevSet>(key);
    ExpectKeys<LCKey2IDRevSet>([&](auto id, int revision) { return LCKey2IDRev("_", key(id, revision)); });
    ExpectKeys<LCKeyKindIDList, LCKeyKindIDSet>([&](auto id, int i) { return LCKeyKindID(LCString(i), id + rest); });
    ExpectKeys<LCKeyIDRevPairList, LCKeyIDRevPairVector, LCKeyIDRevPairSet>(with(LCKeyIDRevPair()));
    ExpectKeys<LCKeyIDRevBoolPairList, LCKeyIDRevBoolPairVector, LCKeyIDRevBoolPairSet>(with(LCKeyIDRevBoolPair()));
    ExpectKeys<LCKeyIDRevStringPairList, LCKeyIDRevStringPairVector>(with(LCKeyIDRevStringPair()));
    ExpectKeys<LCKeyIDRevStringPairSet>(with(LCKeyIDRevStringPair()));
}

// Sorting looks past the revision, finding equal neighbours does not.
TEST(KeyContainers, ChangeTheCaseOfTheirKeysOnlySortStablyAndMergeNeighbours)
{
    LCKeyIDRev const a("a", 1, 0), A("A", 1, 0), a2("a", 2, 0), b("B", 0, 0);
    auto set = Make<LCKeyIDRevPairSet>({{A, A}, {a, a}});
    auto texts = Make<LCKeyIDRevStringPairVector>({{A, "A"}});
    set.ToLowerCase();
    texts.ToLowerCase();
    EXPECT_TRUE(set == Make<LCKeyIDRevPairSet>({{a, a}}) && texts == Make<LCKeyIDRevStringPairVector>({{a, "A"}}));
    auto keys = Make<LCKeyIDRevList>({b, a2, A, a, a2});
    auto pairs = Make<LCKeyIDRevPairList>({{a, a}, {A, A}, {A, A}});
    keys.SortCI();
    keys.UniqueCI();
    pairs.UniqueCI();
    pairs.SortCI();
    EXPECT_EQ(keys, Make<LCKeyIDRevList>({a2, A, a2, b}));
    EXPECT_EQ(pairs, Make<LCKeyIDRevPairList>({{A, A}, {a, a}})) << "the second key is compared exactly";
}

template <typename Flags, typename Texts, typename Keys> void ExpectPairs()
{
    LCKeyIDRev const a("a", 1, 1), A("A", 1, 1), b("b", 1, 1), c("c", 1, 1);
    auto pairs = Make<Texts>({{A, "x"}, {a, "x"}, {a, "y"}});
    EXPECT_TRUE(pairs.FindKey(a) == std::next(pairs.begin()) && pairs.FindKeyCI(a) == pairs.begin());
    EXPECT_TRUE(pairs.FindKey({"a", 1, 3}) == pairs.end() && !pairs.ContainsKeyCI({"a", 1, 3}));
    EXPECT_TRUE(pairs.ContainsKey(a) && !pairs.ContainsKey(b) && !pairs.ContainsKey({"", 1, 1}));
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
