#pragma once

#include <algorithm>
#include <list>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "collections/LCStringVector.h"
#include "paragraph/LCParagraph.h"
#include "paragraph/LCParagraphList.h"
#include "support/Support.h"

/// A tree in memory that does what the abstract operations ask for and nothing more.
class TestParagraph : public LCParagraph {
public:
    explicit TestParagraph(bool & findExisting, LCString const & name = "", TestParagraph * parent = nullptr)
        : LCParagraph(findExisting), movName(name), mopParent(parent)
    {}

    using LCParagraph::CleanEnd;
    using LCParagraph::GetParagraphsWithName;
    using LCParagraph::SetValueAsString;

    /// The whole tree: name, "=" and value, then attributes and children between braces.
    LCString Text() const
    {
        LCString inner;
        for (auto const & [name, text] : movAttributes) inner += LCString(" @") + name + "=" + text;
        for (auto const & child : movChildren) inner += LCString(" ") + child->Text();
        return movName + (movValue ? LCString("=") + *movValue : LCString()) +
               (inner.IsEmpty() ? inner : LCString("{") + inner.Tail(1) + "}");
    }

    LCString GetName() override { return movName; }
    bool SetName(LCString const & name) override
    {
        movName = name;
        return true;
    }
    bool SetValueAsString(LCString const & text, bool flag) override
    {
        movValue = text;
        mbvFlag = flag;
        return !mbvRefuse;
    }
    LCString GetValueAsString(LCString const & def) override { return movValue.value_or(def); }
    bool SetAttributeAsString(LCString const & name, LCString const & text) override
    {
        auto const found = FindAttribute(name);
        if (found == movAttributes.end())
            movAttributes.emplace_back(name, text);
        else
            found->second = text;
        return !mbvRefuse;
    }
    bool RemoveAttribute(LCString const & name) override
    {
        return std::erase_if(movAttributes, [&](auto const & attribute) { return attribute.first == name; }) >
               0;
    }
    LCString GetAttributeAsString(LCString const & name, LCString const & def) override
    {
        auto const found = FindAttribute(name);
        return found == movAttributes.end() ? def : found->second;
    }
    void GetAttributeNames(LCStringVector & names) override
    {
        for (auto const & attribute : movAttributes) names.push_back(attribute.first);
    }
    TestParagraph * CreateParagraph(LCString const & name) override
    {
        if (mbvBarren) return nullptr;
        movChildren.push_back(std::make_unique<TestParagraph>(mbFindExisting, name, this));
        return movChildren.back().get();
    }
    LCParagraph * CreateParagraphBefore(LCParagraph &, LCString const &) override { return nullptr; }
    TestParagraph * GetParagraph(LCString const & name) override
    {
        for (auto const & child : movChildren)
            if (child->movName == name) return child.get();
        return nullptr;
    }
    void GetParagraphs(LCParagraphList & list) override
    {
        for (auto const & child : movChildren) list.push_back(child.get());
    }
    void GetParagraphsWithName(LCString const & name, LCParagraphList & list, bool flag) override
    {
        mbvFlag = flag;
        for (auto const & child : movChildren)
            if (child->movName == name) list.push_back(child.get());
    }
    LCParagraph * GetParagraphWithNameAndAttributeAsString(LCString const & name, LCString const & attr,
                                                           LCString const & text) override
    {
        for (auto const & child : movChildren) {
            if (child->movName == name && child->GetAttributeAsString(attr, text + "?") == text)
                return child.get();
        }
        return nullptr;
    }
    bool RemoveParagraph(LCParagraph &) override { return false; }
    int RemoveParagraphsWithName(LCString const &) override { return 0; }
    void RemoveAllParagraphs() override { movChildren.clear(); }
    LCParagraph * GetParent() override { return mopParent; }
    int GetKind() override { return civPT_Node; }

    bool mbvFlag = false;    // the flag of the last call that has one
    bool mbvRefuse = false;  // writing a text gives false
    bool mbvBarren = false;  // creating a child gives null

private:
    std::vector<std::pair<LCString, LCString>>::iterator FindAttribute(LCString const & name)
    {
        return std::ranges::find(movAttributes, name, &std::pair<LCString, LCString>::first);
    }

    LCString movName;
    std::optional<LCString> movValue;
    std::vector<std::pair<LCString, LCString>> movAttributes;
    std::list<std::unique_ptr<TestParagraph>> movChildren;
    TestParagraph * mopParent;
};

/// A root with its switch.
struct TestTree {
    bool findExisting = false;
    TestParagraph root{findExisting};
};
