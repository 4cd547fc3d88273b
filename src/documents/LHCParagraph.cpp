#include "documents/LHCParagraph.h"

#include <new>
#include <utility>
#include <vector>

#include "collections/LCStringVector.h"
#include "documents/detail/Store.h"
#include "foundation/detail/NumberText.h"
#include "paragraph/LCParagraphList.h"

using namespace qrtcl::documents;

namespace {

/// Up to this many children or attributes are searched one by one.
constexpr std::size_t fewEnough = 16;

LCString ToString(std::string_view text) { return std::string(text); }

}  // namespace

LHCParagraph::LHCParagraph(bool & findExisting, LCString const & name) : LCParagraph(findExisting)
{
    auto store = std::make_unique<Store>();
    mopName = &store->names.Use(name.str());
    static_cast<void>(store.release());  // the name leads to it
}

LHCParagraph::LHCParagraph(LHCParagraph & parent, Name & name) noexcept
    : LCParagraph(parent.mbFindExisting), mopName(&name), mopParent(&parent)
{}

LHCParagraph::~LHCParagraph()
{
    if (mopParent != nullptr) return;
    std::unique_ptr<Store> const store(&TreeStore());
    store->names.Close();
    LHCParagraph::RemoveAllParagraphs();
    ReleaseContents();
}

Store & LHCParagraph::TreeStore() const noexcept { return *mopName->owner; }

Branch & LHCParagraph::MakeBranch()
{
    if (mopBranch == nullptr) mopBranch = ::new (TreeStore().branches.Take()) Branch;
    return *mopBranch;
}

LCString LHCParagraph::GetName() { return ToString(mopName->Text()); }

bool LHCParagraph::SetName(LCString const & name)
{
    Rename(name.str());
    return true;
}

void LHCParagraph::Rename(std::string_view name)
{
    Names & names = TreeStore().names;
    Name & changed = names.Use(name);
    if (mopParent != nullptr) mopParent->TakeFromIndex(*this);
    names.Release(*std::exchange(mopName, &changed));
    if (mopParent != nullptr) mopParent->AddToIndex(*this, mopNext == nullptr);
}

bool LHCParagraph::SetValueAsString(LCString const & text, bool)
{
    movValue = text.str();
    mbvHasValue = true;
    return true;
}

LCString LHCParagraph::GetValueAsString(LCString const & def)
{
    return mbvHasValue ? LCString(movValue) : def;
}

// Numbers are read where they are, without a copy of the text.

int LHCParagraph::GetValueAsInteger(int def)
{
    if (!mbvHasValue) return LCParagraph::GetValueAsInteger(def);
    int value = 0;
    return qrtcl::number::ReadInt(movValue, false, value) ? value : 0;
}

double LHCParagraph::GetValueAsDouble(double def)
{
    if (!mbvHasValue) return LCParagraph::GetValueAsDouble(def);
    double value = 0.0;
    return qrtcl::number::ReadDouble(movValue, value) ? value : 0.0;
}

// Attributes

Attribute * LHCParagraph::FindAttribute(std::string_view name) const
{
    if (mopBranch == nullptr || mopBranch->firstAttribute == nullptr) return nullptr;
    Names const & names = TreeStore().names;
    std::uint64_t const hash = names.Hash(name);
    return FindAttribute(names.Find(name, hash), hash);
}

/// Null is a name that nothing in the tree has.
Attribute * LHCParagraph::FindAttribute(Name const * name, std::uint64_t hash) const
{
    if (mopBranch == nullptr || name == nullptr) return nullptr;
    auto & index = mopBranch->attributeIndex;
    if (mopBranch->attributeCount <= fewEnough) {
        Attribute * at = mopBranch->firstAttribute;
        while (at != nullptr && at->name != name) at = at->next;
        return at;
    }
    if (index == nullptr) {
        auto made = std::make_unique<HashTable<Attribute>>();
        for (Attribute * at = mopBranch->firstAttribute; at != nullptr; at = at->next)
            made->Insert(at->name->hash, *at);
        index = std::move(made);
    }
    return index->Find(hash, [&](Attribute const & attribute) { return attribute.name == name; });
}

void LHCParagraph::AppendAttribute(std::string_view name, std::string_view text)
{
    Store & store = TreeStore();
    Branch & branch = MakeBranch();
    Name & shared = store.names.Use(name);
    void * room = nullptr;
    Attribute * attribute = nullptr;
    try {
        std::string copy(text);
        room = store.attributes.Take();
        attribute = ::new (room) Attribute{&shared, branch.lastAttribute, nullptr, std::move(copy)};
        if (branch.attributeIndex != nullptr) branch.attributeIndex->Insert(shared.hash, *attribute);
    } catch (...) {
        if (attribute != nullptr) attribute->~Attribute();
        if (room != nullptr) store.attributes.Give(room);
        store.names.Release(shared);
        throw;
    }
    (branch.lastAttribute == nullptr ? branch.firstAttribute : branch.lastAttribute->next) = attribute;
    branch.lastAttribute = attribute;
    ++branch.attributeCount;
}

void LHCParagraph::RemoveAttribute(Attribute & attribute) noexcept
{
    Branch & branch = *mopBranch;
    if (branch.attributeIndex != nullptr) branch.attributeIndex->Erase(attribute.name->hash, attribute);
    (attribute.previous == nullptr ? branch.firstAttribute : attribute.previous->next) = attribute.next;
    (attribute.next == nullptr ? branch.lastAttribute : attribute.next->previous) = attribute.previous;
    --branch.attributeCount;

    Store & store = TreeStore();
    store.names.Release(*attribute.name);
    attribute.~Attribute();
    store.attributes.Give(&attribute);
}

bool LHCParagraph::SetAttributeAsString(LCString const & name, LCString const & text)
{
    if (Attribute * const attribute = FindAttribute(name.str())) {
        attribute->text = text.str();
    } else {
        AppendAttribute(name.str(), text.str());
    }
    return true;
}

bool LHCParagraph::RemoveAttribute(LCString const & name)
{
    Attribute * const attribute = FindAttribute(name.str());
    if (attribute == nullptr) return false;
    RemoveAttribute(*attribute);
    return true;
}

LCString LHCParagraph::GetAttributeAsString(LCString const & name, LCString const & def)
{
    Attribute const * const attribute = FindAttribute(name.str());
    return attribute == nullptr ? def : LCString(attribute->text);
}

void LHCParagraph::GetAttributeNames(LCStringVector & names)
{
    names.clear();
    if (mopBranch == nullptr) return;
    names.reserve(mopBranch->attributeCount);
    for (Attribute const * at = mopBranch->firstAttribute; at != nullptr; at = at->next)
        names.push_back(ToString(at->name->Text()));
}

// Children

LHCParagraph & LHCParagraph::Insert(LHCParagraph * next, std::string_view name)
{
    return Insert(next, TreeStore().names.Use(name));
}

/// Takes over a use of the name, also if it throws.
LHCParagraph & LHCParagraph::Insert(LHCParagraph * next, Name & name)
{
    Store & store = TreeStore();
    void * room = nullptr;
    try {
        MakeBranch();
        room = store.paragraphs.Take();
    } catch (...) {
        store.names.Release(name);
        throw;
    }
    Branch & branch = *mopBranch;
    LHCParagraph * const child = ::new (room) LHCParagraph(*this, name);
    child->mopNext = next;
    child->mopPrevious = next == nullptr ? branch.last : next->mopPrevious;
    (child->mopPrevious == nullptr ? branch.first : child->mopPrevious->mopNext) = child;
    (next == nullptr ? branch.last : next->mopPrevious) = child;
    ++branch.count;
    AddToIndex(*child, next == nullptr);
    return *child;
}

LCParagraph * LHCParagraph::CreateParagraph(LCString const & name) { return &Insert(nullptr, name.str()); }

LCParagraph * LHCParagraph::CreateParagraphBefore(LCParagraph & next, LCString const & name)
{
    if (!IsChild(next)) return nullptr;
    return &Insert(&static_cast<LHCParagraph &>(next), name.str());
}

bool LHCParagraph::IsChild(LCParagraph & paragraph)
{
    auto const * const own = dynamic_cast<LHCParagraph *>(&paragraph);
    return own != nullptr && own->mopParent == this;
}

LHCParagraph * LHCParagraph::FirstWithName(std::string_view text)
{
    if (mopBranch == nullptr || mopBranch->count == 0) return nullptr;
    Names const & names = TreeStore().names;
    std::uint64_t const hash = names.Hash(text);
    Name const * const name = names.Find(text, hash);
    if (name == nullptr) return nullptr;

    if (mopBranch->index == nullptr && mopBranch->count > fewEnough) MakeIndex();
    if (mopBranch->index == nullptr) {
        LHCParagraph * at = mopBranch->first;
        while (at != nullptr && at->mopName != name) at = at->mopNext;
        return at;
    }
    LHCParagraph * const head = HeadOf(*name, hash);
    return head == nullptr || !head->mbvUnordered ? head : &OrderSameName(*head);
}

LHCParagraph * LHCParagraph::NextWithName(LHCParagraph const & child) const
{
    if (mopBranch->index != nullptr) return child.mopNextSame;
    LHCParagraph * at = child.mopNext;
    while (at != nullptr && at->mopName != child.mopName) at = at->mopNext;
    return at;
}

LCParagraph * LHCParagraph::GetParagraph(LCString const & name) { return FirstWithName(name.str()); }

void LHCParagraph::GetParagraphs(LCParagraphList & list)
{
    list.clear();
    if (mopBranch == nullptr) return;
    for (LHCParagraph * at = mopBranch->first; at != nullptr; at = at->mopNext) list.push_back(at);
}

void LHCParagraph::GetParagraphsWithName(LCString const & name, LCParagraphList & list, bool)
{
    list.clear();
    for (LHCParagraph * at = FirstWithName(name.str()); at != nullptr; at = NextWithName(*at))
        list.push_back(at);
}

LCParagraph * LHCParagraph::GetParagraphWithNameAndAttributeAsString(LCString const & name,
                                                                     LCString const & attr,
                                                                     LCString const & text)
{
    Names const & names = TreeStore().names;
    std::uint64_t const hash = names.Hash(attr.str());
    Name const * const sought = names.Find(attr.str(), hash);
    for (LHCParagraph * at = FirstWithName(name.str()); at != nullptr; at = NextWithName(*at)) {
        Attribute const * const attribute = at->FindAttribute(sought, hash);
        if (attribute != nullptr && attribute->text == text.str()) return at;
    }
    return nullptr;
}

// The index

LHCParagraph * LHCParagraph::HeadOf(Name const & name, std::uint64_t hash) const
{
    return mopBranch->index->Find(hash, [&](LHCParagraph const & head) { return head.mopName == &name; });
}

void LHCParagraph::MakeIndex()
{
    mopBranch->index = std::make_unique<HashTable<LHCParagraph>>();
    for (LHCParagraph * at = mopBranch->first; at != nullptr; at = at->mopNext) AddToIndex(*at, true);
}

/// Without the memory for it the index goes: it only speeds searches up.
void LHCParagraph::AddToIndex(LHCParagraph & child, bool behindAll) noexcept
{
    if (mopBranch->index == nullptr) return;
    child.mopNextSame = nullptr;
    child.mbvUnordered = false;
    if (!behindAll && AddBesideItsName(child)) return;
    if (LHCParagraph * const head = HeadOf(*child.mopName, child.mopName->hash)) {
        child.mopPreviousSame = std::exchange(head->mopPreviousSame, &child);
        child.mopPreviousSame->mopNextSame = &child;
        if (!behindAll) head->mbvUnordered = true;
        return;
    }
    child.mopPreviousSame = &child;
    try {
        mopBranch->index->Insert(child.mopName->hash, child);
    } catch (std::bad_alloc const &) {
        mopBranch->index.reset();
    }
}

/// Beside one of its name a child has its place in the order at once.
bool LHCParagraph::AddBesideItsName(LHCParagraph & child) noexcept
{
    LHCParagraph * const next = child.mopNext;
    LHCParagraph * const previous = child.mopPrevious;
    if (next != nullptr && next->mopName == child.mopName) {
        child.mopNextSame = next;
        child.mopPreviousSame = std::exchange(next->mopPreviousSame, &child);
        if (child.mopPreviousSame->mopNextSame != nullptr) {
            child.mopPreviousSame->mopNextSame = &child;
        } else {  // `next` was the first
            child.mbvUnordered = next->mbvUnordered;
            mopBranch->index->Replace(child.mopName->hash, *next, child);
        }
        return true;
    }
    if (previous == nullptr || previous->mopName != child.mopName) return false;
    child.mopPreviousSame = previous;
    child.mopNextSame = std::exchange(previous->mopNextSame, &child);
    LHCParagraph * const behind = child.mopNextSame;
    (behind == nullptr ? HeadOf(*child.mopName, child.mopName->hash) : behind)->mopPreviousSame = &child;
    return true;
}

void LHCParagraph::TakeFromIndex(LHCParagraph & child) noexcept
{
    if (mopBranch->index == nullptr) return;
    LHCParagraph * const next = child.mopNextSame;
    LHCParagraph * const previous = child.mopPreviousSame;
    if (previous->mopNextSame != nullptr) {  // not the first: only the last one's next is null
        previous->mopNextSame = next;
        (next == nullptr ? HeadOf(*child.mopName, child.mopName->hash) : next)->mopPreviousSame = previous;
        if (previous->mopPreviousSame == previous) previous->mbvUnordered = false;  // it is alone
    } else if (next != nullptr) {
        next->mopPreviousSame = previous;
        next->mbvUnordered = child.mbvUnordered && next != previous;
        mopBranch->index->Replace(child.mopName->hash, child, *next);
    } else {
        mopBranch->index->Erase(child.mopName->hash, child);
    }
}

/// Brings the children of one name into the order of all; gives the first.
LHCParagraph & LHCParagraph::OrderSameName(LHCParagraph & head)
{
    LHCParagraph * first = nullptr;
    LHCParagraph * last = nullptr;
    for (LHCParagraph * at = mopBranch->first; at != nullptr; at = at->mopNext) {
        if (at->mopName != head.mopName) continue;
        (last == nullptr ? first : last->mopNextSame) = at;
        at->mopPreviousSame = std::exchange(last, at);
    }
    last->mopNextSame = nullptr;
    first->mopPreviousSame = last;
    head.mbvUnordered = first->mbvUnordered = false;
    mopBranch->index->Replace(head.mopName->hash, head, *first);
    return *first;
}

// Removing and copying

bool LHCParagraph::RemoveParagraph(LCParagraph & child)
{
    if (!IsChild(child)) return false;
    Remove(static_cast<LHCParagraph &>(child));
    return true;
}

int LHCParagraph::RemoveParagraphsWithName(LCString const & name)
{
    int count = 0;
    for (LHCParagraph * at = FirstWithName(name.str()); at != nullptr; ++count) {
        LHCParagraph & child = *at;
        at = NextWithName(child);
        Remove(child);
    }
    return count;
}

void LHCParagraph::RemoveAllParagraphs()
{
    if (mopBranch == nullptr) return;
    mopBranch->index.reset();
    while (mopBranch->first != nullptr) Remove(*mopBranch->first);
}

void LHCParagraph::Remove(LHCParagraph & child) noexcept
{
    Branch & branch = *mopBranch;
    TakeFromIndex(child);
    (child.mopPrevious == nullptr ? branch.first : child.mopPrevious->mopNext) = child.mopNext;
    (child.mopNext == nullptr ? branch.last : child.mopNext->mopPrevious) = child.mopPrevious;
    if (--branch.count == 0) branch.index.reset();

    // Goes down to the first leaf and takes the leaves off, one by one, until `child` is one.
    Store & store = TreeStore();
    LHCParagraph * at = &child;
    for (;;) {
        while (at->mopBranch != nullptr && at->mopBranch->first != nullptr) at = at->mopBranch->first;
        LHCParagraph * const parent = at->mopParent;
        LHCParagraph * const next = at->mopNext;
        bool const done = at == &child;
        at->ReleaseContents();
        at->~LHCParagraph();
        store.paragraphs.Give(at);
        if (done) return;
        parent->mopBranch->first = next;
        at = parent;
    }
}

/// Gives the attributes and the name back; there are no children any more.
void LHCParagraph::ReleaseContents() noexcept
{
    Store & store = TreeStore();
    if (mopBranch != nullptr) {
        while (mopBranch->firstAttribute != nullptr) RemoveAttribute(*mopBranch->firstAttribute);
        mopBranch->~Branch();
        store.branches.Give(mopBranch);
    }
    store.names.Release(*mopName);
}

void LHCParagraph::CopyToParagraph(LCParagraph & dest)
{
    for (LCParagraph * at = &dest; at != nullptr; at = at->GetParent()) {
        if (at != this) continue;
        LHCParagraph present(mbFindExisting);
        CopyTree(present);
        return present.CopyTree(dest);
    }
    CopyTree(dest);
}

void LHCParagraph::CopyTree(LCParagraph & dest)
{
    std::vector<LCParagraph *> targets{&dest};  // of `at` and all above it
    LHCParagraph * at = this;
    for (;;) {
        while (at->mopBranch != nullptr && at->mopBranch->first != nullptr) {
            at = at->mopBranch->first;
            targets.push_back(targets.back()->CreateParagraph(at->GetName()));
        }
        // What has its children gets its value and attributes, as far up as there is no next one.
        for (;;) {
            LCParagraph & target = *targets.back();
            targets.pop_back();
            target.SetValueAsString(at->GetValueAsString({}), true);
            for (Attribute const * a = at->mopBranch == nullptr ? nullptr : at->mopBranch->firstAttribute;
                 a != nullptr; a = a->next)
                target.SetAttributeAsString(ToString(a->name->Text()), a->text);
            if (at == this) return;
            if (at->mopNext != nullptr) break;
            at = at->mopParent;
        }
        at = at->mopNext;
        targets.push_back(targets.back()->CreateParagraph(at->GetName()));
    }
}

LCParagraph * LHCParagraph::GetParent() { return mopParent; }

int LHCParagraph::GetKind() { return civPT_Node; }

/// Both are roots of trees that are bound to one switch.
void LHCParagraph::SwapTrees(LHCParagraph & other) noexcept
{
    std::swap(mopName, other.mopName);
    std::swap(mopBranch, other.mopBranch);
    std::swap(movValue, other.movValue);
    std::swap(mbvHasValue, other.mbvHasValue);
    for (LHCParagraph * root : {this, &other}) {
        if (root->mopBranch == nullptr) continue;
        for (LHCParagraph * at = root->mopBranch->first; at != nullptr; at = at->mopNext)
            at->mopParent = root;
    }
}
