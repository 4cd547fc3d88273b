#pragma once

class LHCParagraph;

namespace qrtcl::documents {

class Progress;
class Sink;

/// Writes the tree below `root` in the form of the file. Throws a Failure.
void WriteXml(LHCParagraph const & root, Sink & sink, Progress & progress);

}  // namespace qrtcl::documents
