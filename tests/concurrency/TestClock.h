#pragma once

#include "platform/Ticking.h"

/// While one lives, time stands still, and moves by waiting and by `Advance` only.
class TestClock {
public:
    TestClock()
    {
        mivNow = 1'000'000'000;
        qrtcl::platform::ReplaceTickClock({[]() noexcept { return mivNow; },
                                           [](qrtcl::platform::Moment until) noexcept {
                                               if (until > mivNow) mivNow = until;
                                           }});
    }
    TestClock(TestClock const &) = delete;
    TestClock & operator=(TestClock const &) = delete;
    ~TestClock() { qrtcl::platform::ReplaceTickClock({}); }

    static long Milliseconds() { return static_cast<long>(mivNow / 1'000'000) - 1000; }
    static void Advance(long milliseconds) { mivNow += milliseconds * 1'000'000; }
    static void AdvanceNanoseconds(qrtcl::platform::Moment span) { mivNow += span; }

private:
    static inline qrtcl::platform::Moment mivNow = 0;
};
