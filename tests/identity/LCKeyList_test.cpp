#include "identity/LCKeyList.h"

#include "collections/LCStringList.h"
#include "collections/LCStringSet.h"
#include "collections/LCStringVector.h"
#include "identity/LCKeyContainers.h"

namespace {

static_assert(std::is_nothrow_move_constructible_v<LCKeyList> && std::is_nothrow_move_assignable_v<LCKeyList>);

/// Counts how many of its kind live.
struct CountedKey : LCKeyID {
    explicit CountedKey(LCString const & id) : LCKeyID(id) { ++living; }
    ~CountedKey() override { --living; }
    LCKey * Clone() const override { return ID == "unclonable" ? throw std::bad_alloc() : new CountedKey(ID); }

    static inline int living = 0;
};

TEST(KeyList, HasOneOwnerForEachKey)
{
    {
        auto keys = Make<LCKeyList>({new CountedKey("a"), new CountedKey("b"), nullptr});
        LCKeyList copy = keys;
        EXPECT_TRUE(copy.size() == 3 && copy.front()->Str() == "a" && !copy.back() && CountedKey::living == 4);
        LCKey const * const first = keys.front();
        keys = *&keys;
        LCKeyList moved = std::move(keys);
        EXPECT_TRUE(keys.empty() && moved.front() == first);
        copy = std::move(moved);
        EXPECT_TRUE(moved.empty() && copy.front() == first);
        EXPECT_EQ(CountedKey::living, 2) << "what the target held is deleted";

        auto const failing = Make<LCKeyList>({new CountedKey("c"), new CountedKey("unclonable")});
        EXPECT_THROW(copy = failing, std::bad_alloc);
        EXPECT_TRUE(copy.front() == first && CountedKey::living == 4) << "a failed copy changes nothing";
        copy.ClearWithContents();
        EXPECT_TRUE(copy.empty() && CountedKey::living == 2);
    }
    EXPECT_EQ(CountedKey::living, 0);
}

LCString Text(LCString const & text) { return text + " "; }
LCString Text(LCKey const & key) { return key.Str() + " "; }

TEST(KeyList, GivesThePartsOfItsKeysThatATargetHolds)
{
    auto keys = Make<LCKeyList>({new LCKeyKindIDRev("kind", "a", 1, 2), new LCKey2IDRev("first", "b", 3, 4),
                                 new LCKeyGUIDRev(LCGUID("G"), 5, 6), nullptr, new LCKeyKindID("kind", "a"),
                                 new LCKey2IDRev("first", "", 3, 4)});
    auto const filled = [&]<typename Target>(void (LCKeyList::*fill)(Target &)) {
        LCString all;
        Target target;
        for (int i = 0; i < 2; ++i) (keys.*fill)(target);
        for (auto const & element : target) all += Text(element);
        return all;
    };
    EXPECT_EQ(filled(&LCKeyList::ToStringList) + filled(&LCKeyList::ToStringVector), "a b a  a b a  ");
    EXPECT_EQ(filled(&LCKeyList::ToStringSet) + filled(&LCKeyList::ToKeyKindIDList), " a b kind@a ");
    EXPECT_EQ(filled(&LCKeyList::ToKeyIDRevList) + filled(&LCKeyList::ToKeyIDRevVector) +
              filled(&LCKeyList::ToKeyIDRevSet), "a@1.2 b@3.4 @-1.-1 a@1.2 b@3.4 @-1.-1 @-1.-1 a@1.2 b@3.4 ");
    EXPECT_EQ(filled(&LCKeyList::ToKeyGUIDList) + filled(&LCKeyList::ToKeyGUIDVector), "G G ");
}

}  // namespace
