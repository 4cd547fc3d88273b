#pragma once

#include <compare>
#include <concepts>
#include <cstddef>
#include <functional>
#include <list>

#include "foundation/Export.h"
#include "foundation/LCString.h"

/// A globally unique identifier, held and compared as text without braces.
///
/// Any text is taken as it is: the case of letters counts, and only new GUIDs are sure to have the form of 36
/// characters, "01234567-89AB-4CDE-8F01-23456789ABCD". The empty text is the empty GUID; one of zeros is not.
class QRTCL_API LCGUID {
public:
    /// A new random GUID, not an empty one: use `EmptyGUID` for no identity. Empty if the system gives no
    /// random bytes.
    LCGUID() : movText(NewText()) {}
    /// Takes off one "{" in front and one "}" at the end, each whether or not the other is there.
    LCGUID(LCString const & text);

    static LCGUID EmptyGUID() { return LCGUID(LCString()); }

    /// Not empty; nothing else is asked of the text.
    bool IsValid() const noexcept { return !movText.IsEmpty(); }
    /// The text, with `braces` as "{...}": the empty GUID is then "{}".
    template <std::same_as<bool> Bool> LCString AsStr(Bool braces) const
    {
        return braces ? WithBraces() : movText;
    }

    // Byte order of the texts. There is no <= and no >=.
    friend bool operator==(LCGUID const & a, LCGUID const & b) noexcept { return a.movText == b.movText; }
    friend bool operator<(LCGUID const & a, LCGUID const & b) noexcept { return a.movText < b.movText; }
    friend bool operator>(LCGUID const & a, LCGUID const & b) noexcept { return a.movText > b.movText; }

private:
    friend struct std::hash<LCGUID>;

    static LCString NewText();
    LCString WithBraces() const;

    LCString movText;
};

/// Hash of the text, consistent with `==`.
template <> struct std::hash<LCGUID> {
    std::size_t operator()(LCGUID const & guid) const noexcept { return std::hash<LCString>()(guid.movText); }
};

class QRTCL_API LCGUIDList : public std::list<LCGUID> {
public:
    LCGUIDList() = default;
};
