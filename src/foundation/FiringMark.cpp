#include "foundation/FiringMark.h"

namespace qrtcl {

constinit thread_local FiringMark * cotFirings = nullptr;

// Called by the signal handler that ends a thread, which may have interrupted the thread sanitizer.
__attribute__((no_sanitize("thread"))) void ForsakeFirings() noexcept
{
    for (; cotFirings != nullptr; cotFirings = cotFirings->outer) {
        if (cotFirings->isGone) continue;
        cotFirings->firing = false;
        cotFirings->gone = nullptr;
    }
}

}  // namespace qrtcl
