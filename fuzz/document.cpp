// Documents: the input as XML, and as orders by which a tree is built, one in a line. What is loaded or built
// comes back from its text; what is refused leaves the document as it was.
#include "Fuzz.h"
#include "collections/LCStringVector.h"
#include "documents/LHCDocument.h"
#include "paragraph/LCParagraphList.h"

namespace {

/// Everything of the tree below, in order.
std::string Dump(LCParagraph & paragraph)
{
    std::string text = paragraph.GetName().str() + '\0' + paragraph.GetValueAsString("(none)").str() + '\0';
    LCStringVector names;
    paragraph.GetAttributeNames(names);
    for (LCString const & name : names)
        text += name.str() + '\0' + paragraph.GetAttributeAsString(name, "(none)").str() + '\0';
    LCParagraphList children;
    paragraph.GetParagraphs(children);
    for (LCParagraph * const child : children) text += '(' + Dump(*child) + ')';
    return text;
}

void Build(LCParagraph & root, Input orders)
{
    LCParagraph * at = &root;
    int level = 0, copies = 0;
    for (std::string line; !(line = orders.TakeLine()).empty();) {
        LCString const text(line.substr(1));
        switch (line[0]) {
        case '+': at->CreateParagraph(text); break;
        case '>': at = ++level < 200 ? at->CreateParagraph(text) : at; break;
        case '<': at = at->GetParent() != nullptr ? at->GetParent() : at; break;
        case '-': at->RemoveParagraphsWithName(text); break;
        case '/': at = at->GetParagraph(text) != nullptr ? at->GetParagraph(text) : at; break;
        case '@': at->SetAttributeAsString(text, LCString(orders.TakeLine())); break;
        case '!': at->RemoveAttribute(text); break;
        case '#': at->SetName(text); break;
        case '&': ++copies < 8 ? at->CopyToParagraph(root) : void(); break;  // each may double the tree
        default: at->SetValueAsString(text, true);
        }
    }
}

/// The document's text, from which another document must get the same tree and write the same text.
std::string RequireTheSameBack(LHCDocument & document)
{
    LCString xml, again;
    RequireEqual("saved", document.SaveToText(xml), true);
    LHCDocument other;
    RequireEqual("loaded again", other.LoadFromText(xml), true);
    RequireEqual("the same tree", Dump(other.GetRootParagraph()), Dump(document.GetRootParagraph()));
    RequireEqual("saved again", other.SaveToText(again), true);
    RequireEqual("the same text", again.str(), xml.str());
    return Dump(document.GetRootParagraph());
}

}  // namespace

void Fuzz(Input input)
{
    LHCDocument document;
    Build(document.GetRootParagraph(), input);
    std::string const before = RequireTheSameBack(document);
    if (document.LoadFromText(LCString(input.Rest()))) {
        RequireEqual("no error", document.GetErrorText().str(), std::string());
        RequireTheSameBack(document);
    } else {
        RequireEqual("an error", document.GetErrorText().empty(), false);
        RequireEqual("as it was", Dump(document.GetRootParagraph()), before);
    }
}
