#include "concurrency/LCHighResTimer.h"

#include "platform/Ticking.h"

// The counter is the clock of the timers, which counts nanoseconds.
LCHighResTimer::LCHighResTimer() : mivFrequency(1'000'000'000) {}

LCHighResTimer::~LCHighResTimer() = default;

void LCHighResTimer::Start() { mivStart = qrtcl::platform::TickNow(); }

void LCHighResTimer::End() { mivEnd = qrtcl::platform::TickNow(); }
