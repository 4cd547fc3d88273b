#pragma once

#include <string>
#include <string_view>

#include "documents/LHCParagraph.h"
#include "documents/detail/Names.h"
#include "documents/detail/Store.h"

namespace qrtcl::documents {

/// How the parts of the library that are no paragraph see one.
struct Access {
    static Name & NameOf(LHCParagraph const & paragraph) { return *paragraph.mopName; }
    /// Null without a value.
    static std::string const * ValueOf(LHCParagraph const & paragraph)
    {
        return paragraph.mbvHasValue ? &paragraph.movValue : nullptr;
    }
    /// The next attributes hang on it.
    static Attribute const * FirstAttributeOf(LHCParagraph const & paragraph)
    {
        return paragraph.mopBranch == nullptr ? nullptr : paragraph.mopBranch->firstAttribute;
    }
    static LHCParagraph * FirstOf(LHCParagraph const & paragraph)
    {
        return paragraph.mopBranch == nullptr ? nullptr : paragraph.mopBranch->first;
    }
    static LHCParagraph * ParentOf(LHCParagraph const & paragraph) { return paragraph.mopParent; }
    static LHCParagraph * NextOf(LHCParagraph const & paragraph) { return paragraph.mopNext; }

    static LHCParagraph & Append(LHCParagraph & parent, std::string_view name)
    {
        return parent.Insert(nullptr, name);
    }
    static LHCParagraph & Append(LHCParagraph & parent, Name & name)
    {
        return parent.Insert(nullptr, Names::Use(name));
    }
    static void Rename(LHCParagraph & paragraph, std::string_view name) { paragraph.Rename(name); }
    static void SetValue(LHCParagraph & paragraph, std::string_view text)
    {
        paragraph.movValue = text;
        paragraph.mbvHasValue = true;
    }
    /// False if there is an attribute of that name.
    static bool AddAttribute(LHCParagraph & paragraph, std::string_view name, std::string_view text)
    {
        if (paragraph.FindAttribute(name) != nullptr) return false;
        paragraph.AppendAttribute(name, text);
        return true;
    }
    /// Both are roots, bound to one switch.
    static void SwapTrees(LHCParagraph & a, LHCParagraph & b) noexcept { a.SwapTrees(b); }
};

}  // namespace qrtcl::documents
