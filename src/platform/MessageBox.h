#pragma once

#include <string>

#include "foundation/Export.h"

// What stands in for a message box where there is no window.
namespace qrtcl::platform {

/// Shows caption and text on the terminal that controls this process and waits for the answer there. Without
/// one, or in its background, where asking would stop the process, writes them to standard error and does not
/// wait. True is a Yes to a `question`, or Return to a note; a terminal that closes gives false.
QRTCL_API bool AskOnTerminal(std::string const & text, std::string const & caption, bool question);

}  // namespace qrtcl::platform
