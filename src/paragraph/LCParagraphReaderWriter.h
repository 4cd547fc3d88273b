#pragma once

#include "foundation/Export.h"
#include "foundation/LCString.h"

class LCParagraph;

/// What an object is that reads itself from a paragraph.
class QRTCL_API LCParagraphReader {
public:
    LCParagraphReader() = default;
    LCParagraphReader(LCParagraphReader const &) = default;
    LCParagraphReader & operator=(LCParagraphReader const &) = default;
    virtual ~LCParagraphReader() = default;

    /// Reads the object from `paragraph` itself; true on success.
    virtual bool ReadParagraphContents(LCParagraph & paragraph) = 0;
    /// Reads the object from the child `name`, or from `paragraph` itself if the name is empty. Without such
    /// a child, false, and the object keeps what it holds.
    virtual bool ReadFromParagraph(LCString const & name, LCParagraph & paragraph);
};

/// What an object is that writes itself into a paragraph.
class QRTCL_API LCParagraphWriter {
public:
    LCParagraphWriter() = default;
    LCParagraphWriter(LCParagraphWriter const &) = default;
    LCParagraphWriter & operator=(LCParagraphWriter const &) = default;
    virtual ~LCParagraphWriter() = default;

    /// Writes the object into `paragraph` itself; true on success.
    virtual bool WriteParagraphContents(LCParagraph & paragraph) const = 0;
    /// Writes the object into a new child `name`, always a new one, or into `paragraph` itself if the name is
    /// empty.
    virtual bool WriteToParagraph(LCString const & name, LCParagraph & paragraph) const;
};

/// What the persistent classes of the family derive from.
class QRTCL_API LCParagraphReaderWriter : public LCParagraphReader, public LCParagraphWriter {};
