#include <documents/LHCDocument.h>

int main() { return LHCDocument().GetRootParagraph().GetParent() == nullptr ? 0 : 1; }
