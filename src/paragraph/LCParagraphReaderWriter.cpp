#include "paragraph/LCParagraphReaderWriter.h"

#include "paragraph/LCParagraph.h"

bool LCParagraphReader::ReadFromParagraph(LCString const & name, LCParagraph & paragraph)
{
    LCParagraph * const source = name.IsEmpty() ? &paragraph : paragraph.GetParagraph(name);
    return source != nullptr && ReadParagraphContents(*source);
}

bool LCParagraphWriter::WriteToParagraph(LCString const & name, LCParagraph & paragraph) const
{
    LCParagraph * const target = name.IsEmpty() ? &paragraph : paragraph.CreateParagraph(name);
    return target != nullptr && WriteParagraphContents(*target);
}
