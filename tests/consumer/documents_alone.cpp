#include <documents/LHCDocument.h>

int main()
{
    LHCDocument document;
    return document.GetRootParagraph().GetParent() == nullptr ? 0 : 1;
}
