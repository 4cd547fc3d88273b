#include "platform/Clock.h"

#include <atomic>
#include <time.h>

namespace qrtcl::platform {

namespace {

constinit std::atomic<LocalTime (*)() noexcept> cpvReplacement{nullptr};

}  // namespace

LocalTime LocalTimeAt(std::int64_t milliseconds) noexcept
{
    std::int64_t millisecond = milliseconds % 1000;
    if (millisecond < 0) millisecond += 1000;
    auto const seconds = static_cast<::time_t>((milliseconds - millisecond) / 1000);

    ::tzset();  // localtime_r need not do it
    struct tm fields {};
    if (::localtime_r(&seconds, &fields) == nullptr) return {};  // the year does not fit
    // The offset holds the daylight saving of that moment, whatever its length and sign; tm_isdst tells
    // neither.
    return {fields.tm_year + 1900,
            fields.tm_mon + 1,
            fields.tm_mday,
            fields.tm_hour,
            fields.tm_min,
            fields.tm_sec,
            static_cast<int>(millisecond),
            static_cast<int>(fields.tm_gmtoff / 60)};
}

LocalTime ReadClock() noexcept
{
    if (auto const replacement = cpvReplacement.load(std::memory_order_relaxed)) return replacement();
    struct timespec now {};
    ::clock_gettime(CLOCK_REALTIME, &now);
    return LocalTimeAt(std::int64_t{now.tv_sec} * 1000 + now.tv_nsec / 1'000'000);
}

void ReplaceClock(LocalTime (*clock)() noexcept) noexcept { cpvReplacement = clock; }

}  // namespace qrtcl::platform
