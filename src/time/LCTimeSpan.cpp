#include "time/LCTimeSpan.h"

#include <cmath>

#include "time/detail/SpanParts.h"

void LCTimeSpan::Decode(int & days, int & hours, int & minutes, int & seconds,
                        int & milliseconds) const noexcept
{
    auto const parts = qrtcl::time::Split(mdvSeconds);
    days = parts.days;
    hours = parts.hours;
    minutes = parts.minutes;
    seconds = parts.seconds;
    milliseconds = parts.milliseconds;
}

void LCTimeSpan::Decode(int & hours, int & minutes, int & seconds, int & milliseconds) const noexcept
{
    int days = 0;
    Decode(days, hours, minutes, seconds, milliseconds);
    hours += 24 * days;
}

void LCTimeSpan::CeilToSeconds() noexcept
{
    mdvSeconds = std::ceil(mdvSeconds);
}
void LCTimeSpan::FloorToSeconds() noexcept
{
    mdvSeconds = std::floor(mdvSeconds);
}
