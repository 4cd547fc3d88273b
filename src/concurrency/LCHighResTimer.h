#pragma once

#include <cstdint>

#include "foundation/Export.h"

/// A stopwatch on a monotonic counter of the system.
///
/// The getters give the time from the last `Start` to the last `End`, negative if that came first, and do not
/// look at the running counter. Before both were called, their values mean nothing.
class QRTCL_API LCHighResTimer {
public:
    LCHighResTimer();
    LCHighResTimer(LCHighResTimer const &) = default;
    LCHighResTimer & operator=(LCHighResTimer const &) = default;
    virtual ~LCHighResTimer();

    void Start();
    void End();

    double GetTimeInSeconds() const { return GetTime(1.0); }
    double GetTimeInMilliseconds() const { return GetTime(1000.0); }
    double GetTimeInMicroseconds() const { return GetTime(1000000.0); }
    double GetTimeInNanoseconds() const { return GetTime(1000000000.0); }

private:
    double GetTime(double unitsPerSecond) const
    {
        return static_cast<double>(mivEnd - mivStart) * unitsPerSecond / static_cast<double>(mivFrequency);
    }

    std::int64_t mivStart = 0;
    std::int64_t mivEnd = 0;
    std::int64_t mivFrequency;
};
