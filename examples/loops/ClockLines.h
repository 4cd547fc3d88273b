#pragma once

#include <cstdio>
#include <cstdlib>
#include <functional>

#include "concurrency/LCClock.h"

/// What all four programs do: a clock that prints a line at each of so many ticks, a second apart, and then
/// says that it is done.
class ClockLines {
public:
    /// The number of ticks is the first argument of the program, 3 without one.
    ClockLines(int argc, char ** argv, std::function<void()> done)
        : mivLeft(argc > 1 ? std::atoi(argv[1]) : 3), movDone(std::move(done))
    {
        movClock.Start();
    }

private:
    void OnChange()
    {
        std::printf("%s\n", movClock.GetCurDateTimeStr("").c_str());
        std::fflush(stdout);
        if (--mivLeft == 0) movDone();
    }

    int mivLeft;
    std::function<void()> movDone;
    LCClock movClock;
    LCEvent0Param::LCHook movHook{movClock.OnChange, *this, &ClockLines::OnChange};
};
