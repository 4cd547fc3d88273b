#include "identity/LCKey.h"

#include <bitset>
#include <memory>
#include <typeinfo>
#include <unordered_set>

#include "identity/LCKeyPairs.h"

namespace {

using GUIDRev = LCKeyGUIDRev; using KindID = LCKeyKindID; using Rev = LCKeyIDRev;
using TwoRev = LCKey2IDRev; using KindRev = LCKeyKindIDRev; using Index = LCKeyIDIndexRev;

template <typename K> concept KeepsClass = requires(K & k) { { k.UpperCase() } -> std::same_as<K>; };
template <typename K> constexpr bool hashed = std::is_default_constructible_v<std::hash<K>>;
template <typename T> concept HasLessEqual = requires(T const & a) { a <= a; };
static_assert(std::is_nothrow_move_constructible_v<KindRev> && std::is_nothrow_move_assignable_v<GUIDRev>);
static_assert(!hashed<GUIDRev> && !hashed<Index>, "they compare as their base");
static_assert(HasLessEqual<LCKeyGUID> && !HasLessEqual<LCGUID>, "a GUID is not compared by way of a key");
static_assert(!std::is_constructible_v<LCKeyIDRevBoolPair, Rev, char const *>, "a text is no flag");

/// The texts of keys, and of their clones if those differ in anything; "!" for an empty one.
template <typename... Keys> std::string Told(Keys const &... keys)
{
    auto const tell = [](LCKey const & key) {
        std::unique_ptr<LCKey> const owner(key.Clone());
        LCKey const & clone = *owner;
        bool const same = typeid(clone) == typeid(key) && clone.Str() == key.Str();
        return (key.IsEmpty() ? "!" : "") + key.Str().str() + (same ? ";" : ">" + clone.Str().str() + ";");
    };
    return (tell(keys) + ...);
}

TEST(Key, IsNormalisedPrintedAndCloned)
{
    LCGUID const guid("{AB}"), none = LCGUID::EmptyGUID();
    Rev const rev("i", 3, -4);
    EXPECT_EQ(Told(LCKeyID(), LCKeyID(" "), LCKeyGUID(), LCKeyGUID(guid)), "!; ;!;AB;");
    EXPECT_EQ(Told(GUIDRev(), GUIDRev(none, 3, 4), GUIDRev(guid, 3, 4)), "!@-1.-1;!@-1.-1;AB@3.4;");
    EXPECT_EQ(Told(LCKey2ID(), LCKey2ID("f", "i"), LCKey2ID("f", ""), LCKey2ID("", "i")), "!@;f@i;!f@;!@i;");
    EXPECT_EQ(Told(LCKeyKindID(), LCKeyKindID("k", "i"), LCKeyKindID("", "i")), "!@;k@i;!@i;");
    EXPECT_EQ(Told(LCKeyIDRev(), LCKeyIDRev("", 3, 4), rev), "!@-1.-1;!@-1.-1;i@3.-4;");
    EXPECT_EQ(Told(TwoRev(), TwoRev("", "", 3, 4), TwoRev("f", rev)), "!@@-1.-1;!@@3.4;f@i@3.-4;");
    EXPECT_EQ(Told(KindRev("k", "", 3, 4), KindRev("", "i", 3, 4), KindRev("k", rev)), "!k@@-1.-1;!@i@3.4;k@i@3.-4;");
    EXPECT_EQ(Told(Index(), Index("", 1, 2, 3), Index("i", 1, 2, 3)), "!@-1.-1@-1;!@-1.-1@-1;i@1.2@3;");

    // A copy takes the fields as they are; what is built anew from them is normalised again.
    Rev odd = rev;
    odd.ID.clear();
    EXPECT_EQ(Told(odd, Rev(odd), odd.UpperCase()), "!@3.-4>@-1.-1;!@3.-4>@-1.-1;!@-1.-1;");
    odd.ToUpperCase();
    EXPECT_EQ(odd.Str() + TwoRev("", "", 3, 4).LowerCase().Str(), "@3.-4@@3.4");
}

void Set(int & field, std::size_t value) { field = static_cast<int>(value) - 1; }
void Set(auto & field, std::size_t value) { field = LCString(value == 0 ? "" : value == 1 ? "A" : "a"); }

/// Keys with three values in every field, the first varying least, are in their order. The texts of keys that keep
/// their class tell all their fields: what they say is what counts without case.
template <typename Key> void ExpectCompares()
{
    SCOPED_TRACE(typeid(Key).name());
    constexpr std::size_t counts[] = {1, 3, 9, 27, 81};
    constexpr std::size_t count = counts[std::tuple_size_v<decltype(Key::Fields(std::declval<Key &>()))>];
    std::vector<Key> keys(count);
    for (std::size_t i = 0; i < count; ++i) {
        std::size_t weight = count;
        auto const set = [&](auto & field) { Set(field, i / (weight /= 3) % 3); };
        std::apply([&](auto &... field) { (set(field), ...); }, Key::Fields(keys[i]));
    }
    if constexpr (hashed<Key>) {
        ExpectTotalOrder(keys);
        EXPECT_EQ(std::unordered_set<Key>(keys.begin(), keys.end()).size(), keys.size());
    }
    if constexpr (KeepsClass<Key>) {
        for (Key const & a : keys) {
            Key upper = a, lower = a;
            upper.ToUpperCase();
            lower.ToLowerCase();
            EXPECT_EQ(upper.Str() + lower.Str(), a.Str().UpperCase() + a.Str().LowerCase());
            for (Key const & b : keys)
                EXPECT_TRUE(a.EqCI(b) == a.Str().EqCI(b.Str()) && a.NEqCI(b) != a.EqCI(b)) << Told(a, b);
        }
    }
}

TEST(Key, IsComparedAndOrderedByItsFieldsOrByItsBaseWhereItSaysSo)
{
    auto const expect = []<typename... Keys>(Keys const &...) { (ExpectCompares<Keys>(), ...); };
    expect(LCKeyID(), LCKeyGUID(), LCKey2ID(), KindID(), Rev(), TwoRev(), KindRev(), Index());
    LCGUID const guid("A");
    KindRev key("Kind", "Id", 1, 2);
    EXPECT_TRUE(key.EqCI(KindRev("other", "ID", 1, 2)) && Index("A", 4, 5, 6) < Index("a", 1, 2, 3));
    EXPECT_TRUE(Index("a", 1, 2, 3) == Index("a", 4, 5, 6) && GUIDRev(guid, 4, 5) == GUIDRev(guid, 1, 2));
    key.ToUpperCase();
    EXPECT_EQ(Told(key, key.LowerCase()), "Kind@ID@1.2;id@1.2;");
}

/// As bits: EqCI, LCEqualCI, LCCompareCI, and LCCompareCI the other way round.
template <typename Value> std::string Compared(Value const & a, Value const & b)
{
    typename Value::LCCompareCI const less;
    bool const equal = typename Value::LCEqualCI()(a, b);
    return std::bitset<4>(8 * a.EqCI(b) + 4 * equal + 2 * less(a, b) + 1 * less(b, a)).to_string();
}

// Pairs whose IDs are equal and whose revisions differ are equivalent, whatever their second.
TEST(Key, IsSortedByItsTextsAloneAndPairsByTheirSecondBehindEqualKeys)
{
    Rev const key("a", 1, 2), upper("A", 1, 2), revised("A", 1, 3), next("b", 0, 0), last("_", 0, 0);
    EXPECT_EQ(Compared(key, upper) + Compared(key, revised) + Compared(last, next), "110000000001");
    EXPECT_EQ(Compared<KindID>({"k", "i"}, {"K", "I"}) + Compared<KindID>({"k", "_"}, {"K", "a"}), "11000001");
    EXPECT_EQ(Compared<KindID>({"A", "_"}, {"b", "a"}) + Compared<KindID>({"_", "a"}, {"a", "b"}), "00100001");
    using Keys = LCKeyIDRevPair; using Flag = LCKeyIDRevBoolPair; using Named = LCKeyIDRevStringPair;
    EXPECT_EQ(Compared<Keys>({key, key}, {upper, key}) + Compared<Keys>({key, key}, {upper, upper}), "11001001");
    EXPECT_EQ(Compared<Keys>({key, key}, {revised, next}), "0000");
    EXPECT_EQ(Compared<Flag>({key, false}, {upper, false}) + Compared<Flag>({key, false}, {upper, true}), "11000010");
    EXPECT_EQ(Compared<Flag>({key, true}, {next, false}), "0010");
    EXPECT_EQ(Compared<Named>({key, "x"}, {upper, "X"}) + Compared<Named>({key, "_"}, {upper, "x"}), "11000001");
    ExpectTotalOrder(std::vector<Named>{{}, {upper, "b"}, {key, "A"}, {key, "a"}, {next, ""}});
    EXPECT_TRUE(Keys() == Keys({}, {}) && !Flag().second);
}

}  // namespace
