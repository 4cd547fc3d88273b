#pragma once

#include "foundation/Export.h"

namespace qrtcl {

struct FiringMark;

/// What an event knows of its own firing.
struct FiringState {
    bool isFiring = false;
    /// What died while it was hooked has left null pointers in the list.
    bool hasGaps = false;
    /// Where the firing is under way; null in a copy.
    FiringMark * mark = nullptr;
};

/// An event that the calling thread is firing, in the frame that fires it.
///
/// A thread that is ended from outside leaves its frames without a destructor: the marks tell which events
/// must not point into them any longer.
struct FiringMark {
    FiringState * state;  // null once the event is destroyed
    FiringMark * outer;   // of another event
};

/// The innermost of the calling thread, or null.
[[gnu::tls_model("initial-exec")]] extern QRTCL_API constinit thread_local FiringMark * cotFirings;

/// The events that the calling thread is firing are at rest.
void ForsakeFirings() noexcept;

}  // namespace qrtcl
