#include "concurrency/LCClock.h"

LCClock::LCClock(LCString const & format) : movFormat(format) {}

void LCClock::Start() { LCTimerScan::Start(1000); }

void LCClock::DoScan()
{
    movCurrent = LCDateTime::GetCurrentDateTime();
    OnChange();
}

void LCClock::SetFormat(LCString const & format)
{
    movFormat = format;
    OnChange();
}

LCString LCClock::GetCurDateTimeStr(LCString const & format) const
{
    return movCurrent.StrFormat(format.IsEmpty() ? movFormat : format);
}
