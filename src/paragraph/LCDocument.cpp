#include "paragraph/LCDocument.h"

LCDocument::~LCDocument() = default;

LCDocumentCreator::~LCDocumentCreator() = default;
