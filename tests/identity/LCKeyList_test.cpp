#include "identity/LCKeyList.h"

#include "collections/LCStringList.h"
#include "collections/LCStringSet.h"
#include "collections/LCStringVector.h"
#include "identity/LCKeyContainers.h"
#include "support/Support.h"

namespace {

static_assert(std::is_nothrow_move_constructible_v<LCKeyList> && std::is_nothrow_move_assignable_v<LCKeyList>);
static_assert(!std::is_constructible_v<LCKeyList, std::initializer_list<LCKey *>>);

/// Counts how many of its kind live.
struct CountedKey : LCKeyID {
    explicit CountedKey(LCString const & id) : LCKeyID(id) { ++living; }
    CountedKey(CountedKey const &) = delete;
    ~CountedKey() override { --living; }
    LCKey * Clone() const override { return ID == "unclonable" ? throw std::bad_alloc() : new CountedKey(ID); }

    static inline int living = 0;
};

TEST(KeyList, HasOneOwnerForEachKey)
{
    {
        auto keys = Make<LCKeyList>({new CountedKey("a"), new CountedKey("b"), nullptr});
        LCKeyList copy = keys;
        EXPECT_EQ(CountedKey::living, 4);
        EXPECT_TRUE(copy.size() == 3 && copy.front() != keys.front() && copy.front()->Str() == "a" && !copy.back());

        LCKey const * const first = keys.front();
        keys = *&keys;
        EXPECT_EQ(keys.front(), first);
        LCKeyList moved = std::move(keys);
        EXPECT_TRUE(keys.empty() && moved.front() == first);
        copy = std::move(moved);
        EXPECT_TRUE(moved.empty() && copy.front() == first);
        EXPECT_EQ(CountedKey::living, 2) << "what the target held is deleted";

        auto const failing = Make<LCKeyList>({new CountedKey("c"), new CountedKey("unclonable")});
        EXPECT_THROW(copy = failing, std::bad_alloc);
        EXPECT_EQ(copy.front(), first) << "a failed copy changes nothing";
        EXPECT_EQ(CountedKey::living, 4);
        copy.ClearWithContents();
        EXPECT_TRUE(copy.empty() && CountedKey::living == 2);
    }
    EXPECT_EQ(CountedKey::living, 0);
}

LCString Text(LCString const & text) { return text; }
LCString Text(LCKey const & key) { return key.Str(); }

/// What a target holds that was filled twice.
template <typename Target> LCString Filled(LCKeyList & keys, void (LCKeyList::*fill)(Target &))
{
    Target target;
    (keys.*fill)(target);
    (keys.*fill)(target);
    LCString all;
    for (auto const & element : target) all += Text(element) + " ";
    return all;
}

TEST(KeyList, GivesThePartsOfItsKeysThatATargetHolds)
{
    auto keys = Make<LCKeyList>({new LCKeyKindIDRev("kind", "a", 1, 2), new LCKey2IDRev("first", "b", 3, 4),
                                 new LCKeyGUIDRev(LCGUID("G"), 5, 6), nullptr, new LCKeyKindID("kind", "a"),
                                 new LCKey2IDRev("first", "", 3, 4)});
    EXPECT_EQ(Filled(keys, &LCKeyList::ToStringList), "a b a  ");
    EXPECT_EQ(Filled(keys, &LCKeyList::ToStringVector), "a b a  ");
    EXPECT_EQ(Filled(keys, &LCKeyList::ToStringSet), " a b ");
    EXPECT_EQ(Filled(keys, &LCKeyList::ToKeyIDRevList), "a@1.2 b@3.4 @-1.-1 ");
    EXPECT_EQ(Filled(keys, &LCKeyList::ToKeyIDRevVector), "a@1.2 b@3.4 @-1.-1 ");
    EXPECT_EQ(Filled(keys, &LCKeyList::ToKeyIDRevSet), "@-1.-1 a@1.2 b@3.4 ");
    EXPECT_EQ(Filled(keys, &LCKeyList::ToKeyKindIDList), "kind@a ");
    EXPECT_EQ(Filled(keys, &LCKeyList::ToKeyGUIDList), "G ");
    EXPECT_EQ(Filled(keys, &LCKeyList::ToKeyGUIDVector), "G ");
}

}  // namespace
