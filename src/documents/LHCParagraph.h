#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "documents/Export.h"
#include "paragraph/LCParagraph.h"

class LHCParagraph;

namespace qrtcl::documents {
struct Access;
struct Attribute;
struct Branch;
struct Name;
struct Store;
}  // namespace qrtcl::documents

/// A paragraph of a tree in memory. Children belong to their parent, and are removed by it, never deleted.
///
/// A name is a whole name, never a path, and any text is one, the empty text too. Children keep their order;
/// of several children with one name, `GetParagraph` and the other searches give the first in that order. A
/// search takes the same time among a hundred thousand children as among ten; only where a child got a place
/// in the middle, away from others of its name, the next search for that name goes through all children.
/// Finding by name and attribute looks only at children of that name. The flags of `SetValueAsString` and
/// `GetParagraphsWithName` are ignored. Lists that are filled are emptied first. Trees of any depth take no
/// more of the stack than flat ones, whatever is done to them.
class QRTCL_DOCUMENTS_API LHCParagraph : public LCParagraph {
public:
    /// The root of a tree of its own. The switch is the caller's and must outlive the tree.
    explicit LHCParagraph(bool & findExisting, LCString const & name = "Document");
    LHCParagraph(LHCParagraph const &) = delete;
    ~LHCParagraph() override;

    LCString GetName() override;
    bool SetName(LCString const & name) override;

    using LCParagraph::SetValueAsString;
    bool SetValueAsString(LCString const & text, bool flag) override;
    LCString GetValueAsString(LCString const & def) override;
    int GetValueAsInteger(int def) override;
    double GetValueAsDouble(double def) override;

    bool SetAttributeAsString(LCString const & name, LCString const & text) override;
    bool RemoveAttribute(LCString const & name) override;
    LCString GetAttributeAsString(LCString const & name, LCString const & def) override;
    /// In the order in which they were first set.
    void GetAttributeNames(LCStringVector & names) override;

    LCParagraph * CreateParagraph(LCString const & name) override;
    /// Null if `next` is no child of this paragraph.
    LCParagraph * CreateParagraphBefore(LCParagraph & next, LCString const & name) override;
    LCParagraph * GetParagraph(LCString const & name) override;
    void GetParagraphs(LCParagraphList & list) override;
    using LCParagraph::GetParagraphsWithName;
    void GetParagraphsWithName(LCString const & name, LCParagraphList & list, bool flag) override;
    LCParagraph * GetParagraphWithNameAndAttributeAsString(LCString const & name, LCString const & attr,
                                                           LCString const & text) override;

    bool RemoveParagraph(LCParagraph & child) override;
    int RemoveParagraphsWithName(LCString const & name) override;
    void RemoveAllParagraphs() override;
    /// Into itself or a paragraph below, copies the tree as it stood at the call.
    void CopyToParagraph(LCParagraph & dest) override;
    LCParagraph * GetParent() override;
    /// Always `civPT_Node`.
    int GetKind() override;

private:
    friend struct qrtcl::documents::Access;

    LHCParagraph(LHCParagraph & parent, qrtcl::documents::Name & name) noexcept;

    qrtcl::documents::Store & TreeStore() const noexcept;
    qrtcl::documents::Branch & MakeBranch();
    void Rename(std::string_view name);
    LHCParagraph & Insert(LHCParagraph * next, std::string_view name);
    LHCParagraph & Insert(LHCParagraph * next, qrtcl::documents::Name & name);
    LHCParagraph * FirstWithName(std::string_view name);
    LHCParagraph * NextWithName(LHCParagraph const & child) const;
    bool IsChild(LCParagraph & paragraph);
    void Remove(LHCParagraph & child) noexcept;
    void ReleaseContents() noexcept;
    void CopyTree(LCParagraph & dest);
    void SwapTrees(LHCParagraph & other) noexcept;

    void MakeIndex();
    void AddToIndex(LHCParagraph & child, bool behindAll) noexcept;
    bool AddBesideItsName(LHCParagraph & child) noexcept;
    void TakeFromIndex(LHCParagraph & child) noexcept;
    LHCParagraph * HeadOf(qrtcl::documents::Name const & name, std::uint64_t hash) const;
    LHCParagraph & OrderSameName(LHCParagraph & head);

    qrtcl::documents::Attribute * FindAttribute(std::string_view name) const;
    qrtcl::documents::Attribute * FindAttribute(qrtcl::documents::Name const * name,
                                                std::uint64_t hash) const;
    void AppendAttribute(std::string_view name, std::string_view text);
    void RemoveAttribute(qrtcl::documents::Attribute & attribute) noexcept;

    qrtcl::documents::Name * mopName;
    LHCParagraph * mopParent = nullptr;
    LHCParagraph * mopPrevious = nullptr;
    LHCParagraph * mopNext = nullptr;
    // Among the children of its name, once the parent has an index: the first one's previous is the last one.
    LHCParagraph * mopPreviousSame = nullptr;
    LHCParagraph * mopNextSame = nullptr;
    qrtcl::documents::Branch * mopBranch = nullptr;  ///< null for a leaf
    std::string movValue;
    bool mbvHasValue = false;
    bool mbvUnordered = false;  ///< of the first of its name: the others are not in the order of the children
};
