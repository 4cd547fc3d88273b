#include "identity/LCKey.h"

#include <memory>
#include <typeinfo>
#include <unordered_set>

#include "identity/LCKeyPairs.h"
#include "support/Support.h"

namespace {

// clang-format off
template <typename K> concept IgnoresCase = requires(K & k) {
    k.EqCI(k) && k.NEqCI(k); k.ToUpperCase(); k.ToLowerCase(); k.UpperCase().LowerCase(); };
template <typename K> concept KeepsClass = requires(K & k) { { k.UpperCase() } -> std::same_as<K>; };
template <typename K> concept NamesFunctors = requires { typename K::LCCompareCI; typename K::LCEqualCI; };
template <typename K> concept HasFunctors =
    std::predicate<typename K::LCCompareCI, K, K> && std::predicate<typename K::LCEqualCI, K, K>;
template <typename T> concept HasLessEqual = requires(T const & a) { a <= a; };

/// The place of a class in the tree, and what it has beside `Clone`, `Str` and `IsEmpty`.
template <typename K, typename Base, bool ignoresCase, bool keepsClass, bool namesFunctors, bool functors, bool hash>
constexpr bool Is = std::derived_from<K, Base> && std::has_virtual_destructor_v<K> &&
    std::is_nothrow_move_constructible_v<K> && IgnoresCase<K> == ignoresCase && KeepsClass<K> == keepsClass &&
    NamesFunctors<K> == namesFunctors && HasFunctors<K> == functors &&
    std::is_default_constructible_v<std::hash<K>> == hash;

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
// clang-format on

template <typename Key, typename... Fields> std::shared_ptr<LCKey> New(Fields const &... fields)
{
    return std::make_shared<Key>(fields...);
}

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
        {New<LCKeyIDIndexRev>("i", 1, 2, 3), "i@1.2@3", false},
    };
    for (auto const & row : rows) {
        LCKey const & original = *row.key;
        std::unique_ptr<LCKey> const clone(original.Clone());
        for (LCKey const & key : {std::cref(original), std::cref(*clone)}) {
            EXPECT_TRUE(typeid(key) == typeid(original)) << row.text;
            EXPECT_EQ(key.Str(), row.text);
            EXPECT_EQ(key.IsEmpty(), row.empty) << row.text;
        }
    }
}

// A copy takes the fields as they are; what is built anew from them is normalised again.
TEST(Key, IsNormalisedAgainByCloneAndUpperCase)
{
    LCKeyIDRev key("i", 3, 4);
    key.ID.clear();
    EXPECT_EQ(LCKeyIDRev(key).Str(), "@3.4");
    EXPECT_EQ(std::unique_ptr<LCKey>(key.Clone())->Str(), "@-1.-1");
    EXPECT_EQ(key.UpperCase().Str(), "@-1.-1");
    key.ToUpperCase();
    EXPECT_EQ(key.Str(), "@3.4");
    EXPECT_EQ(LCKey2IDRev("", "", 3, 4).LowerCase().Str(), "@@3.4");
}

/// Keys with all combinations of a few values, the first field varying least.
template <typename Key, typename Class, typename Field, typename... More>
std::vector<Key> AllKeys(Key key, Field Class::*field, More... more)
{
    std::vector<Field> values;
    if constexpr (std::same_as<Field, int>) {
        values = {-1, 0, 2};
    } else {
        values = {LCString(), LCString("AB"), LCString("ab"), LCString("abc")};
    }
    std::vector<Key> keys;
    for (Field const & value : values) {
        key.*field = value;
        if constexpr (sizeof...(More) == 0) {
            keys.push_back(key);
        } else {
            std::ranges::copy(AllKeys(key, more...), std::back_inserter(keys));
        }
    }
    return keys;
}

template <typename Key, typename... Fields> void ExpectOrder(Fields... fields)
{
    SCOPED_TRACE(typeid(Key).name());
    std::vector<Key> const keys = AllKeys(Key(), fields...);
    ExpectTotalOrder(keys);
    std::unordered_set<Key> const hashed(keys.begin(), keys.end());
    EXPECT_EQ(hashed.size(), keys.size());
    for (Key const & key : keys) EXPECT_TRUE(hashed.contains(key)) << key.Str().str();
}

TEST(Key, IsOrderedByItsFields)
{
    using KindRev = LCKeyKindIDRev;
    using TwoRev = LCKey2IDRev;
    ExpectOrder<LCKeyID>(&LCKeyID::ID);
    ExpectOrder<LCKeyGUID>(&LCKeyGUID::GUID);
    ExpectOrder<LCKey2ID>(&LCKey2ID::FirstID, &LCKeyID::ID);
    ExpectOrder<LCKeyKindID>(&LCKeyKindID::Kind, &LCKeyID::ID);
    ExpectOrder<LCKeyIDRev>(&LCKeyID::ID, &LCKeyIDRev::MajorRev, &LCKeyIDRev::MinorRev);
    ExpectOrder<TwoRev>(&TwoRev::FirstID, &TwoRev::ID, &TwoRev::MajorRev, &TwoRev::MinorRev);
    ExpectOrder<KindRev>(&KindRev::Kind, &KindRev::ID, &KindRev::MajorRev, &KindRev::MinorRev);
}

TEST(Key, WithoutOperatorsComparesThroughItsBase)
{
    EXPECT_EQ(LCKeyIDIndexRev("a", 1, 2, 3), LCKeyIDIndexRev("a", 4, 5, 6));
    EXPECT_LT(LCKeyIDIndexRev("A", 4, 5, 6), LCKeyIDIndexRev("a", 1, 2, 3));
    EXPECT_LE(LCKeyGUIDRev(LCGUID("A"), 4, 5), LCKeyGUIDRev(LCGUID("A"), 1, 2));
    EXPECT_NE(LCKeyGUIDRev(LCGUID("A"), 1, 2), LCKeyGUIDRev(LCGUID("a"), 1, 2));
}

/// The texts of these keys tell all their fields: what they say in upper case is what counts without case.
template <typename Key, typename... Fields> void ExpectCaseIgnored(Fields... fields)
{
    SCOPED_TRACE(typeid(Key).name());
    std::vector<Key> const keys = AllKeys(Key(), fields...);
    for (Key const & a : keys) {
        Key changed = a;
        changed.ToUpperCase();
        EXPECT_EQ(changed.Str(), a.Str().UpperCase());
        changed.ToLowerCase();
        EXPECT_EQ(changed.Str(), a.Str().LowerCase());
        for (Key const & b : keys) {
            bool const equal = a.Str().EqCI(b.Str());
            EXPECT_EQ(a.EqCI(b), equal) << a.Str().str() << " " << b.Str().str();
            EXPECT_EQ(a.NEqCI(b), !equal);
            if constexpr (HasFunctors<Key>) {
                EXPECT_EQ(typename Key::LCEqualCI()(a, b), equal);
            }
        }
    }
}

TEST(Key, IsComparedWithoutCase)
{
    using Index = LCKeyIDIndexRev;
    using TwoRev = LCKey2IDRev;
    ExpectCaseIgnored<LCKeyKindID>(&LCKeyKindID::Kind, &LCKeyID::ID);
    ExpectCaseIgnored<LCKeyIDRev>(&LCKeyID::ID, &LCKeyIDRev::MajorRev, &LCKeyIDRev::MinorRev);
    ExpectCaseIgnored<TwoRev>(&TwoRev::FirstID, &TwoRev::ID, &TwoRev::MajorRev, &TwoRev::MinorRev);
    ExpectCaseIgnored<Index>(&Index::ID, &Index::MajorRev, &Index::MinorRev, &Index::Index);
}

TEST(Key, IsSortedWithoutCaseByItsTextsAlone)
{
    auto const upper = [](auto const &... texts) { return std::tuple(texts.UpperCase()...); };
    for (auto const & a : AllKeys(LCKeyKindID(), &LCKeyKindID::Kind, &LCKeyID::ID)) {
        for (auto const & b : AllKeys(LCKeyKindID(), &LCKeyKindID::Kind, &LCKeyID::ID)) {
            EXPECT_EQ(LCKeyKindID::LCCompareCI()(a, b), upper(a.Kind, a.ID) < upper(b.Kind, b.ID));
            EXPECT_EQ(LCKeyIDRev::LCCompareCI()({a.ID, 2, 0}, {b.ID, 1, 0}), upper(a.ID) < upper(b.ID));
        }
    }
}

TEST(Key, OfAKindAndRevisionIgnoresItsKindWithoutCase)
{
    LCKeyKindIDRev key("Kind", "Id", 1, 2);
    EXPECT_TRUE(key.EqCI(LCKeyKindIDRev("other", "ID", 1, 2)));
    EXPECT_FALSE(key.EqCI(LCKeyKindIDRev("Kind", "Id", 1, 3)));
    key.ToUpperCase();
    EXPECT_EQ(key.Str(), "Kind@ID@1.2");
    EXPECT_EQ(key.LowerCase().Str(), "id@1.2");
}

template <typename Pair>
void ExpectPair(Pair const & a, Pair const & b, bool equalCI, bool functorEqual, int order)
{
    EXPECT_EQ(a.EqCI(b), equalCI);
    EXPECT_EQ(typename Pair::LCEqualCI()(a, b), functorEqual);
    EXPECT_EQ(typename Pair::LCCompareCI()(a, b), order < 0);
    EXPECT_EQ(typename Pair::LCCompareCI()(b, a), order > 0);
}

// Pairs whose IDs are equal and whose revisions differ are equivalent, whatever their second.
TEST(KeyPairs, CompareTheirSecondOnlyBehindEqualKeys)
{
    LCKeyIDRev const key("a", 1, 2), upper("A", 1, 2), revised("A", 1, 3), next("b", 0, 0);
    ExpectPair<LCKeyIDRevPair>({key, key}, {upper, key}, true, true, 0);
    ExpectPair<LCKeyIDRevPair>({key, key}, {upper, upper}, true, false, 1);
    ExpectPair<LCKeyIDRevPair>({key, key}, {revised, next}, false, false, 0);
    ExpectPair<LCKeyIDRevBoolPair>({key, false}, {upper, false}, true, true, 0);
    ExpectPair<LCKeyIDRevBoolPair>({key, false}, {upper, true}, false, false, -1);
    ExpectPair<LCKeyIDRevBoolPair>({key, false}, {revised, true}, false, false, 0);
    ExpectPair<LCKeyIDRevBoolPair>({key, true}, {next, false}, false, false, -1);
    ExpectPair<LCKeyIDRevStringPair>({key, "x"}, {upper, "X"}, true, true, 0);
    ExpectPair<LCKeyIDRevStringPair>({key, "_"}, {upper, "x"}, false, false, 1);
    ExpectPair<LCKeyIDRevStringPair>({key, "_"}, {revised, "x"}, false, false, 0);
    ExpectTotalOrder(std::vector<LCKeyIDRevStringPair>{{}, {upper, "b"}, {key, "A"}, {key, "a"}, {next, ""}});
    EXPECT_EQ(LCKeyIDRevPair(), LCKeyIDRevPair({}, {}));
    EXPECT_FALSE(LCKeyIDRevBoolPair().second);
}

}  // namespace
