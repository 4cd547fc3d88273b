#pragma once

#include <istream>

#include "foundation/LCTypes.h"

// What files and memory share: an LCStream's reading over a standard stream, with its failed state.
namespace qrtcl::streams {

/// In bytes, the read position stays; -1 if the stream has failed or does not fit.
LCLong Size(std::istream & stream);

/// Returns `count`.
LCLong Read(std::istream & stream, void * buffer, LCLong count, bool rewind);

}  // namespace qrtcl::streams
