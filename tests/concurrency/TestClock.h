#pragma once

#include "concurrency/LHCMessageLoop.h"
#include "platform/Ticking.h"

/// While one lives, time stands still, and moves by waiting and by `Advance` only. In milliseconds from 0.
struct TestClock {
    TestClock()
    {
        now = 0;
        qrtcl::platform::ReplaceTickClock({[]() noexcept { return now; },
                                           [](qrtcl::platform::Moment until) noexcept { now = std::max(now, until); }});
    }
    TestClock(TestClock const &) = delete;
    TestClock & operator=(TestClock const &) = delete;
    ~TestClock() { qrtcl::platform::ReplaceTickClock({}); }

    static int Now() { return static_cast<int>(now / 1'000'000); }
    static void Advance(int milliseconds) { now += qrtcl::platform::Moment{milliseconds} * 1'000'000; }
    /// Runs what comes within so many milliseconds.
    static void Pass(int milliseconds)
    {
        int const end = Now() + milliseconds;
        while (Now() < end) LHCMessageLoop::ProcessMessages(static_cast<unsigned int>(end - Now()));
    }

    static inline qrtcl::platform::Moment now = 0;
};
