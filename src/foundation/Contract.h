#pragma once

#include <vector>

#include "foundation/Export.h"

// Checks of what the interfaces leave to the caller, for looking for such faults. With the CMake option
// QRTCL_CONTRACT_CHECKS, the library and all that link its target are built with them; without, they are
// nothing. No class has another layout with them: what they must remember stands in a table of their own. So
// parts built with and without work together, and misuse is noticed where the calling part has the checks.
namespace qrtcl {

/// Writes one line with the operation, the object and what is wrong to standard error, and aborts.
[[noreturn]] QRTCL_API void ReportMisuse(char const * operation, void const * object,
                                         char const * misuse) noexcept;

/// Notes what an event calls; an empty list forgets it.
QRTCL_API void NoteDelegates(void const * event, std::vector<void const *> delegates);

/// An event that calls the delegate, as last noted; null if there is none.
QRTCL_API void const * FindEventOf(void const * delegate);

}  // namespace qrtcl

#if defined(QRTCL_CONTRACT_CHECKS)
#define QRTCL_REQUIRE(condition, operation, object, misuse)                                                  \
    ((condition) ? static_cast<void>(0) : qrtcl::ReportMisuse(operation, object, misuse))
#else
#define QRTCL_REQUIRE(condition, operation, object, misuse) static_cast<void>(0)
#endif
