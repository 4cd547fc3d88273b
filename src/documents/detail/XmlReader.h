#pragma once

#include <cstddef>

class LHCParagraph;

namespace qrtcl::documents {

class Progress;
class Source;

/// Reads a document in the form of the file, of `size` bytes as far as that is known, into `root`, a new root
/// without contents. Throws a Failure, which says line and column.
void ReadXml(Source & source, std::size_t size, LHCParagraph & root, Progress & progress);

}  // namespace qrtcl::documents
