#include "collections/LCStringVector.h"

#include <algorithm>
#include <iterator>

#include "collections/detail/Lines.h"
#include "collections/detail/SortCI.h"

namespace lines = qrtcl::lines;

LCStringVector::~LCStringVector() = default;

bool LCStringVector::IsEmpty() { return empty(); }
LCStringVector::position LCStringVector::GetHeadPosition() { return begin(); }
LCStringVector::position LCStringVector::GetEndPosition() { return end(); }
LCString LCStringVector::GetNext(position & p) { return lines::GetNext(*this, p); }
LCString LCStringVector::GetPrev(position & p) { return lines::GetPrev(*this, p); }

void LCStringVector::AppendList(LCStringVector const & other) { other.LCStringVector::AppendToList(*this); }
void LCStringVector::AppendToList(LCStringVector & dest) const
{
    std::vector<LCString> copies(*this);  // both may be one vector
    dest.insert(dest.end(), std::move_iterator(copies.begin()), std::move_iterator(copies.end()));
}
void LCStringVector::Reverse() { std::reverse(begin(), end()); }

bool LCStringVector::Contains(LCString const & text) const
{
    return std::find(begin(), end(), text) != end();
}
bool LCStringVector::ContainsCI(LCString const & text) const { return lines::ContainsCI(*this, text); }
LCStringVector::position LCStringVector::Find(LCString const & text)
{
    return std::find(begin(), end(), text);
}
LCStringVector::position LCStringVector::FindCI(LCString const & text) { return lines::FindCI(*this, text); }

LCString LCStringVector::Str(char sep) const { return lines::Join(*this, sep); }
void LCStringVector::DivideTextInLines(LCString const & text, char sep)
{
    lines::Redivide<std::vector<LCString>>(*this, text, sep, sep, true);
}
LCString LCStringVector::GetValue(LCString const & key) const { return lines::GetValue(*this, key); }

bool LCStringVector::LoadFromFile(LCString const & path) { return lines::Load(*this, path); }
bool LCStringVector::SaveToFile(LCString const & path) const { return lines::Save(*this, path); }

void LCStringVector::SortCI() { lines::SortCI(*this); }
void LCStringVector::UniqueCI() { erase(std::unique(begin(), end(), LCString::LCEqualCI()), end()); }
void LCStringVector::ToLowerCase()
{
    for (LCString & text : *this) text.ToLowerCase();
}
void LCStringVector::ToUpperCase()
{
    for (LCString & text : *this) text.ToUpperCase();
}
