#pragma once

#include "concurrency/LCTimerScan.h"
#include "foundation/LCString.h"
#include "time/LCDateTime.h"

/// Keeps the application's time once a second, and gives it as text. Ticks on the thread that started it (see
/// `LCTimer`).
class QRTCL_API LCClock : public LCTimerScan {
public:
    /// Does not start the clock: until its first tick it shows 1 January 1900.
    explicit LCClock(LCString const & format = "DD/MM/YYYY HH:mm:SS");

    void Start();

    /// Takes the time and fires `OnChange`.
    void DoScan() override;

    /// A format of `LCDateTime::StrFormat`. Fires `OnChange`.
    void SetFormat(LCString const & format);

    /// The time of the last tick, in a format of its own or, if that is empty, in that of the clock.
    LCString GetCurDateTimeStr(LCString const & format) const;

    /// The shown time or its format has changed.
    LCEvent0Param OnChange;

private:
    LCDateTime movCurrent;
    LCString movFormat;
};
