#pragma once

#include "foundation/Export.h"

namespace qrtcl {

/// An event that the calling thread is firing, in the frame that fires it.
///
/// A thread that is ended from outside leaves its frames without a destructor: the marks tell which events
/// must not point into them any longer.
struct FiringMark {
    bool & firing;        // the event's
    bool *& gone;         // where the event holds the address of `isGone`
    FiringMark * outer;   // of another event
    bool isGone = false;  // the event is destroyed
};

/// The innermost of the calling thread, or null.
[[gnu::tls_model("initial-exec")]] extern QRTCL_API constinit thread_local FiringMark * cotFirings;

/// The events that the calling thread is firing are at rest.
void ForsakeFirings() noexcept;

}  // namespace qrtcl
