#pragma once

#include "concurrency/detail/TimerTable.h"

// What timers need of the message loop of their thread.
namespace qrtcl {

/// How the loop reaches the timers. It holds starts only, and finds out at each tick whether they still run.
struct TimerAccess {
    /// Null if the timer no longer runs.
    LCTimer * (*find)(TimerStart start);
    std::size_t (*count)();
    void (*tick)(LCTimer & timer);
};

/// Prepares for `StartTicks`. False if the thread can have no loop.
bool MakeRoomForTicks(TimerAccess const & access);

/// Has the loop of this thread tick every so many milliseconds, until `find` gives null.
void StartTicks(TimerStart start, int interval) noexcept;

/// After timers have stopped: the descriptor of this thread's loop no longer becomes readable for them.
void ForgetStopped() noexcept;

}  // namespace qrtcl
