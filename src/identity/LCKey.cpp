#include "identity/LCKey.h"

namespace {

// What all keys do in the same way, told by the fields of their class.

template <typename Key> LCKey * NewFromFields(Key const & key)
{
    return new Key(std::make_from_tuple<Key>(Key::Fields(key)));
}

bool IsEmptyField(LCString const & text) { return text.IsEmpty(); }
bool IsEmptyField(LCGUID const & guid) { return !guid.IsValid(); }
bool IsEmptyField(int) { return false; }

template <typename Key> bool HasEmptyField(Key const & key)
{
    return std::apply([](auto const &... field) { return (IsEmptyField(field) || ...); }, Key::Fields(key));
}

bool EqualFieldsCI(LCString const & a, LCString const & b) { return a.EqCI(b); }
bool EqualFieldsCI(int a, int b) { return a == b; }

template <typename Key> bool EqualCI(Key const & left, Key const & right)
{
    auto const fields = Key::Fields(right);
    return std::apply(
        [&](auto const &... a) {
            return std::apply([&](auto const &... b) { return (EqualFieldsCI(a, b) && ...); }, fields);
        },
        Key::Fields(left));
}

/// Applies `change` to the texts among the fields.
template <typename Key, typename Change> void ChangeTexts(Key & key, Change change)
{
    auto const changeText = [&]<typename Field>(Field & field) {
        if constexpr (std::is_same_v<Field, LCString>) change(field);
    };
    std::apply([&](auto &... field) { (changeText(field), ...); }, Key::Fields(key));
}

template <typename Key> void ToUpper(Key & key)
{
    ChangeTexts(key, [](LCString & text) { text.ToUpperCase(); });
}

template <typename Key> void ToLower(Key & key)
{
    ChangeTexts(key, [](LCString & text) { text.ToLowerCase(); });
}

template <typename Key> Key Upper(Key const & key)
{
    Key upper = std::make_from_tuple<Key>(Key::Fields(key));
    ToUpper(upper);
    return upper;
}

template <typename Key> Key Lower(Key const & key)
{
    Key lower = std::make_from_tuple<Key>(Key::Fields(key));
    ToLower(lower);
    return lower;
}

LCString RevisionText(int majorRev, int minorRev)
{
    return "@" + LCString(majorRev) + "." + LCString(minorRev);
}

constexpr int none = -1;

}  // namespace

LCKey::~LCKey() = default;

LCKey * LCKeyID::Clone() const { return NewFromFields(*this); }
LCString LCKeyID::Str() const { return ID; }
bool LCKeyID::IsEmpty() const { return HasEmptyField(*this); }

LCKey * LCKeyGUID::Clone() const { return NewFromFields(*this); }
LCString LCKeyGUID::Str() const { return GUID.AsStr(false); }
bool LCKeyGUID::IsEmpty() const { return HasEmptyField(*this); }

LCKeyGUIDRev::LCKeyGUIDRev(LCGUID const & guid, int majorRev, int minorRev)
    : LCKeyGUID(guid), MajorRev(guid.IsValid() ? majorRev : none), MinorRev(guid.IsValid() ? minorRev : none)
{}
LCKey * LCKeyGUIDRev::Clone() const { return NewFromFields(*this); }
LCString LCKeyGUIDRev::Str() const { return GUID.AsStr(false) + RevisionText(MajorRev, MinorRev); }
bool LCKeyGUIDRev::IsEmpty() const { return HasEmptyField(*this); }

LCKey * LCKey2ID::Clone() const { return NewFromFields(*this); }
LCString LCKey2ID::Str() const { return FirstID + "@" + ID; }
bool LCKey2ID::IsEmpty() const { return HasEmptyField(*this); }

LCKey * LCKeyKindID::Clone() const { return NewFromFields(*this); }
LCString LCKeyKindID::Str() const { return Kind + "@" + ID; }
bool LCKeyKindID::IsEmpty() const { return HasEmptyField(*this); }
bool LCKeyKindID::EqCI(LCKeyKindID const & other) const { return EqualCI(*this, other); }
bool LCKeyKindID::NEqCI(LCKeyKindID const & other) const { return !EqCI(other); }
LCKeyKindID LCKeyKindID::UpperCase() const { return Upper(*this); }
LCKeyKindID LCKeyKindID::LowerCase() const { return Lower(*this); }
void LCKeyKindID::ToUpperCase() { ToUpper(*this); }
void LCKeyKindID::ToLowerCase() { ToLower(*this); }

LCKeyIDRev::LCKeyIDRev(LCString const & id, int majorRev, int minorRev)
    : LCKeyID(id), MajorRev(id.IsEmpty() ? none : majorRev), MinorRev(id.IsEmpty() ? none : minorRev)
{}
LCKey * LCKeyIDRev::Clone() const { return NewFromFields(*this); }
LCString LCKeyIDRev::Str() const { return ID + RevisionText(MajorRev, MinorRev); }
bool LCKeyIDRev::IsEmpty() const { return HasEmptyField(*this); }
bool LCKeyIDRev::NEqCI(LCKeyIDRev const & other) const { return !EqCI(other); }
LCKeyIDRev LCKeyIDRev::UpperCase() const { return Upper(*this); }
LCKeyIDRev LCKeyIDRev::LowerCase() const { return Lower(*this); }
void LCKeyIDRev::ToUpperCase() { ToUpper(*this); }
void LCKeyIDRev::ToLowerCase() { ToLower(*this); }

LCKey2IDRev::LCKey2IDRev(LCString const & firstID, LCString const & id, int majorRev, int minorRev)
    : LCKeyID(id), FirstID(firstID), MajorRev(majorRev), MinorRev(minorRev)
{}
LCKey2IDRev::LCKey2IDRev(LCString const & firstID, LCKeyIDRev const & key)
    : LCKey2IDRev(firstID, key.ID, key.MajorRev, key.MinorRev)
{}
LCKey * LCKey2IDRev::Clone() const { return NewFromFields(*this); }
LCString LCKey2IDRev::Str() const { return FirstID + "@" + ID + RevisionText(MajorRev, MinorRev); }
bool LCKey2IDRev::IsEmpty() const { return HasEmptyField(*this); }
bool LCKey2IDRev::EqCI(LCKey2IDRev const & other) const { return EqualCI(*this, other); }
bool LCKey2IDRev::NEqCI(LCKey2IDRev const & other) const { return !EqCI(other); }
LCKey2IDRev LCKey2IDRev::UpperCase() const { return Upper(*this); }
LCKey2IDRev LCKey2IDRev::LowerCase() const { return Lower(*this); }
void LCKey2IDRev::ToUpperCase() { ToUpper(*this); }
void LCKey2IDRev::ToLowerCase() { ToLower(*this); }

LCKeyKindIDRev::LCKeyKindIDRev(LCString const & kind, LCString const & id, int majorRev, int minorRev)
    : LCKeyIDRev(id, majorRev, minorRev), Kind(kind)
{}
LCKeyKindIDRev::LCKeyKindIDRev(LCString const & kind, LCKeyIDRev const & key)
    : LCKeyKindIDRev(kind, key.ID, key.MajorRev, key.MinorRev)
{}
LCKey * LCKeyKindIDRev::Clone() const { return NewFromFields(*this); }
LCString LCKeyKindIDRev::Str() const { return Kind + "@" + LCKeyIDRev::Str(); }
bool LCKeyKindIDRev::IsEmpty() const { return HasEmptyField(*this); }

LCKeyIDIndexRev::LCKeyIDIndexRev(LCString const & id, int majorRev, int minorRev, int index)
    : LCKeyID(id), Index(id.IsEmpty() ? none : index), MajorRev(id.IsEmpty() ? none : majorRev),
      MinorRev(id.IsEmpty() ? none : minorRev)
{}
LCKey * LCKeyIDIndexRev::Clone() const { return NewFromFields(*this); }
LCString LCKeyIDIndexRev::Str() const
{
    return ID + RevisionText(MajorRev, MinorRev) + "@" + LCString(Index);
}
bool LCKeyIDIndexRev::IsEmpty() const { return HasEmptyField(*this); }
bool LCKeyIDIndexRev::EqCI(LCKeyIDIndexRev const & other) const { return EqualCI(*this, other); }
bool LCKeyIDIndexRev::NEqCI(LCKeyIDIndexRev const & other) const { return !EqCI(other); }
LCKeyIDIndexRev LCKeyIDIndexRev::UpperCase() const { return Upper(*this); }
LCKeyIDIndexRev LCKeyIDIndexRev::LowerCase() const { return Lower(*this); }
void LCKeyIDIndexRev::ToUpperCase() { ToUpper(*this); }
void LCKeyIDIndexRev::ToLowerCase() { ToLower(*this); }
