#pragma once

#include <vector>

#include "foundation/Export.h"
#include "foundation/LCString.h"

/// A growing array of texts with the text operations of `LCStringList`; what is not told here is told there.
///
/// All of the standard vector is part of it, and a position is its iterator. The array is copied, never
/// moved: what is moved from keeps its elements. Arguments may be the array itself or one of its elements.
class QRTCL_API LCStringVector : public std::vector<LCString> {
public:
    using position = iterator;

    LCStringVector() = default;
    /// `n` copies of `s`; `n` is not negative.
    explicit LCStringVector(int n, LCString const & s) : vector(static_cast<size_type>(n), s) {}
    LCStringVector(LCStringVector const &) = default;
    LCStringVector & operator=(LCStringVector const &) = default;
    virtual ~LCStringVector();

    virtual bool IsEmpty();
    virtual position GetHeadPosition();
    virtual position GetEndPosition();
    /// Moves first and reads then: from the head, the first call gives the second element.
    virtual LCString GetNext(position & p);
    virtual LCString GetPrev(position & p);
    virtual void AppendList(LCStringVector const & other);
    virtual void AppendToList(LCStringVector & dest) const;

    void ReInitList() { clear(); }
    void Reverse();

    bool Contains(LCString const & text) const;
    bool ContainsCI(LCString const & text) const;
    position Find(LCString const & text);
    position FindCI(LCString const & text);

    /// All elements with `sep` between each two; a zero byte joins without anything in between.
    LCString Str(char sep) const;
    /// Replaces the elements by the parts of `text`, each ended by `sep`. Empty parts count, but not what
    /// stands behind the last separator. An empty text gives one empty element.
    void DivideTextInLines(LCString const & text, char sep);
    LCString GetValue(LCString const & key) const;

    bool LoadFromFile(LCString const & path);
    bool SaveToFile(LCString const & path) const;

    /// Unlike on a list, no promise is given for the order of elements that differ only in case.
    void SortCI();
    void UniqueCI();
    void ToLowerCase();
    void ToUpperCase();
};
