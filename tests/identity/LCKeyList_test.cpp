#include "identity/LCKeyList.h"

#include "collections/LCStringList.h"
#include "collections/LCStringSet.h"
#include "collections/LCStringVector.h"
#include "identity/LCKeyContainers.h"
#include "support/Support.h"

namespace {

static_assert(std::is_nothrow_move_constructible_v<LCKeyList> &&
              std::is_nothrow_move_assignable_v<LCKeyList>);
static_assert(!std::is_constructible_v<LCKeyList, std::initializer_list<LCKey *>>);

/// Counts how many of its kind live.
class CountedKey : public LCKeyID {
public:
    explicit CountedKey(LCString const & id) : LCKeyID(id) { ++living; }
    CountedKey(CountedKey const &) = delete;
    ~CountedKey() override { --living; }
    LCKey * Clone() const override
    {
        if (ID == "unclonable") throw std::bad_alloc();
        return new CountedKey(ID);
    }

    static inline int living = 0;
};

LCKeyList Counted(std::initializer_list<char const *> ids)
{
    LCKeyList keys;
    for (char const * const id : ids) keys.push_back(new CountedKey(id));
    return keys;
}

TEST(KeyList, HasOneOwnerForEachKey)
{
    {
        LCKeyList keys = Counted({"a", "b"});
        keys.push_back(nullptr);
        LCKeyList copy = keys;
        EXPECT_EQ(CountedKey::living, 4);
        EXPECT_EQ(copy.size(), 3u);
        EXPECT_TRUE(copy.front() != keys.front() && copy.front()->Str() == "a" && copy.back() == nullptr);

        LCKey const * const first = keys.front();
        keys = *&keys;
        EXPECT_EQ(keys.front(), first);
        LCKeyList moved = std::move(keys);
        EXPECT_TRUE(keys.empty() && moved.front() == first);
        copy = std::move(moved);
        EXPECT_TRUE(moved.empty() && copy.front() == first);
        EXPECT_EQ(CountedKey::living, 2) << "what the target held is deleted";
        copy = Counted({"c"});
        EXPECT_EQ(CountedKey::living, 1);

        LCKeyList const failing = Counted({"d", "unclonable"});
        EXPECT_THROW(copy = failing, std::bad_alloc);
        EXPECT_EQ(copy.front()->Str(), "c") << "and a failed copy changes nothing";
        EXPECT_EQ(CountedKey::living, 3);
        copy.ClearWithContents();
        EXPECT_TRUE(copy.empty());
    }
    EXPECT_EQ(CountedKey::living, 0);
}

TEST(KeyList, GivesThePartsOfItsKeysThatATargetHolds)
{
    LCKeyList keys;
    keys.push_back(new LCKeyKindIDRev("kind", "a", 1, 2));
    keys.push_back(new LCKey2IDRev("first", "b", 3, 4));
    keys.push_back(new LCKeyGUIDRev(LCGUID("G"), 5, 6));
    keys.push_back(nullptr);
    keys.push_back(new LCKeyKindID("kind", "a"));
    keys.push_back(new LCKey2IDRev("first", "", 3, 4));

    LCStringList texts;
    LCStringVector textVector(1, "old");
    LCStringSet textSet;
    keys.ToStringList(texts);
    keys.ToStringVector(textVector);
    keys.ToStringSet(textSet);
    EXPECT_EQ(texts.Str(' ') + "|" + textVector.Str(' ') + "|" + textSet.Str(' '), "a b a |a b a | a b");

    auto const all = [](auto const & held) {
        LCString text;
        for (LCKey const & key : held) text += key.Str() + " ";
        return text;
    };
    LCKeyIDRevList revs;
    revs.push_back({"old", 0, 0});
    LCKeyIDRevVector revVector;
    LCKeyIDRevSet revSet;
    keys.ToKeyIDRevList(revs);
    keys.ToKeyIDRevVector(revVector);
    keys.ToKeyIDRevSet(revSet);
    EXPECT_EQ(all(revs) + "|" + all(revVector) + "|" + all(revSet),
              "a@1.2 b@3.4 @-1.-1 |a@1.2 b@3.4 @-1.-1 |@-1.-1 a@1.2 b@3.4 ");

    LCKeyKindIDList kinds;
    LCKeyGUIDList guids;
    LCKeyGUIDVector guidVector;
    keys.ToKeyKindIDList(kinds);
    keys.ToKeyGUIDList(guids);
    keys.ToKeyGUIDVector(guidVector);
    EXPECT_EQ(all(kinds) + "|" + all(guids) + "|" + all(guidVector), "kind@a |G |G ");
}

}  // namespace
