#include "identity/LCKey.h"

#include <bitset>
#include <memory>
#include <typeinfo>
#include <unordered_set>

#include "identity/LCKeyPairs.h"
#include "support/Support.h"

namespace {

template <typename K> concept IgnoresCase = requires(K & k) {
    k.EqCI(k) && k.NEqCI(k); k.ToUpperCase(); k.ToLowerCase(); k.UpperCase().LowerCase(); };
template <typename K> concept KeepsClass = requires(K & k) { { k.UpperCase() } -> std::same_as<K>; };
template <typename K> concept NamesFunctors = requires { typename K::LCCompareCI; typename K::LCEqualCI; };
template <typename K> concept HasFunctors =
    std::predicate<typename K::LCCompareCI, K, K> && std::predicate<typename K::LCEqualCI, K, K>;
template <typename K> constexpr bool hashed = std::is_default_constructible_v<std::hash<K>>;
template <typename T> concept HasLessEqual = requires(T const & a) { a <= a; };

/// The place of a class in the tree, and what it has beside `Clone`, `Str` and `IsEmpty`.
template <typename K, typename Base, bool ignoresCase, bool keepsClass, bool namesFunctors, bool functors, bool hash>
constexpr bool Is = std::derived_from<K, Base> && std::has_virtual_destructor_v<K> &&
    std::is_nothrow_move_constructible_v<K> && IgnoresCase<K> == ignoresCase && KeepsClass<K> == keepsClass &&
    NamesFunctors<K> == namesFunctors && HasFunctors<K> == functors && hashed<K> == hash;

static_assert(Is<LCKeyID,         LCKey,      0, 0, 0, 0, 1>);
static_assert(Is<LCKeyGUID,       LCKey,      0, 0, 0, 0, 1>);
static_assert(Is<LCKeyGUIDRev,    LCKeyGUID,  0, 0, 0, 0, 0>);
static_assert(Is<LCKey2ID,        LCKeyID,    0, 0, 0, 0, 1>);
static_assert(Is<LCKey2IDRev,     LCKeyID,    1, 1, 1, 0, 1>);
static_assert(Is<LCKeyKindID,     LCKeyID,    1, 1, 1, 1, 1>);
static_assert(Is<LCKeyIDRev,      LCKeyID,    1, 1, 1, 1, 1>);
static_assert(Is<LCKeyKindIDRev,  LCKeyIDRev, 1, 0, 1, 1, 1>);
static_assert(Is<LCKeyIDIndexRev, LCKeyID,    1, 1, 1, 0, 0>);
static_assert(!std::derived_from<LCKey2IDRev, LCKey2ID> && !std::derived_from<LCKey2IDRev, LCKeyIDRev>);
static_assert(!std::derived_from<LCKeyIDIndexRev, LCKeyIDRev> && !std::derived_from<LCKeyKindIDRev, LCKeyKindID>);
static_assert(std::is_abstract_v<LCKey> && !HasLessEqual<LCKey>);
// A GUID is not compared by way of a key that it converts to, and a text is no flag.
static_assert(HasLessEqual<LCKeyGUID> && !HasLessEqual<LCGUID>);
static_assert(!std::is_constructible_v<LCKeyIDRevBoolPair, LCKeyIDRev, char const *>);

template <typename Key> std::shared_ptr<LCKey> New(auto const &... f) { return std::make_shared<Key>(f...); }

TEST(Key, IsNormalisedPrintedAndCloned)
{
    LCGUID const guid("{AB-1}"), none = LCGUID::EmptyGUID();
    LCKeyIDRev const revision("i", 3, 4);
    struct { std::shared_ptr<LCKey> key; char const * text; bool empty; } const rows[] = {
        {New<LCKeyID>(), "", true}, {New<LCKeyID>(LCString(" ")), " ", false}, {New<LCKeyGUID>(), "", true},
        {New<LCKeyGUID>(guid), "AB-1", false}, {New<LCKeyGUIDRev>(), "@-1.-1", true},
        {New<LCKeyGUIDRev>(none, 3, 4), "@-1.-1", true}, {New<LCKeyGUIDRev>(guid, 3, -4), "AB-1@3.-4", false},
        {New<LCKey2ID>(), "@", true}, {New<LCKey2ID>("f", "i"), "f@i", false}, {New<LCKey2ID>("f", ""), "f@", true},
        {New<LCKey2ID>("", "i"), "@i", true}, {New<LCKey2IDRev>(), "@@-1.-1", true},
        {New<LCKey2IDRev>("", "", 3, 4), "@@3.4", true}, {New<LCKey2IDRev>("f", revision), "f@i@3.4", false},
        {New<LCKeyKindID>(), "@", true}, {New<LCKeyKindID>("k", "i"), "k@i", false},
        {New<LCKeyKindID>("", "i"), "@i", true}, {New<LCKeyIDRev>(), "@-1.-1", true},
        {New<LCKeyIDRev>("", 3, 4), "@-1.-1", true}, {New<LCKeyIDRev>("i", 3, -4), "i@3.-4", false},
        {New<LCKeyKindIDRev>("k", "", 3, 4), "k@@-1.-1", true}, {New<LCKeyKindIDRev>("", "i", 3, 4), "@i@3.4", true},
        {New<LCKeyKindIDRev>("k", revision), "k@i@3.4", false}, {New<LCKeyIDIndexRev>(), "@-1.-1@-1", true},
        {New<LCKeyIDIndexRev>("", 1, 2, 3), "@-1.-1@-1", true},
        {New<LCKeyIDIndexRev>("i", 1, 2, 3), "i@1.2@3", false}};
    for (auto const & [key, text, empty] : rows) {
        std::unique_ptr<LCKey> const owner(key->Clone());
        LCKey const & original = *key, & clone = *owner;
        EXPECT_TRUE(typeid(clone) == typeid(original)) << text;
        EXPECT_EQ(original.Str() + " " + clone.Str(), LCString(text) + " " + text);
        EXPECT_TRUE(original.IsEmpty() == empty && clone.IsEmpty() == empty) << text;
    }
}

// A copy takes the fields as they are; what is built anew from them is normalised again.
TEST(Key, IsNormalisedAgainByCloneAndUpperCase)
{
    LCKeyIDRev key("i", 3, 4);
    key.ID.clear();
    std::unique_ptr<LCKey> const clone(key.Clone());
    EXPECT_EQ(LCKeyIDRev(key).Str() + clone->Str() + key.UpperCase().Str(), "@3.4@-1.-1@-1.-1");
    key.ToUpperCase();
    EXPECT_EQ(key.Str() + LCKey2IDRev("", "", 3, 4).LowerCase().Str(), "@3.4@@3.4");
}

/// Keys with all combinations of a few values, the first field varying least.
template <typename Key, typename... Fields> std::vector<Key> AllKeys(Fields... fields)
{
    std::vector<Key> keys(1);
    auto const vary = [&](auto field) {
        std::vector<Key> varied;
        auto const add = [&](Key key, auto const &... values) {
            ((key.*field = values, varied.push_back(key)), ...);
        };
        for (Key const & key : keys) {
            if constexpr (requires(Key k) { { k.*field } -> std::same_as<int &>; }) add(key, -1, 0, 2);
            else add(key, LCString(), LCString("AB"), LCString("ab"), LCString("abc"));
        }
        keys.swap(varied);
    };
    (vary(fields), ...);
    return keys;
}

/// The texts of keys that keep their class tell all their fields: what they say is what counts without case.
template <typename Key, typename... Fields> void ExpectCompares(Fields... fields)
{
    SCOPED_TRACE(typeid(Key).name());
    std::vector<Key> const keys = AllKeys<Key>(fields...);
    if constexpr (hashed<Key>) {
        ExpectTotalOrder(keys);
        std::unordered_set<Key> const set(keys.begin(), keys.end());
        EXPECT_EQ(set.size(), keys.size());
        for (Key const & key : keys) EXPECT_TRUE(set.contains(key)) << key.Str().str();
    }
    if constexpr (KeepsClass<Key>) {
        for (Key const & a : keys) {
            Key upper = a, lower = a;
            upper.ToUpperCase();
            lower.ToLowerCase();
            EXPECT_EQ(upper.Str() + lower.Str(), a.Str().UpperCase() + a.Str().LowerCase());
            for (Key const & b : keys) {
                bool const equal = a.Str().EqCI(b.Str());
                EXPECT_TRUE(a.EqCI(b) == equal && a.NEqCI(b) != equal) << a.Str().str() << " " << b.Str().str();
                if constexpr (HasFunctors<Key>) { EXPECT_EQ(typename Key::LCEqualCI()(a, b), equal); }
            }
        }
    }
}

TEST(Key, IsComparedAndOrderedByItsFields)
{
    using Rev = LCKeyIDRev; using KindRev = LCKeyKindIDRev; using TwoRev = LCKey2IDRev; using Index = LCKeyIDIndexRev;
    ExpectCompares<LCKeyID>(&LCKeyID::ID);
    ExpectCompares<LCKeyGUID>(&LCKeyGUID::GUID);
    ExpectCompares<LCKey2ID>(&LCKey2ID::FirstID, &LCKeyID::ID);
    ExpectCompares<LCKeyKindID>(&LCKeyKindID::Kind, &LCKeyID::ID);
    ExpectCompares<Rev>(&Rev::ID, &Rev::MajorRev, &Rev::MinorRev);
    ExpectCompares<TwoRev>(&TwoRev::FirstID, &TwoRev::ID, &TwoRev::MajorRev, &TwoRev::MinorRev);
    ExpectCompares<KindRev>(&KindRev::Kind, &KindRev::ID, &KindRev::MajorRev, &KindRev::MinorRev);
    ExpectCompares<Index>(&Index::ID, &Index::MajorRev, &Index::MinorRev, &Index::Index);
}

TEST(Key, IsSortedWithoutCaseByItsTextsAlone)
{
    auto const upper = [](auto const &... texts) { return std::tuple(texts.UpperCase()...); };
    auto const keys = AllKeys<LCKeyKindID>(&LCKeyKindID::Kind, &LCKeyKindID::ID);
    for (auto const & a : keys) {
        for (auto const & b : keys) {
            EXPECT_EQ(LCKeyKindID::LCCompareCI()(a, b), upper(a.Kind, a.ID) < upper(b.Kind, b.ID));
            EXPECT_EQ(LCKeyIDRev::LCCompareCI()({a.ID, 2, 0}, {b.ID, 1, 0}), upper(a.ID) < upper(b.ID));
        }
    }
}

TEST(Key, IsComparedByItsBaseWhereItSaysSo)
{
    LCKeyKindIDRev key("Kind", "Id", 1, 2);
    EXPECT_TRUE(key.EqCI(LCKeyKindIDRev("other", "ID", 1, 2)) && !key.EqCI(LCKeyKindIDRev("Kind", "Id", 1, 3)));
    key.ToUpperCase();
    EXPECT_EQ(key.Str() + " " + key.LowerCase().Str(), "Kind@ID@1.2 id@1.2");
    EXPECT_EQ(LCKeyIDIndexRev("a", 1, 2, 3), LCKeyIDIndexRev("a", 4, 5, 6));
    EXPECT_LT(LCKeyIDIndexRev("A", 4, 5, 6), LCKeyIDIndexRev("a", 1, 2, 3));
    EXPECT_LE(LCKeyGUIDRev(LCGUID("A"), 4, 5), LCKeyGUIDRev(LCGUID("A"), 1, 2));
}

/// As bits: EqCI, LCEqualCI, LCCompareCI, and LCCompareCI the other way round.
template <typename Pair> std::string Compared(Pair const & a, Pair const & b)
{
    typename Pair::LCCompareCI const less;
    typename Pair::LCEqualCI const equal;
    return std::bitset<4>(8 * a.EqCI(b) + 4 * equal(a, b) + 2 * less(a, b) + 1 * less(b, a)).to_string();
}

// Pairs whose IDs are equal and whose revisions differ are equivalent, whatever their second.
TEST(KeyPairs, CompareTheirSecondOnlyBehindEqualKeys)
{
    LCKeyIDRev const key("a", 1, 2), upper("A", 1, 2), revised("A", 1, 3), next("b", 0, 0);
    EXPECT_EQ(Compared<LCKeyIDRevPair>({key, key}, {upper, key}), "1100");
    EXPECT_EQ(Compared<LCKeyIDRevPair>({key, key}, {upper, upper}), "1001");
    EXPECT_EQ(Compared<LCKeyIDRevPair>({key, key}, {revised, next}), "0000");
    EXPECT_EQ(Compared<LCKeyIDRevBoolPair>({key, false}, {upper, false}), "1100");
    EXPECT_EQ(Compared<LCKeyIDRevBoolPair>({key, false}, {upper, true}), "0010");
    EXPECT_EQ(Compared<LCKeyIDRevBoolPair>({key, false}, {revised, true}), "0000");
    EXPECT_EQ(Compared<LCKeyIDRevBoolPair>({key, true}, {next, false}), "0010");
    EXPECT_EQ(Compared<LCKeyIDRevStringPair>({key, "x"}, {upper, "X"}), "1100");
    EXPECT_EQ(Compared<LCKeyIDRevStringPair>({key, "_"}, {upper, "x"}), "0001");
    EXPECT_EQ(Compared<LCKeyIDRevStringPair>({key, "_"}, {revised, "x"}), "0000");
    ExpectTotalOrder(std::vector<LCKeyIDRevStringPair>{{}, {upper, "b"}, {key, "A"}, {key, "a"}, {next, ""}});
    EXPECT_TRUE(LCKeyIDRevPair() == LCKeyIDRevPair({}, {}) && !LCKeyIDRevBoolPair().second);
}

}  // namespace
