#pragma once

#include <list>
#include <string>

#include "foundation/Export.h"
#include "foundation/LCString.h"

/// A doubly linked list of texts that is also a small text tool: it splits and joins lines, looks up lines of
/// the form name=value, reads and writes line files, and compares without regard to case.
///
/// All of the standard list is part of it, and a position is its iterator. The list is copied, never moved:
/// what is moved from keeps its elements. Arguments may be the list itself or one of its elements. If
/// the memory gives out in what is told here, the list and what it appends to are as they were; only a load
/// may have read a part.
class QRTCL_API LCStringList : public std::list<LCString> {
public:
    using position = iterator;

    LCStringList() = default;
    LCStringList(LCStringList const &) = default;
    LCStringList & operator=(LCStringList const &) = default;
    virtual ~LCStringList();

    virtual bool IsEmpty() const;
    virtual position GetHeadPosition();
    virtual position GetEndPosition();
    /// Moves first and reads then: from the head, the first call gives the second element. At the end, and
    /// there it stays, the text is empty; only the position tells that from an empty element.
    virtual LCString GetNext(position & p);
    /// Moves first and reads then. From the first element it goes to the end and gives the empty text; from
    /// the end it goes on with the last element.
    virtual LCString GetPrev(position & p);
    /// The position of the new first element.
    virtual position AddHead(LCString const & text);
    /// The position of the new last element.
    virtual position AddTail(LCString const & text);
    virtual void AppendList(LCStringList const & other);
    /// Behind what `dest` holds.
    virtual void AppendToList(std::list<std::string> & dest) const;
    virtual void AppendToList(LCStringList & dest) const;

    void ReInitList() { clear(); }
    void Reverse() { reverse(); }

    // Searching goes through the list from the front. What takes a list is true if every one of its elements
    // is contained, so for an empty list too; it costs the product of both sizes.

    bool Contains(LCString const & text) const;
    bool ContainsCI(LCString const & text) const;
    bool Contains(LCStringList const & other) const;
    bool ContainsCI(LCStringList const & other) const;
    /// The end position if there is none.
    position Find(LCString const & text);
    position FindCI(LCString const & text);

    /// All elements with `sep` between each two; a zero byte joins without anything in between.
    LCString Str(char sep) const;
    /// Replaces the elements by the parts of `text`, each ended by either byte. Empty parts count, but not
    /// what stands behind the last separator. An empty text gives one empty element.
    template <std::same_as<char> Char> void DivideTextInLines(LCString const & text, char sep1, Char sep2)
    {
        Divide(text, sep1, sep2, true);
    }
    /// The same with one separator; empty parts are dropped if `keepEmpty` is false.
    template <std::same_as<bool> Bool> void DivideTextInLines(LCString const & text, char sep, Bool keepEmpty)
    {
        Divide(text, sep, sep, keepEmpty);
    }
    /// What stands behind the first "=" of the first line whose part before it equals `key`, ignoring case;
    /// empty if there is none. Nothing is trimmed.
    LCString GetValue(LCString const & key) const;

    /// One element per line, empty ones too. False if the file can't be read; the list is then empty, or
    /// holds what could be read.
    bool LoadFromFile(LCString const & path);
    /// Writes each element and a line end. The result only says that the file could be opened.
    bool SaveToFile(LCString const & path) const;

    /// Sorts by the upper-case forms as bytes (`LCString::LCCompareCI`); equal elements keep their order.
    void SortCI();
    /// Removes what equals its predecessor, ignoring case. Only neighbours count: sort first.
    void UniqueCI();
    void ToLowerCase();
    void ToUpperCase();

private:
    void Divide(LCString const & text, char first, char second, bool keepEmpty);
};
