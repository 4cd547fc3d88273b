#pragma once

#include "concurrency/LCEvent.h"
#include "concurrency/LCRWCriticalSection.h"
#include "foundation/Export.h"

namespace qrtcl {
class TimerTable;
}

/// Fires an event at a fixed period, on the thread that started it and while that thread runs its
/// `LHCMessageLoop`.
///
/// Ticks keep their phase: each is due one interval after the last one was due, however late that came. What
/// a busy thread misses is made up for by one tick. A receiver may start, stop and destroy the timer that
/// calls it.
///
/// A timer belongs to the thread that started it. Another thread may stop or destroy it when that thread has
/// ended, or at a time when it can't be in a tick.
class QRTCL_API LCTimer {
public:
    /// Not running, with an interval of 1000 ms.
    LCTimer() = default;
    /// Copy stopped timers only. The copy of a running one gets no ticks, but stops the other when it stops.
    LCTimer(LCTimer const &) = default;
    /// Stops this timer if it runs; else as the copy.
    LCTimer & operator=(LCTimer const & other);
    /// Stops.
    virtual ~LCTimer();

    /// Fires `OnTick`.
    virtual void DoTimer();

    /// Begins a new period, also if it runs. False if the system has no timer to give; it then does not run.
    bool Start();
    void Stop();
    bool IsRunning() const { return mivID != 0; }

    /// Milliseconds.
    int GetInterval() const { return mivInterval; }
    /// Restarts the timer if it runs; if that fails, it is stopped. Below 1, it ticks every millisecond.
    void SetInterval(int interval);

    LCEvent1Param<LCTimer &> OnTick;

protected:
    /// Guards the table of running timers. Never held while receivers run.
    static LCRWCriticalSection movCS;

private:
    struct Access;

    static qrtcl::TimerTable movTimers;

    unsigned int mivID = 0;
    int mivInterval = 1000;
};
