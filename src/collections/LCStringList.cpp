#include "collections/LCStringList.h"

#include <algorithm>

#include "collections/detail/Lines.h"
#include "collections/detail/SortCI.h"

namespace lines = qrtcl::lines;

LCStringList::~LCStringList() = default;

bool LCStringList::IsEmpty() const { return empty(); }
LCStringList::position LCStringList::GetHeadPosition() { return begin(); }
LCStringList::position LCStringList::GetEndPosition() { return end(); }
LCString LCStringList::GetNext(position & p) { return lines::GetNext(*this, p); }
LCString LCStringList::GetPrev(position & p) { return lines::GetPrev(*this, p); }

LCStringList::position LCStringList::AddHead(LCString const & text) { return insert(begin(), text); }
LCStringList::position LCStringList::AddTail(LCString const & text) { return insert(end(), text); }

void LCStringList::AppendList(LCStringList const & other) { insert(end(), other.begin(), other.end()); }
void LCStringList::AppendToList(LCStringList & dest) const { dest.insert(dest.end(), begin(), end()); }
void LCStringList::AppendToList(std::list<std::string> & dest) const
{
    std::list<std::string> copies;
    for (LCString const & text : *this) copies.push_back(text.str());
    dest.splice(dest.end(), copies);
}

bool LCStringList::Contains(LCString const & text) const { return std::find(begin(), end(), text) != end(); }
bool LCStringList::ContainsCI(LCString const & text) const { return lines::ContainsCI(*this, text); }
bool LCStringList::Contains(LCStringList const & other) const { return lines::ContainsAll(*this, other); }
bool LCStringList::ContainsCI(LCStringList const & other) const { return lines::ContainsAllCI(*this, other); }

LCStringList::position LCStringList::Find(LCString const & text) { return std::find(begin(), end(), text); }
LCStringList::position LCStringList::FindCI(LCString const & text) { return lines::FindCI(*this, text); }

LCString LCStringList::Str(char sep) const { return lines::Join(*this, sep); }
void LCStringList::Divide(LCString const & text, char first, char second, bool keepEmpty)
{
    lines::Redivide<std::list<LCString>>(*this, text, first, second, keepEmpty);
}
LCString LCStringList::GetValue(LCString const & key) const { return lines::GetValue(*this, key); }

bool LCStringList::LoadFromFile(LCString const & path) { return lines::Load(*this, path); }
bool LCStringList::SaveToFile(LCString const & path) const { return lines::Save(*this, path); }

void LCStringList::SortCI() { lines::SortCI(*this); }
void LCStringList::UniqueCI() { unique(LCString::LCEqualCI()); }
void LCStringList::ToLowerCase()
{
    for (LCString & text : *this) text.ToLowerCase();
}
void LCStringList::ToUpperCase()
{
    for (LCString & text : *this) text.ToUpperCase();
}
