#include "identity/LCKeyList.h"

#include "collections/LCStringList.h"
#include "collections/LCStringSet.h"
#include "collections/LCStringVector.h"
#include "identity/LCKey.h"
#include "identity/LCKeyContainers.h"

namespace {

/// Calls `add` for each key that is a `Key` or derives from it.
template <typename Key, typename Add> void ForEach(LCKeyList const & keys, Add add)
{
    for (LCKey const * const key : keys) {
        if (auto const * const fitting = dynamic_cast<Key const *>(key)) add(*fitting);
    }
}

template <typename Texts> void CollectIDs(LCKeyList const & keys, Texts & texts)
{
    texts.clear();
    ForEach<LCKeyID>(keys, [&](LCKeyID const & key) { texts.insert(texts.end(), key.ID); });
}

/// The part of each key that the target holds.
template <typename Target> void CollectKeys(LCKeyList const & keys, Target & target)
{
    using Key = typename Target::value_type;
    target.clear();
    ForEach<Key>(keys, [&](Key const & key) { target.insert(target.end(), key); });
}

template <typename Target> void CollectKeyIDRevs(LCKeyList const & keys, Target & target)
{
    target.clear();
    ForEach<LCKeyID>(keys, [&](LCKeyID const & key) {
        if (auto const * const same = dynamic_cast<LCKeyIDRev const *>(&key)) {
            target.insert(target.end(), *same);
        } else if (auto const * const two = dynamic_cast<LCKey2IDRev const *>(&key)) {
            target.insert(target.end(), LCKeyIDRev(two->ID, two->MajorRev, two->MinorRev));
        }
    });
}

}  // namespace

// The delegation makes this a whole list before the first clone, so that the destructor runs if one fails.
LCKeyList::LCKeyList(LCKeyList const & other) : LCKeyList()
{
    for (LCKey const * const key : other) {
        push_back(nullptr);
        if (key != nullptr) back() = key->Clone();
    }
}

LCKeyList & LCKeyList::operator=(LCKeyList const & other)
{
    if (this != &other) *this = LCKeyList(other);
    return *this;
}

LCKeyList & LCKeyList::operator=(LCKeyList && other) noexcept
{
    LCKeyList taken(std::move(other));
    swap(taken);
    return *this;
}

LCKeyList::~LCKeyList() { ClearWithContents(); }

void LCKeyList::ToStringList(LCStringList & texts) { CollectIDs(*this, texts); }
void LCKeyList::ToStringVector(LCStringVector & texts) { CollectIDs(*this, texts); }
void LCKeyList::ToStringSet(LCStringSet & texts) { CollectIDs(*this, texts); }
void LCKeyList::ToKeyIDRevList(LCKeyIDRevList & keys) { CollectKeyIDRevs(*this, keys); }
void LCKeyList::ToKeyKindIDList(LCKeyKindIDList & keys) { CollectKeys(*this, keys); }
void LCKeyList::ToKeyIDRevVector(LCKeyIDRevVector & keys) { CollectKeyIDRevs(*this, keys); }
void LCKeyList::ToKeyIDRevSet(LCKeyIDRevSet & keys) { CollectKeyIDRevs(*this, keys); }
void LCKeyList::ToKeyGUIDList(LCKeyGUIDList & keys) { CollectKeys(*this, keys); }
void LCKeyList::ToKeyGUIDVector(LCKeyGUIDVector & keys) { CollectKeys(*this, keys); }

void LCKeyList::ClearWithContents()
{
    while (!empty()) {
        LCKey const * const key = front();
        pop_front();
        delete key;
    }
}
