#pragma once

#include <list>
#include <map>
#include <optional>

#include "collections/LCStringVector.h"
#include "paragraph/LCParagraph.h"
#include "paragraph/LCParagraphList.h"
#include "support/Support.h"

/// A tree in memory that does what the library asks of one and nothing more.
class TestParagraph : public LCParagraph {
    using Arg = LCString const &;

public:
    explicit TestParagraph(bool & findExisting, Arg name = "") : LCParagraph(findExisting), movName(name) {}
    using LCParagraph::CleanEnd;

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
    bool SetValueAsString(Arg text, bool flag) override
    {
        movValue = text;
        mbvFlag = flag;
        return !mbvRefuse;
    }
    LCString GetValueAsString(Arg def) override { return movValue.value_or(def); }
    bool SetAttributeAsString(Arg name, Arg text) override
    {
        movAttributes[name] = text;
        return !mbvRefuse;
    }
    LCString GetAttributeAsString(Arg name, Arg def) override
    {
        return movAttributes.contains(name) ? movAttributes[name] : def;
    }
    void GetAttributeNames(LCStringVector & names) override
    {
        for (auto const & attribute : movAttributes) names.push_back(attribute.first);
    }
    TestParagraph * CreateParagraph(Arg name) override
    {
        return mbvRefuse ? nullptr : &movChildren.emplace_back(mbFindExisting, name);
    }
    TestParagraph * GetParagraph(Arg name) override
    {
        for (auto & child : movChildren) if (child.movName == name) return &child;
        return nullptr;
    }
    void GetParagraphs(LCParagraphList & list) override
    {
        for (auto & child : movChildren) list.push_back(&child);
    }
    void GetParagraphsWithName(Arg name, LCParagraphList & list, bool flag) override
    {
        mbvFlag = flag;
        for (auto & child : movChildren) if (child.movName == name) list.push_back(&child);
    }
    LCParagraph * GetParagraphWithNameAndAttributeAsString(Arg name, Arg attr, Arg text) override
    {
        LCParagraph * const child = GetParagraph(name);
        return child != nullptr && child->GetAttributeAsString(attr, "") == text ? child : nullptr;
    }

    // The library never calls these.
    bool SetName(Arg) override { return false; }
    bool RemoveAttribute(Arg) override { return false; }
    LCParagraph * CreateParagraphBefore(LCParagraph &, Arg) override { return nullptr; }
    bool RemoveParagraph(LCParagraph &) override { return false; }
    int RemoveParagraphsWithName(Arg) override { return 0; }
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
