#pragma once

#include <concepts>

#include "concurrency/LCEvent.h"
#include "foundation/Export.h"
#include "foundation/LCTypes.h"

/// A thread whose work is an event: it runs whatever receivers are hooked to `OnExecute`, in their order, and
/// ends.
class QRTCL_API LCThread {
public:
    /// The argument says how a derived class starts; nothing is done with it here.
    template <std::same_as<bool> Bool> explicit LCThread(Bool) {}
    LCThread(LCThread const &) = default;
    LCThread & operator=(LCThread const &) = default;
    virtual ~LCThread();

    virtual void Suspend() = 0;
    virtual void Resume() = 0;
    virtual bool IsTerminated() = 0;
    /// Asks the thread to end: receivers look at `IsTerminated` and return.
    virtual void Terminate() = 0;
    /// Milliseconds, 0xFFFFFFFF for no limit.
    virtual void WaitFor(LCULong timeout) = 0;
    virtual void SetPriorityHighest() = 0;
    virtual void SetPriorityHigher() = 0;
    virtual void SetPriorityNormal() = 0;
    virtual void SetPriorityLower() = 0;
    virtual void SetPriorityLowest() = 0;

    /// The work. Fired on the new thread; hook the receivers before the start.
    LCEvent1Param<LCThread &> OnExecute;
};
