#pragma once

#include <cstddef>

namespace qrtcl::platform {

/// Asks the system to back a new block of the heap with large pages, if it is large and the system has them.
/// A hint: filling hundreds of megabytes for the first time then costs a third.
void PreferLargePages(void * block, std::size_t size) noexcept;

}  // namespace qrtcl::platform
