#pragma once

#include <compare>
#include <cstddef>
#include <functional>
#include <tuple>
#include <type_traits>

#include "foundation/Export.h"
#include "foundation/LCString.h"
#include "identity/LCGUID.h"

/// The root of the keys, by which objects of the applications are named.
///
/// A key is a plain value with public fields. Each class has its fields in one order: that of its
/// constructor, of its tuple `Fields`, and of its operators. The operators compare exact bytes and signed
/// numbers; they are those of a named class, and a class without its own compares through its base, by the
/// fields of the base alone.
///
/// A revision of -1, -1 is no revision. "Normalised" below means that the constructor stores it, whatever it
/// is given, if the ID or the GUID is empty. Copies take all fields as they are.
class QRTCL_API LCKey {
public:
    LCKey() = default;
    LCKey(LCKey const &) = default;
    LCKey(LCKey &&) noexcept = default;
    LCKey & operator=(LCKey const &) = default;
    LCKey & operator=(LCKey &&) noexcept = default;
    virtual ~LCKey();

    /// A new key of the same class, which the caller deletes; built by the constructor from the fields, so
    /// normalised where that is.
    virtual LCKey * Clone() const = 0;
    /// For people: nothing is escaped, and no key is read back from it.
    virtual LCString Str() const = 0;
    /// A text or the GUID among the fields is empty; of several texts, one is enough. Numbers don't count.
    virtual bool IsEmpty() const = 0;
};

/// An ID.
class QRTCL_API LCKeyID : public LCKey {
public:
    LCKeyID() = default;
    LCKeyID(LCString const & id) : ID(id) {}

    LCKey * Clone() const override;
    /// "ID"
    LCString Str() const override;
    bool IsEmpty() const override;

    /// References to the fields of `self`, a key of this class, the most significant first.
    static auto Fields(auto & self) { return std::tie(self.ID); }
    friend bool operator==(LCKeyID const & a, LCKeyID const & b) noexcept { return Fields(a) == Fields(b); }
    friend auto operator<=>(LCKeyID const & a, LCKeyID const & b) noexcept { return Fields(a) <=> Fields(b); }

    LCString ID;
};

/// A GUID.
class QRTCL_API LCKeyGUID : public LCKey {
public:
    /// Empty: unlike a default LCGUID, this generates nothing.
    LCKeyGUID() = default;
    LCKeyGUID(LCGUID const & guid) : GUID(guid) {}

    LCKey * Clone() const override;
    /// "GUID", without braces
    LCString Str() const override;
    bool IsEmpty() const override;

    static auto Fields(auto & self) { return std::tie(self.GUID); }
    friend bool operator==(LCKeyGUID const & a, LCKeyGUID const & b) noexcept
    {
        return Fields(a) == Fields(b);
    }
    friend auto operator<=>(LCKeyGUID const & a, LCKeyGUID const & b) noexcept
    {
        return Fields(a) <=> Fields(b);
    }

    LCGUID GUID = LCGUID::EmptyGUID();
};

/// A GUID and a revision. Compares by `GUID` alone, as an LCKeyGUID.
class QRTCL_API LCKeyGUIDRev : public LCKeyGUID {
public:
    LCKeyGUIDRev() = default;
    /// Normalised.
    LCKeyGUIDRev(LCGUID const & guid, int majorRev, int minorRev);

    LCKey * Clone() const override;
    /// "GUID@MajorRev.MinorRev"
    LCString Str() const override;
    bool IsEmpty() const override;

    static auto Fields(auto & self) { return std::tie(self.GUID, self.MajorRev, self.MinorRev); }

    int MajorRev = -1;
    int MinorRev = -1;
};

/// An ID within another one, which is compared first.
class QRTCL_API LCKey2ID : public LCKeyID {
public:
    LCKey2ID() = default;
    LCKey2ID(LCString const & firstID, LCString const & id) : LCKeyID(id), FirstID(firstID) {}

    LCKey * Clone() const override;
    /// "FirstID@ID"
    LCString Str() const override;
    bool IsEmpty() const override;

    static auto Fields(auto & self) { return std::tie(self.FirstID, self.ID); }
    friend bool operator==(LCKey2ID const & a, LCKey2ID const & b) noexcept { return Fields(a) == Fields(b); }
    friend auto operator<=>(LCKey2ID const & a, LCKey2ID const & b) noexcept
    {
        return Fields(a) <=> Fields(b);
    }

    LCString FirstID;
};

/// An ID of a kind, which is compared first.
class QRTCL_API LCKeyKindID : public LCKeyID {
public:
    /// The order of the upper-case forms, by `Kind`, then by `ID`.
    struct LCCompareCI {
        bool operator()(LCKeyKindID const & a, LCKeyKindID const & b) const noexcept
        {
            LCString::LCCompareCI const less;
            return a.Kind.EqCI(b.Kind) ? less(a.ID, b.ID) : less(a.Kind, b.Kind);
        }
    };
    struct LCEqualCI {
        bool operator()(LCKeyKindID const & a, LCKeyKindID const & b) const { return a.LCKeyKindID::EqCI(b); }
    };

    LCKeyKindID() = default;
    LCKeyKindID(LCString const & kind, LCString const & id) : LCKeyID(id), Kind(kind) {}

    LCKey * Clone() const override;
    /// "Kind@ID"
    LCString Str() const override;
    bool IsEmpty() const override;

    virtual bool EqCI(LCKeyKindID const & other) const;
    virtual bool NEqCI(LCKeyKindID const & other) const;
    virtual LCKeyKindID UpperCase() const;
    virtual LCKeyKindID LowerCase() const;
    virtual void ToUpperCase();
    virtual void ToLowerCase();

    static auto Fields(auto & self) { return std::tie(self.Kind, self.ID); }
    friend bool operator==(LCKeyKindID const & a, LCKeyKindID const & b) noexcept
    {
        return Fields(a) == Fields(b);
    }
    friend auto operator<=>(LCKeyKindID const & a, LCKeyKindID const & b) noexcept
    {
        return Fields(a) <=> Fields(b);
    }

    LCString Kind;
};

/// The most used key: an ID and a revision.
class QRTCL_API LCKeyIDRev : public LCKeyID {
public:
    /// The order of the upper-case forms of `ID` alone: keys that differ in the revision are equivalent.
    struct LCCompareCI {
        bool operator()(LCKeyIDRev const & a, LCKeyIDRev const & b) const noexcept
        {
            return LCString::LCCompareCI()(a.ID, b.ID);
        }
    };
    /// Unlike LCCompareCI, looks at the revision too.
    struct LCEqualCI {
        bool operator()(LCKeyIDRev const & a, LCKeyIDRev const & b) const { return a.LCKeyIDRev::EqCI(b); }
    };

    LCKeyIDRev() = default;
    /// Normalised.
    LCKeyIDRev(LCString const & id, int majorRev, int minorRev);

    LCKey * Clone() const override;
    /// "ID@MajorRev.MinorRev"
    LCString Str() const override;
    bool IsEmpty() const override;

    // Without regard to the case of `ID`; the numbers count. `UpperCase` and `LowerCase` build a new key by
    // the constructor from the fields.

    // Inline, since long lists are scanned by it.
    virtual bool EqCI(LCKeyIDRev const & other) const
    {
        return ID.EqCI(other.ID) && MajorRev == other.MajorRev && MinorRev == other.MinorRev;
    }
    virtual bool NEqCI(LCKeyIDRev const & other) const;
    virtual LCKeyIDRev UpperCase() const;
    virtual LCKeyIDRev LowerCase() const;
    virtual void ToUpperCase();
    virtual void ToLowerCase();

    static auto Fields(auto & self) { return std::tie(self.ID, self.MajorRev, self.MinorRev); }
    friend bool operator==(LCKeyIDRev const & a, LCKeyIDRev const & b) noexcept
    {
        return Fields(a) == Fields(b);
    }
    friend auto operator<=>(LCKeyIDRev const & a, LCKeyIDRev const & b) noexcept
    {
        return Fields(a) <=> Fields(b);
    }

    int MajorRev = -1;
    int MinorRev = -1;
};

/// An ID within another one, and a revision.
class QRTCL_API LCKey2IDRev : public LCKeyID {
public:
    // They name the classes that the other keys have, and compare nothing.
    struct LCCompareCI {};
    struct LCEqualCI {};

    LCKey2IDRev() = default;
    /// Not normalised, unlike those of the other keys with a revision.
    LCKey2IDRev(LCString const & firstID, LCString const & id, int majorRev, int minorRev);
    LCKey2IDRev(LCString const & firstID, LCKeyIDRev const & key);

    LCKey * Clone() const override;
    /// "FirstID@ID@MajorRev.MinorRev"
    LCString Str() const override;
    bool IsEmpty() const override;

    virtual bool EqCI(LCKey2IDRev const & other) const;
    virtual bool NEqCI(LCKey2IDRev const & other) const;
    virtual LCKey2IDRev UpperCase() const;
    virtual LCKey2IDRev LowerCase() const;
    virtual void ToUpperCase();
    virtual void ToLowerCase();

    static auto Fields(auto & self) { return std::tie(self.FirstID, self.ID, self.MajorRev, self.MinorRev); }
    friend bool operator==(LCKey2IDRev const & a, LCKey2IDRev const & b) noexcept
    {
        return Fields(a) == Fields(b);
    }
    friend auto operator<=>(LCKey2IDRev const & a, LCKey2IDRev const & b) noexcept
    {
        return Fields(a) <=> Fields(b);
    }

    LCString FirstID;
    int MajorRev = -1;
    int MinorRev = -1;
};

/// An ID of a kind, and a revision. What an LCKeyIDRev does without regard to case, this one inherits: `Kind`
/// plays no part in it and keeps its case, and `UpperCase` and `LowerCase` give a plain LCKeyIDRev.
class QRTCL_API LCKeyKindIDRev : public LCKeyIDRev {
public:
    LCKeyKindIDRev() = default;
    /// Normalised by `id` alone.
    LCKeyKindIDRev(LCString const & kind, LCString const & id, int majorRev, int minorRev);
    LCKeyKindIDRev(LCString const & kind, LCKeyIDRev const & key);

    LCKey * Clone() const override;
    /// "Kind@ID@MajorRev.MinorRev"
    LCString Str() const override;
    bool IsEmpty() const override;

    static auto Fields(auto & self) { return std::tie(self.Kind, self.ID, self.MajorRev, self.MinorRev); }
    friend bool operator==(LCKeyKindIDRev const & a, LCKeyKindIDRev const & b) noexcept
    {
        return Fields(a) == Fields(b);
    }
    friend auto operator<=>(LCKeyKindIDRev const & a, LCKeyKindIDRev const & b) noexcept
    {
        return Fields(a) <=> Fields(b);
    }

    LCString Kind;
};

/// An ID, a revision and an index. Compares by `ID` alone, as an LCKeyID.
class QRTCL_API LCKeyIDIndexRev : public LCKeyID {
public:
    // They name the classes that the other keys have, and compare nothing.
    struct LCCompareCI {};
    struct LCEqualCI {};

    LCKeyIDIndexRev() = default;
    /// `index` comes last. Normalised, all three numbers.
    LCKeyIDIndexRev(LCString const & id, int majorRev, int minorRev, int index);

    LCKey * Clone() const override;
    /// "ID@MajorRev.MinorRev@Index"
    LCString Str() const override;
    bool IsEmpty() const override;

    virtual bool EqCI(LCKeyIDIndexRev const & other) const;
    virtual bool NEqCI(LCKeyIDIndexRev const & other) const;
    virtual LCKeyIDIndexRev UpperCase() const;
    virtual LCKeyIDIndexRev LowerCase() const;
    virtual void ToUpperCase();
    virtual void ToLowerCase();

    static auto Fields(auto & self) { return std::tie(self.ID, self.MajorRev, self.MinorRev, self.Index); }

    int Index = -1;
    int MajorRev = -1;
    int MinorRev = -1;
};

namespace qrtcl {

/// Hash over the fields of a key, consistent with its `==`.
template <typename Key> struct KeyHash {
    std::size_t operator()(Key const & key) const noexcept
    {
        std::size_t hash = 0;
        auto const add = [&hash](auto const & field) {
            hash = hash * 31 + std::hash<std::remove_cvref_t<decltype(field)>>()(field);
        };
        std::apply([&](auto const &... field) { (add(field), ...); }, Key::Fields(key));
        return hash;
    }
};

}  // namespace qrtcl

// For the keys that have operators of their own.
template <> struct std::hash<LCKeyID> : qrtcl::KeyHash<LCKeyID> {};
template <> struct std::hash<LCKeyGUID> : qrtcl::KeyHash<LCKeyGUID> {};
template <> struct std::hash<LCKey2ID> : qrtcl::KeyHash<LCKey2ID> {};
template <> struct std::hash<LCKeyKindID> : qrtcl::KeyHash<LCKeyKindID> {};
template <> struct std::hash<LCKeyIDRev> : qrtcl::KeyHash<LCKeyIDRev> {};
template <> struct std::hash<LCKey2IDRev> : qrtcl::KeyHash<LCKey2IDRev> {};
template <> struct std::hash<LCKeyKindIDRev> : qrtcl::KeyHash<LCKeyKindIDRev> {};
