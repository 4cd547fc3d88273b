#pragma once

#include <list>

#include "foundation/Export.h"

class LCParagraph;

/// Paragraphs of a tree, by pointer. The list owns none of them: they belong to their parents.
class QRTCL_API LCParagraphList : public std::list<LCParagraph *> {
public:
    LCParagraphList() = default;
    LCParagraphList(LCParagraphList const &) = default;
    LCParagraphList & operator=(LCParagraphList const &) = default;
    virtual ~LCParagraphList() = default;

    /// Empties the list. The paragraphs stay in their tree.
    void ClearWithContents() noexcept { clear(); }
};
