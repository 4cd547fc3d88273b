#include "foundation/FiringMark.h"

namespace qrtcl {

constinit thread_local FiringMark * cotFirings = nullptr;

// Called by the signal handler that ends a thread, which may have interrupted the thread sanitizer.
__attribute__((no_sanitize("thread"))) void ForsakeFirings() noexcept
{
    for (; cotFirings != nullptr; cotFirings = cotFirings->outer) {
        FiringState * const state = cotFirings->state;
        if (state == nullptr) continue;
        state->isFiring = false;
        state->mark = nullptr;
    }
}

}  // namespace qrtcl
