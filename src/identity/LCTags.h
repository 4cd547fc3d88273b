#pragma once

#include <map>

#include "collections/LCStringList.h"
#include "collections/LCStringSet.h"
#include "foundation/Export.h"
#include "foundation/LCString.h"

class LCStringPairSet;

/// A small store of tags that an object can carry: each tag is a value under a type, and a type holds any
/// number of values. The empty type stands for tags without one.
///
/// Types and values keep the case in which they were first added and are ordered by exact bytes; they are
/// found without regard to case. So every look-up goes through the types from the first, and through the
/// values of the one that matches: its cost is linear in the number of types plus the values of one type,
/// without allocation. What adds or tests many tags costs that for each of them; all else goes once through
/// the store.
///
/// Operations on several tags call `HasTag` and `AddTag`, so a derived class that overrides these changes
/// them too.
class QRTCL_API LCTags {
public:
    LCTags() = default;
    LCTags(LCTags const &) = default;
    LCTags(LCTags &&) noexcept = default;
    LCTags & operator=(LCTags const &) = default;
    LCTags & operator=(LCTags &&) noexcept = default;
    virtual ~LCTags();

    virtual void CloneFrom(LCTags const & other);
    virtual void Clear();

    virtual bool HasTags() const;
    /// Compares whole values; `ContainsTag` looks for a part of one.
    virtual bool HasTag(LCString const & type, LCString const & value);
    /// A value of the type contains `part`; an empty `part` is contained in every value that is not empty.
    virtual bool ContainsTag(LCString const & type, LCString const & part);
    /// Every pair is a type and its value; true if there are none.
    virtual bool HasAllTags(LCStringPairSet const & tags);

    // Adding. A tag that is there already, in whatever case, stays as it is, and nothing changes. Otherwise,
    // with `replace`, the type loses its other values; so of several values added to one type the last one
    // remains. The flag is a bool, and nothing that turns into one.

    virtual void AddTag(LCString const & type, LCString const & value, bool replace);
    template <typename NoFlag> void AddTag(LCString const & type, LCString const & value, NoFlag) = delete;
    /// A tag without a type.
    virtual void AddTag(LCString const & value, bool replace);
    template <typename NoFlag> void AddTag(LCString const & value, NoFlag) = delete;
    virtual void AddTags(LCTags const & other, bool replace);
    template <typename NoFlag> void AddTags(LCTags const & other, NoFlag) = delete;
    /// Pairs of a type and its value.
    virtual void AddTypeValues(LCStringPairSet const & tags, bool replace);
    template <typename NoFlag> void AddTypeValues(LCStringPairSet const & tags, NoFlag) = delete;

    /// False if there is no such tag. A type goes with its last value.
    virtual bool RemoveTag(LCString const & type, LCString const & value);
    /// The type with all its values; false if there is none.
    virtual bool RemoveTag(LCString const & type);

    // Reading adds to what the target holds.

    virtual void GetTypes(LCStringSet & types) const;
    virtual void GetValuesOfType(LCString const & type, LCStringSet & values) const;
    /// The first in exact order, not the first added; empty if there is none.
    virtual LCString GetFirstValueOfType(LCString const & type) const;
    virtual void GetTypeValues(std::map<LCString, LCStringSet> & tags) const;
    virtual void GetTypeValues(LCStringPairSet & tags) const;
    virtual void GetTypeValuesOfType(LCString const & type, LCStringPairSet & tags) const;

    /// All tags as "type" `typeSeparator` "value", in order, with `tagSeparator` between each two. A tag
    /// without a type is its value alone.
    virtual LCString Str(LCString const & typeSeparator, LCString const & tagSeparator);
    /// The same with one element for each tag.
    virtual LCStringList StrList(LCString const & typeSeparator);

private:
    /// No type is without values, and no two types, nor two values of one type, differ only in case.
    std::map<LCString, LCStringSet> movTypes;
};
