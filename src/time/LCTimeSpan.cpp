#include "time/LCTimeSpan.h"

#include <cmath>

#include "time/detail/SpanParts.h"
#include "time/detail/TimeText.h"

using namespace qrtcl::time;

namespace {

constexpr TokenLetters tokenLetters("DMHhmSs");

int AllHours(SpanParts const & parts) noexcept { return parts.hours + 24 * parts.days; }

char * PutDaysAndTime(char * out, SpanParts const & parts) noexcept
{
    if (parts.days > 0) out = PutChar(PutField2(out, parts.days), ' ');
    return PutThree(out, parts.hours, parts.minutes, parts.seconds, ':');
}

char * PutAllTime(char * out, SpanParts const & parts) noexcept
{
    return PutThree(out, AllHours(parts), parts.minutes, parts.seconds, ':');
}

}  // namespace

void LCTimeSpan::Decode(int & days, int & hours, int & minutes, int & seconds,
                        int & milliseconds) const noexcept
{
    auto const parts = Split(mdvSeconds);
    days = parts.days;
    hours = parts.hours;
    minutes = parts.minutes;
    seconds = parts.seconds;
    milliseconds = parts.milliseconds;
}

void LCTimeSpan::Decode(int & hours, int & minutes, int & seconds, int & milliseconds) const noexcept
{
    auto const parts = Split(mdvSeconds);
    hours = AllHours(parts);
    minutes = parts.minutes;
    seconds = parts.seconds;
    milliseconds = parts.milliseconds;
}

void LCTimeSpan::CeilToSeconds() noexcept { mdvSeconds = std::ceil(mdvSeconds); }
void LCTimeSpan::FloorToSeconds() noexcept { mdvSeconds = std::floor(mdvSeconds); }

LCString LCTimeSpan::Str() const
{
    LayoutBlock block;
    return TextUpTo(PutDaysAndTime(block.data(), Split(mdvSeconds)), block);
}

LCString LCTimeSpan::StrDetailed() const
{
    LayoutBlock block;
    auto const parts = Split(mdvSeconds);
    return TextUpTo(PutMilliseconds(PutDaysAndTime(block.data(), parts), parts.milliseconds), block);
}

LCString LCTimeSpan::StrTime() const
{
    LayoutBlock block;
    return TextUpTo(PutAllTime(block.data(), Split(mdvSeconds)), block);
}

LCString LCTimeSpan::StrTimeDetailed() const
{
    LayoutBlock block;
    auto const parts = Split(mdvSeconds);
    return TextUpTo(PutMilliseconds(PutAllTime(block.data(), parts), parts.milliseconds), block);
}

LCString LCTimeSpan::StrFormat(LCString const & format) const
{
    auto const parts = Split(mdvSeconds);
    return Format(format.str(), tokenLetters, [&](char * out, int run) {
        switch (run) {
        case Run('D', 2): return PutField2(out, parts.days);
        case Run('H', 3): return PutField2(out, AllHours(parts));
        case Run('H', 2): return PutField2(out, parts.hours);
        case Run('h', 3): return PutAnyField(out, AllHours(parts), 0);
        case Run('h', 2): return PutAnyField(out, parts.hours, 0);
        case Run('m', 2): return PutField2(out, parts.minutes);
        case Run('S', 2): return PutField2(out, parts.seconds);
        case Run('s', 3): return PutField3(out, parts.milliseconds);
        default: return out;
        }
    });
}
