#include "time/LCTimeSpan.h"

#include <cmath>

#include "time/detail/SpanParts.h"
#include "time/detail/TimeText.h"

namespace {

using qrtcl::time::Run;
using qrtcl::time::SpanParts;
using qrtcl::time::TextBlock;

constexpr qrtcl::time::TokenLetters tokenLetters("DMHhmSs");

int AllHours(SpanParts const & parts) noexcept { return parts.hours + 24 * parts.days; }

void PutDaysAndTime(TextBlock & text, SpanParts const & parts) noexcept
{
    if (parts.days > 0) {
        text.Field(parts.days, 2);
        text.Char(' ');
    }
    text.Time(parts.hours, parts.minutes, parts.seconds);
}

}  // namespace

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
    auto const parts = qrtcl::time::Split(mdvSeconds);
    hours = AllHours(parts);
    minutes = parts.minutes;
    seconds = parts.seconds;
    milliseconds = parts.milliseconds;
}

void LCTimeSpan::CeilToSeconds() noexcept { mdvSeconds = std::ceil(mdvSeconds); }
void LCTimeSpan::FloorToSeconds() noexcept { mdvSeconds = std::floor(mdvSeconds); }

LCString LCTimeSpan::Str() const
{
    TextBlock text;
    PutDaysAndTime(text, qrtcl::time::Split(mdvSeconds));
    return text.Text();
}

LCString LCTimeSpan::StrDetailed() const
{
    auto const parts = qrtcl::time::Split(mdvSeconds);
    TextBlock text;
    PutDaysAndTime(text, parts);
    text.Milliseconds(parts.milliseconds);
    return text.Text();
}

LCString LCTimeSpan::StrTime() const
{
    auto const parts = qrtcl::time::Split(mdvSeconds);
    TextBlock text;
    text.Time(AllHours(parts), parts.minutes, parts.seconds);
    return text.Text();
}

LCString LCTimeSpan::StrTimeDetailed() const
{
    auto const parts = qrtcl::time::Split(mdvSeconds);
    TextBlock text;
    text.Time(AllHours(parts), parts.minutes, parts.seconds);
    text.Milliseconds(parts.milliseconds);
    return text.Text();
}

LCString LCTimeSpan::StrFormat(LCString const & format) const
{
    auto const parts = qrtcl::time::Split(mdvSeconds);
    return qrtcl::time::Format(format.str(), tokenLetters, [&](TextBlock & text, int run) {
        switch (run) {
        case Run('D', 2): text.Field(parts.days, 2); break;
        case Run('H', 3): text.Field(AllHours(parts), 2); break;
        case Run('H', 2): text.Field(parts.hours, 2); break;
        case Run('h', 3): text.Field(AllHours(parts), 0); break;
        case Run('h', 2): text.Field(parts.hours, 0); break;
        case Run('m', 2): text.Field(parts.minutes, 2); break;
        case Run('S', 2): text.Field(parts.seconds, 2); break;
        case Run('s', 3): text.Field(parts.milliseconds, 3); break;
        default: break;
        }
    });
}
