#pragma once

#include <set>

#include "foundation/Export.h"
#include "foundation/LCString.h"

class LCStringList;
class LCStringVector;

/// An ordered set of texts, in the byte order of `LCString`, so that case counts.
///
/// All of the standard set is part of it. The set is copied, never moved: what is moved from keeps its
/// elements.
class QRTCL_API LCStringSet : public std::set<LCString> {
public:
    LCStringSet() = default;
    LCStringSet(LCStringSet const &) = default;
    LCStringSet & operator=(LCStringSet const &) = default;
    virtual ~LCStringSet();

    // Exact searches use the order; what ignores case walks the set from its first element. What takes a
    // collection is true if every one of its elements is contained, so for an empty one too.

    bool Contains(LCString const & text) const;
    bool ContainsCI(LCString const & text) const;
    bool Contains(LCStringSet const & other) const;
    bool Contains(LCStringList const & other) const;
    bool Contains(LCStringVector const & other) const;
    bool ContainsCI(LCStringSet const & other) const;
    bool ContainsCI(LCStringList const & other) const;
    bool ContainsCI(LCStringVector const & other) const;
    iterator Find(LCString const & text) const;
    /// The first in the order of the set, or the end.
    iterator FindCI(LCString const & text) const;

    /// All elements in their order, with `sep` between each two; a zero byte joins without anything in
    /// between.
    LCString Str(char sep) const;

    /// One element per line; lines that occur again are dropped. False if the file can't be read; the set is
    /// then empty, or holds what could be read.
    bool LoadFromFile(LCString const & path);
    /// Writes each element and a line end. The result only says that the file could be opened.
    bool SaveToFile(LCString const & path) const;

    // Elements that become equal merge, so the set can shrink.

    void ToLowerCase();
    void ToUpperCase();
};
