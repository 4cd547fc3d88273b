#include "identity/LCTags.h"

#include <algorithm>

#include "collections/LCPairLists.h"

namespace {

auto FindType(auto & types, LCString const & type)
{
    return std::find_if(types.begin(), types.end(),
                        [&](auto const & entry) { return entry.first.EqCI(type); });
}

}  // namespace

LCTags::~LCTags() = default;

void LCTags::CloneFrom(LCTags const & other) { movTypes = other.movTypes; }
void LCTags::Clear() { movTypes.clear(); }

bool LCTags::HasTags() const { return !movTypes.empty(); }

bool LCTags::HasTag(LCString const & type, LCString const & value)
{
    auto const found = FindType(movTypes, type);
    return found != movTypes.end() && found->second.ContainsCI(value);
}

bool LCTags::ContainsTag(LCString const & type, LCString const & part)
{
    auto const found = FindType(movTypes, type);
    return found != movTypes.end() &&
           std::any_of(found->second.begin(), found->second.end(),
                       [&](LCString const & value) { return value.ContainsCI(part); });
}

bool LCTags::HasAllTags(LCStringPairSet const & tags)
{
    return std::all_of(tags.begin(), tags.end(),
                       [&](auto const & tag) { return HasTag(tag.first, tag.second); });
}

void LCTags::AddTag(LCString const & type, LCString const & value, bool replace)
{
    if (HasTag(type, value)) return;
    auto const found = FindType(movTypes, type);
    if (found == movTypes.end()) {
        LCStringSet values;
        values.insert(value);
        movTypes[type].swap(values);  // no type is ever without values, also if the memory gives out here
        return;
    }
    LCStringSet & values = found->second;
    auto const added = values.insert(value).first;
    if (replace) {
        values.erase(values.begin(), added);
        values.erase(std::next(added), values.end());
    }
}

void LCTags::AddTag(LCString const & value, bool replace) { AddTag(LCString(), value, replace); }

void LCTags::AddTags(LCTags const & other, bool replace)
{
    for (auto const & [type, values] : other.movTypes) {
        for (LCString const & value : values) AddTag(type, value, replace);
    }
}

void LCTags::AddTypeValues(LCStringPairSet const & tags, bool replace)
{
    for (auto const & [type, value] : tags) AddTag(type, value, replace);
}

bool LCTags::RemoveTag(LCString const & type, LCString const & value)
{
    auto const found = FindType(movTypes, type);
    if (found == movTypes.end()) return false;
    auto const removed =
        std::erase_if(found->second, [&](LCString const & other) { return other.EqCI(value); });
    if (found->second.empty()) movTypes.erase(found);
    return removed > 0;
}

bool LCTags::RemoveTag(LCString const & type)
{
    auto const found = FindType(movTypes, type);
    if (found == movTypes.end()) return false;
    movTypes.erase(found);
    return true;
}

void LCTags::GetTypes(LCStringSet & types) const
{
    for (auto const & [type, values] : movTypes) types.insert(type);
}

void LCTags::GetValuesOfType(LCString const & type, LCStringSet & values) const
{
    auto const found = FindType(movTypes, type);
    if (found != movTypes.end()) values.insert(found->second.begin(), found->second.end());
}

LCString LCTags::GetFirstValueOfType(LCString const & type) const
{
    auto const found = FindType(movTypes, type);
    return found != movTypes.end() ? *found->second.begin() : LCString();
}

void LCTags::GetTypeValues(std::map<LCString, LCStringSet> & tags) const
{
    for (auto const & [type, values] : movTypes) tags[type].insert(values.begin(), values.end());
}

void LCTags::GetTypeValues(LCStringPairSet & tags) const
{
    for (auto const & [type, values] : movTypes) {
        for (LCString const & value : values) tags.emplace(type, value);
    }
}

void LCTags::GetTypeValuesOfType(LCString const & type, LCStringPairSet & tags) const
{
    auto const found = FindType(movTypes, type);
    if (found == movTypes.end()) return;
    for (LCString const & value : found->second) tags.emplace(found->first, value);
}

LCString LCTags::Str(LCString const & typeSeparator, LCString const & tagSeparator)
{
    LCString text;
    for (auto const & [type, values] : movTypes) {
        for (LCString const & value : values) {
            if (!text.IsEmpty()) text += tagSeparator;
            if (!type.IsEmpty()) (text += type) += typeSeparator;
            text += value;
        }
    }
    return text;
}

LCStringList LCTags::StrList(LCString const & typeSeparator)
{
    LCStringList texts;
    for (auto const & [type, values] : movTypes) {
        LCString const prefix = type.IsEmpty() ? LCString() : type + typeSeparator;
        for (LCString const & value : values) texts.push_back(prefix + value);
    }
    return texts;
}
