#pragma once

#include "concurrency/LCTimer.h"

/// Base of periodic work: a timer that calls `DoScan`, on the thread that started it (see `LCTimer`).
class QRTCL_API LCTimerScan {
public:
    LCTimerScan();
    LCTimerScan(LCTimerScan const &) = delete;
    LCTimerScan & operator=(LCTimerScan const &) = delete;
    virtual ~LCTimerScan();

    /// The work; nothing here. It may destroy the object.
    virtual void DoScan();

    /// Every so many milliseconds, anew if it runs. False if the system has no timer to give.
    bool Start(int interval);
    void Stop();
    /// Called by the timer.
    void OnTimer(LCTimer & timer);

private:
    LCTimer movTimer;
    LCEvent1Param<LCTimer &>::LCHandler movHandler;
};
