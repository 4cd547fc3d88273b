#pragma once

#include <cstdint>

#include "foundation/Export.h"

// The system's clock and time zone.
namespace qrtcl::platform {

/// A reading of the wall clock, with the minutes that it lies ahead of UTC.
struct LocalTime {
    int year = 1900;
    int month = 1;
    int day = 1;
    int hour = 0;
    int minute = 0;
    int second = 0;
    int millisecond = 0;
    int bias = 0;
};

/// Now. The zone is asked for anew at each call, so that a change of it is seen.
QRTCL_API LocalTime ReadClock() noexcept;

/// What the wall clock shows at a moment, in milliseconds since 1970 in UTC, in the zone that is set now.
QRTCL_API LocalTime LocalTimeAt(std::int64_t milliseconds) noexcept;

/// Puts another clock behind `ReadClock`, for tests; null puts the system's back.
QRTCL_API void ReplaceClock(LocalTime (*clock)() noexcept) noexcept;

}  // namespace qrtcl::platform
