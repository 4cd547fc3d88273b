#pragma once

#include <list>

#include "foundation/Export.h"

class LCKey;
class LCKeyGUIDList;
class LCKeyGUIDVector;
class LCKeyIDRevList;
class LCKeyIDRevSet;
class LCKeyIDRevVector;
class LCKeyKindIDList;
class LCStringList;
class LCStringSet;
class LCStringVector;

/// A list of keys of any class, which owns them: what is put in is deleted by the list. Null pointers are
/// allowed.
///
/// A copy holds clones (see `LCKey::Clone`), a move takes the keys over, and what the target held is deleted.
/// The operations of the standard list know nothing of that: what `erase`, `clear` and the like take out
/// belongs to the caller, and a key must not stand in two lists.
class QRTCL_API LCKeyList : public std::list<LCKey *> {
public:
    LCKeyList() = default;
    LCKeyList(LCKeyList const & other);
    LCKeyList(LCKeyList && other) noexcept : list(std::move(other)) {}
    LCKeyList & operator=(LCKeyList const & other);
    LCKeyList & operator=(LCKeyList && other) noexcept;
    virtual ~LCKeyList();

    // The targets are cleared first; keys of other classes are passed over, and all keys stay here.

    /// The IDs of the keys that are an LCKeyID: not `Str()`, so `FirstID` and `Kind` are left out.
    virtual void ToStringList(LCStringList & texts);
    virtual void ToStringVector(LCStringVector & texts);
    virtual void ToStringSet(LCStringSet & texts);
    /// The LCKeyIDRev in each key that is one, and the ID and revision of each LCKey2IDRev.
    virtual void ToKeyIDRevList(LCKeyIDRevList & keys);
    /// The keys that are an LCKeyKindID. An LCKeyKindIDRev is none.
    virtual void ToKeyKindIDList(LCKeyKindIDList & keys);
    virtual void ToKeyIDRevVector(LCKeyIDRevVector & keys);
    virtual void ToKeyIDRevSet(LCKeyIDRevSet & keys);
    /// The LCKeyGUID in each key that is one, without the revision of an LCKeyGUIDRev.
    virtual void ToKeyGUIDList(LCKeyGUIDList & keys);
    virtual void ToKeyGUIDVector(LCKeyGUIDVector & keys);

    /// Deletes all keys, one by one from the front, each when it has left the list.
    void ClearWithContents();
};
