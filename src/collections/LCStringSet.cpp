#include "collections/LCStringSet.h"

#include "collections/LCStringList.h"
#include "collections/LCStringVector.h"
#include "collections/detail/Lines.h"

namespace lines = qrtcl::lines;

namespace {

/// The elements can't change where they stand: their nodes go over to another set.
template <typename Change> void Rebuild(std::set<LCString> & elements, Change change)
{
    std::set<LCString> changed;
    while (!elements.empty()) {
        auto node = elements.extract(elements.begin());
        change(node.value());
        changed.insert(changed.end(), std::move(node));
    }
    elements.swap(changed);
}

}  // namespace

LCStringSet::~LCStringSet() = default;

bool LCStringSet::Contains(LCString const & text) const { return contains(text); }
bool LCStringSet::ContainsCI(LCString const & text) const { return lines::ContainsCI(*this, text); }
bool LCStringSet::Contains(LCStringSet const & other) const { return lines::ContainsAll(*this, other); }
bool LCStringSet::Contains(LCStringList const & other) const { return lines::ContainsAll(*this, other); }
bool LCStringSet::Contains(LCStringVector const & other) const { return lines::ContainsAll(*this, other); }
bool LCStringSet::ContainsCI(LCStringSet const & other) const { return lines::ContainsAllCI(*this, other); }
bool LCStringSet::ContainsCI(LCStringList const & other) const { return lines::ContainsAllCI(*this, other); }
bool LCStringSet::ContainsCI(LCStringVector const & other) const
{
    return lines::ContainsAllCI(*this, other);
}
LCStringSet::iterator LCStringSet::Find(LCString const & text) const { return find(text); }
LCStringSet::iterator LCStringSet::FindCI(LCString const & text) const { return lines::FindCI(*this, text); }

LCString LCStringSet::Str(char sep) const { return lines::Join(*this, sep); }

bool LCStringSet::LoadFromFile(LCString const & path) { return lines::Load(*this, path); }
bool LCStringSet::SaveToFile(LCString const & path) const { return lines::Save(*this, path); }

void LCStringSet::ToLowerCase()
{
    Rebuild(*this, [](LCString & text) { text.ToLowerCase(); });
}
void LCStringSet::ToUpperCase()
{
    Rebuild(*this, [](LCString & text) { text.ToUpperCase(); });
}
