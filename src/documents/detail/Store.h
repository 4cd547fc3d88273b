#pragma once

#include <cstddef>
#include <memory>
#include <string>

#include "documents/detail/HashTable.h"
#include "documents/detail/Names.h"
#include "documents/detail/Pages.h"

class LHCParagraph;

namespace qrtcl::documents {

struct Attribute {
    Name * name;
    Attribute * previous;
    Attribute * next;
    std::string text;
};

/// What a paragraph has that is no leaf: children and attributes, in their order and, when there are many and
/// one was searched, by name. Of several children with one name the table holds the first.
struct Branch {
    LHCParagraph * first = nullptr;
    LHCParagraph * last = nullptr;
    std::size_t count = 0;
    std::unique_ptr<HashTable<LHCParagraph>> index;

    Attribute * firstAttribute = nullptr;
    Attribute * lastAttribute = nullptr;
    std::size_t attributeCount = 0;
    std::unique_ptr<HashTable<Attribute>> attributeIndex;
};

/// What the paragraphs of one tree live in. It belongs to the root.
struct Store {
    Names names{*this};
    Pages<LHCParagraph> paragraphs;
    Pages<Branch> branches;
    Pages<Attribute> attributes;
};

}  // namespace qrtcl::documents
