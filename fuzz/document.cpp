// Documents: the input as XML, and as orders by which a tree is built, one in a line. What is loaded or built
// comes back from its text; what is refused leaves the document as it was.
#include "Fuzz.h"
#include "documents/LHCDocument.h"
#include "paragraph/TestParagraph.h"

static void Build(LCParagraph & root, Input orders)
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
static std::string RequireTheSameBack(LHCDocument & document)
{
    LCString xml, again;
    LHCDocument other;
    std::string const tree = Text(document.GetRootParagraph()).str();
    bool const good = document.SaveToText(xml) && other.LoadFromText(xml) && other.SaveToText(again);
    RequireEqual("saved, loaded and saved", good, true);
    RequireEqual("the same tree", Text(other.GetRootParagraph()).str(), tree);
    RequireEqual("the same text", again.str(), xml.str());
    return tree;
}

void Fuzz(Input input)
{
    LHCDocument document;
    Build(document.GetRootParagraph(), input);
    std::string const before = RequireTheSameBack(document);
    bool const loaded = document.LoadFromText(LCString(input.Rest()));
    RequireEqual("an error or none", document.GetErrorText().empty(), loaded);
    std::string const after = RequireTheSameBack(document);
    if (!loaded) RequireEqual("as it was", after, before);
}
