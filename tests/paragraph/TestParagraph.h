#pragma once

#include "collections/LCStringVector.h"
#include "documents/LHCParagraph.h"
#include "paragraph/LCParagraphList.h"

/// The whole tree: name, "=" and value, then attributes and children between braces.
inline LCString Text(LCParagraph & paragraph)
{
    LCString inner;
    LCStringVector names(1, "what was there");
    paragraph.GetAttributeNames(names);
    for (auto const & name : names) inner += LCString(" @") + name + "=" + paragraph.GetAttributeAsString(name, "?");
    LCParagraphList children;
    paragraph.GetParagraphs(children);
    for (LCParagraph * const child : children) inner += LCString(" ") + Text(*child);
    LCString const value = paragraph.GetValueAsString("none");
    return paragraph.GetName() + (value == "none" ? LCString() : LCString("=") + value) +
           (inner.IsEmpty() ? inner : LCString("{") + inner.Tail(1) + "}");
}

/// A root with its switch, that can deny to write, wants the flag of a text set, and is its own parameter "self".
class TestParagraph : public LHCParagraph {
    using Arg = LCString const &;

public:
    TestParagraph() : LHCParagraph(mbvFind, "") {}
    using LCParagraph::CleanEnd;

    bool SetValueAsString(Arg v, bool f) override { return LHCParagraph::SetValueAsString(v, f) && f && !mbvDeny; }
    bool SetAttributeAsString(Arg a, Arg v) override { return LHCParagraph::SetAttributeAsString(a, v) && !mbvDeny; }
    LCParagraph * GetParagraph(Arg p) override { return p == "self" ? this : LHCParagraph::GetParagraph(p); }

    bool mbvFind = false;
    bool mbvDeny = false;
};
