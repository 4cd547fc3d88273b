#include "concurrency/LCTimerScan.h"

LCTimerScan::LCTimerScan() : movHandler(*this, &LCTimerScan::OnTimer) { movTimer.OnTick << movHandler; }

LCTimerScan::~LCTimerScan() { movTimer.OnTick >> movHandler; }

void LCTimerScan::DoScan() {}

bool LCTimerScan::Start(int interval)
{
    movTimer.SetInterval(interval);
    return movTimer.Start();
}

void LCTimerScan::Stop() { movTimer.Stop(); }

void LCTimerScan::OnTimer(LCTimer &) { DoScan(); }
