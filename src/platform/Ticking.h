#pragma once

#include "foundation/Export.h"
#include "platform/Waiting.h"

// The clock behind timers and stopwatches, and alarms that it sets off.
namespace qrtcl::platform {

/// Now, on the clock of the timers.
QRTCL_API Moment TickNow() noexcept;

/// A descriptor that becomes readable at a moment. Negative if the system gives none.
int OpenAlarm() noexcept;
void CloseAlarm(int alarm) noexcept;

/// Makes the alarm readable at that moment and not before; `never` switches it off. May be called from any
/// thread.
void SetAlarm(int alarm, Moment moment) noexcept;

/// Returns when the alarm, set to `moment`, is readable, or at `until`, or when a signal has come.
void AwaitAlarm(int alarm, Moment moment, Moment until) noexcept;

/// Another clock for tests, which moves time by waiting: `wait` is called instead of `AwaitAlarm`, with the
/// earlier of the two moments. Alarms themselves keep to the system's clock. An empty one puts that back.
struct TickClock {
    Moment (*now)() noexcept = nullptr;
    void (*wait)(Moment until) noexcept = nullptr;
};
QRTCL_API void ReplaceTickClock(TickClock const & clock) noexcept;

}  // namespace qrtcl::platform
