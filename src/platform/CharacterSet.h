#pragma once

#include <string>
#include <string_view>

#include "foundation/Export.h"

// The 8-bit character sets of the system, and UTF-16.
namespace qrtcl::platform {

/// The name of the calling thread's character set.
std::string ThreadCharacterSet();

/// `text` as little-endian UTF-16. A byte that the set does not convert becomes the code unit of its number;
/// so do all bytes if the system does not know the set.
QRTCL_API std::string ToUtf16(std::string_view text, std::string const & characterSet);

}  // namespace qrtcl::platform
