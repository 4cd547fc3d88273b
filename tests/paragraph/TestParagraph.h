#pragma once

#include <algorithm>
#include <list>
#include <map>
#include <optional>

#include "collections/LCStringVector.h"
#include "paragraph/LCParagraph.h"
#include "paragraph/LCParagraphList.h"
#include "support/Support.h"

/// A tree in memory that does what the library asks of one and nothing more.
class TestParagraph : public LCParagraph {
public:
    explicit TestParagraph(bool & findExisting, LCString const & name = "")
        : LCParagraph(findExisting), movName(name)
    {}

    using LCParagraph::CleanEnd;
    using LCParagraph::GetParagraphsWithName;
    using LCParagraph::SetValueAsString;

    /// The whole tree: name, "=" and value, then attributes and children between braces.
    LCString Text() const
    {
        LCString inner;
        for (auto const & [name, text] : movAttributes) inner += LCString(" @") + name + "=" + text;
        for (auto const & child : movChildren) inner += LCString(" ") + child.Text();
        return movName + (movValue ? LCString("=") + *movValue : LCString()) +
               (inner.IsEmpty() ? inner : LCString("{") + inner.Tail(1) + "}");
    }

    LCString GetName() override { return movName; }
    bool SetValueAsString(LCString const & text, bool flag) override
    {
        movValue = text;
        mbvFlag = flag;
        return !mbvRefuse;
    }
    LCString GetValueAsString(LCString const & def) override { return movValue.value_or(def); }
    bool SetAttributeAsString(LCString const & name, LCString const & text) override
    {
        movAttributes[name] = text;
        return !mbvRefuse;
    }
    LCString GetAttributeAsString(LCString const & name, LCString const & def) override
    {
        return movAttributes.contains(name) ? movAttributes[name] : def;
    }
    void GetAttributeNames(LCStringVector & names) override
    {
        for (auto const & attribute : movAttributes) names.push_back(attribute.first);
    }
    TestParagraph * CreateParagraph(LCString const & name) override
    {
        return mbvRefuse ? nullptr : &movChildren.emplace_back(mbFindExisting, name);
    }
    TestParagraph * GetParagraph(LCString const & name) override
    {
        auto const found = std::ranges::find(movChildren, name, &TestParagraph::movName);
        return found == movChildren.end() ? nullptr : &*found;
    }
    void GetParagraphs(LCParagraphList & list) override
    {
        for (auto & child : movChildren) list.push_back(&child);
    }
    void GetParagraphsWithName(LCString const & name, LCParagraphList & list, bool flag) override
    {
        mbvFlag = flag;
        GetParagraphs(list);
        list.remove_if([&](LCParagraph * child) { return child->GetName() != name; });
    }
    LCParagraph * GetParagraphWithNameAndAttributeAsString(LCString const & name, LCString const & attr,
                                                           LCString const & text) override
    {
        LCParagraphList list;
        GetParagraphsWithName(name, list, true);
        list.remove_if([&](LCParagraph * child) { return child->GetAttributeAsString(attr, "") != text; });
        return list.empty() ? nullptr : list.front();
    }

    // The library never calls these.
    bool SetName(LCString const &) override { return false; }
    bool RemoveAttribute(LCString const &) override { return false; }
    LCParagraph * CreateParagraphBefore(LCParagraph &, LCString const &) override { return nullptr; }
    bool RemoveParagraph(LCParagraph &) override { return false; }
    int RemoveParagraphsWithName(LCString const &) override { return 0; }
    void RemoveAllParagraphs() override {}
    LCParagraph * GetParent() override { return nullptr; }
    int GetKind() override { return civPT_Node; }

    bool mbvFlag = false;    // the flag of the last call that has one
    bool mbvRefuse = false;  // writing a text gives false, creating a child null

private:
    LCString movName;
    std::optional<LCString> movValue;
    std::map<LCString, LCString> movAttributes;
    std::list<TestParagraph> movChildren;
};

/// A root with its switch.
struct TestTree {
    bool findExisting = false;
    TestParagraph root{findExisting};
};
