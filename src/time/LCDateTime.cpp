#include "time/LCDateTime.h"

#include <cstdlib>

#include "platform/Clock.h"
#include "time/detail/SpanParts.h"
#include "time/detail/TimeText.h"

namespace {

using qrtcl::time::Run;
using qrtcl::time::SpanParts;
using qrtcl::time::TextBlock;

constexpr qrtcl::time::TokenLetters tokenLetters("YMDHhmSstZ");

/// Adds to a part what a field carries into it; a part that becomes full goes on into the next larger one.
struct Carry {
    static void IntoHours(SpanParts & parts) noexcept
    {
        if (++parts.hours != 24) return;
        parts.hours = 0;
        ++parts.days;
    }
    static void IntoMinutes(SpanParts & parts) noexcept
    {
        if (++parts.minutes != 60) return;
        parts.minutes = 0;
        IntoHours(parts);
    }
    static void IntoSeconds(SpanParts & parts) noexcept
    {
        if (++parts.seconds != 60) return;
        parts.seconds = 0;
        IntoMinutes(parts);
    }
};

/// Moves a field by a part, forward with Sign 1, back with -1. If it leaves its range on that side, it goes
/// back by one turn, and the result is true.
template <int Sign> bool MoveField(int & field, int part, int turn) noexcept
{
    long long moved = field + Sign * static_cast<long long>(part);
    bool const turned = Sign > 0 ? moved >= turn : moved < 0;
    if (turned) moved -= Sign * turn;
    field = static_cast<int>(moved);
    return turned;
}

// Calendar arithmetic is done in 64 bits: the fields may hold anything.

constexpr long long FloorDivide(long long a, long long b) noexcept { return a / b - (a % b < 0 ? 1 : 0); }

constexpr bool IsLeap(long long year) noexcept
{
    return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}

constexpr int DaysOfMonth(long long year, long long month) noexcept
{
    if (month == 2) return IsLeap(year) ? 29 : 28;
    return month == 4 || month == 6 || month == 9 || month == 11 ? 30 : 31;
}

constexpr bool IsMonth(long long month) noexcept { return month >= 1 && month <= 12; }

/// The days of the twelve months from this one on.
constexpr int DaysOfTwelveMonths(long long year, long long month) noexcept
{
    return IsLeap(month <= 2 ? year : year + 1) ? 366 : 365;
}

/// Days from 1 March of the year 0 to the first of a month from 1 to 12.
constexpr long long DayNumber(long long year, long long month) noexcept
{
    // Years from March to February end with the leap day.
    long long const y = month > 2 ? year : year - 1;
    long long const m = month > 2 ? month - 3 : month + 9;
    return 365 * y + FloorDivide(y, 4) - FloorDivide(y, 100) + FloorDivide(y, 400) + (153 * m + 2) / 5;
}

void PutDate(TextBlock & text, LCDateTime const & value) noexcept
{
    text.Field(value.GetDay(), 2);
    text.Char('/');
    text.Field(value.GetMonth(), 2);
    text.Char('/');
    text.Field(value.GetYear(), 4);
}

void PutTime(TextBlock & text, LCDateTime const & value) noexcept
{
    text.Time(value.GetHour(), value.GetMin(), value.GetSec());
}

void PutDateAndTime(TextBlock & text, LCDateTime const & value) noexcept
{
    PutDate(text, value);
    text.Char(' ');
    PutTime(text, value);
}

/// The machine's zone: "+HH:mm".
void PutZone(TextBlock & text) noexcept
{
    int const bias = LCDateTime::GetCurrentTimeZoneBias();
    text.Char(bias >= 0 ? '+' : '-');
    text.Field(std::abs(bias / 60), 2);
    text.Char(':');
    text.Field(std::abs(bias % 60), 2);
}

}  // namespace

LCDateTime::LCDateTime(int year, int month, int day, int hour, int min, int sec, int msec)
    : LCDateTime(year, month, day, hour, min, sec, msec, GetCurrentTimeZoneBias())
{}

LCDateTime::LCDateTime(LCDateTime const & instant, int bias) : LCDateTime(instant)
{
    mivTimeZoneBias = bias;
    *this += (static_cast<double>(bias) - instant.mivTimeZoneBias) * 60.0;
}

void LCDateTime::ClearDate() noexcept
{
    mivYear = 1900;
    mivMonth = 1;
    mivDay = 1;
}

void LCDateTime::ClearTime() noexcept
{
    mivHour = 0;
    mivMin = 0;
    mivSec = 0;
    mivMSec = 0;
}

template <int Sign> void LCDateTime::Move(double seconds) noexcept
{
    SpanParts parts = qrtcl::time::Split(seconds);
    if (MoveField<Sign>(mivMSec, parts.milliseconds, 1000)) Carry::IntoSeconds(parts);
    if (MoveField<Sign>(mivSec, parts.seconds, 60)) Carry::IntoMinutes(parts);
    if (MoveField<Sign>(mivMin, parts.minutes, 60)) Carry::IntoHours(parts);
    if (MoveField<Sign>(mivHour, parts.hours, 24)) ++parts.days;

    long long const day = mivDay + Sign * static_cast<long long>(parts.days);
    if (Sign > 0 ? day > 28 : day < 1) {
        Sign > 0 ? CarryDayForward(day) : CarryDayBack(day);
    } else {
        mivDay = static_cast<int>(day);
    }
}

// Far days go by twelve months at a time, which ends where single months would.

void LCDateTime::CarryDayForward(long long day) noexcept
{
    long long year = mivYear;
    long long month = mivMonth;
    while (day > 366 && IsMonth(month)) day -= DaysOfTwelveMonths(year++, month);
    while (day > DaysOfMonth(year, month)) {
        day -= DaysOfMonth(year, month);
        if (++month > 12) {
            month = 1;
            ++year;
        }
    }
    SetDate(year, month, day);
}

void LCDateTime::CarryDayBack(long long day) noexcept
{
    long long year = mivYear;
    long long month = mivMonth;
    while (day < 1 - 366 && IsMonth(month)) day += DaysOfTwelveMonths(--year, month);
    while (day < 1) {
        day += DaysOfMonth(year, --month);  // month 0 has the 31 days of December
        if (month < 1) {
            month = 12;
            --year;
        }
    }
    SetDate(year, month, day);
}

void LCDateTime::SetDate(long long year, long long month, long long day) noexcept
{
    mivYear = static_cast<int>(year);
    mivMonth = static_cast<int>(month);
    mivDay = static_cast<int>(day);
}

LCDateTime & LCDateTime::operator+=(LCTimeSpan const & span) noexcept
{
    double const seconds = span.AsSeconds();
    seconds < 0.0 ? Move<-1>(-seconds) : Move<1>(seconds);
    return *this;
}

LCDateTime & LCDateTime::operator-=(LCTimeSpan const & span) noexcept
{
    double const seconds = span.AsSeconds();
    seconds < 0.0 ? Move<1>(-seconds) : Move<-1>(seconds);
    return *this;
}

LCDateTime LCDateTime::operator+(LCTimeSpan const & span) const noexcept
{
    LCDateTime moved = *this;
    moved += span;
    return moved;
}

LCDateTime LCDateTime::operator-(LCTimeSpan const & span) const noexcept
{
    LCDateTime moved = *this;
    moved -= span;
    return moved;
}

void LCDateTime::AddMonths(int months) noexcept
{
    long long const month = static_cast<long long>(mivMonth) + months - 1;
    long long const years = FloorDivide(month, 12);
    SetDate(mivYear + years, month - 12 * years + 1, mivDay);
}

long long LCDateTime::SecondsOfCalendar() const noexcept
{
    long long const month = static_cast<long long>(mivMonth) - 1;
    long long const years = FloorDivide(month, 12);
    long long const days = DayNumber(mivYear + years, month - 12 * years + 1) + mivDay;
    return days * 86400 + mivHour * 3600LL + mivMin * 60LL + mivSec;
}

LCTimeSpan LCDateTime::GetTimeSpan(LCDateTime const & other) const noexcept
{
    if (other.mivTimeZoneBias != mivTimeZoneBias) return GetTimeSpan(LCDateTime(other, mivTimeZoneBias));
    return static_cast<double>(other.SecondsOfCalendar() - SecondsOfCalendar());
}

LCTimeSpan LCDateTime::GetTimeSpanHighPrecision(LCDateTime const & other) const noexcept
{
    return GetTimeSpan(other) + (static_cast<double>(other.mivMSec) - mivMSec) / 1000.0;
}

std::weak_ordering LCDateTime::Compare(LCDateTime const & other) const noexcept
{
    if (other.mivTimeZoneBias != mivTimeZoneBias) return Compare(LCDateTime(other, mivTimeZoneBias));
    if (mivYear != other.mivYear) return mivYear <=> other.mivYear;
    if (mivMonth != other.mivMonth) return mivMonth <=> other.mivMonth;
    if (mivDay != other.mivDay) return mivDay <=> other.mivDay;
    if (mivHour != other.mivHour) return mivHour <=> other.mivHour;
    if (mivMin != other.mivMin) return mivMin <=> other.mivMin;
    if (mivSec != other.mivSec) return mivSec <=> other.mivSec;
    return mivMSec <=> other.mivMSec;
}

bool LCDateTime::IsLeapYear(int year) noexcept { return IsLeap(year); }

int LCDateTime::GetNrDaysMonth(int year, int month) noexcept { return DaysOfMonth(year, month); }

LCDateTime LCDateTime::GetCurrentSystemDateTime() noexcept
{
    auto const now = qrtcl::platform::ReadClock();
    return {now.year, now.month, now.day, now.hour, now.minute, now.second, now.millisecond, now.bias};
}

LCDateTime LCDateTime::GetCurrentDateTime() noexcept
{
    LCDateTime now = GetCurrentSystemDateTime();
    if (movCurrentDateTimeOffset != 0.0) now += movCurrentDateTimeOffset;
    return now;
}

LCDateTime LCDateTime::GetCurrentDate() noexcept
{
    LCDateTime const now = GetCurrentDateTime();
    return {now.mivYear, now.mivMonth, now.mivDay};
}

LCDateTime LCDateTime::GetTickCount() noexcept
{
    LCDateTime now = GetCurrentDateTime();
    now.SetDate(0, 0, 0);
    return now;
}

int LCDateTime::GetCurrentTimeZoneBias() noexcept { return qrtcl::platform::ReadClock().bias; }

void LCDateTime::SetCurrentDateTime(LCDateTime const & now) noexcept
{
    movCurrentDateTimeOffset = GetCurrentSystemDateTime().GetTimeSpan(now);
}

LCString LCDateTime::Str() const
{
    TextBlock text;
    PutDateAndTime(text, *this);
    return text.Text();
}

LCString LCDateTime::StrDate() const
{
    TextBlock text;
    PutDate(text, *this);
    return text.Text();
}

LCString LCDateTime::StrTime() const
{
    TextBlock text;
    PutTime(text, *this);
    return text.Text();
}

LCString LCDateTime::StrDetailed() const
{
    TextBlock text;
    PutDateAndTime(text, *this);
    text.Milliseconds(mivMSec);
    return text.Text();
}

LCString LCDateTime::StrTimeDetailed() const
{
    TextBlock text;
    PutTime(text, *this);
    text.Milliseconds(mivMSec);
    return text.Text();
}

LCString LCDateTime::StrFile() const
{
    TextBlock text;
    text.Field(mivYear, 4);
    text.Char('-');
    text.Field(mivMonth, 2);
    text.Char('-');
    text.Field(mivDay, 2);
    text.Char('_');
    text.Field(mivHour, 2);
    text.Char('-');
    text.Field(mivMin, 2);
    text.Char('-');
    text.Field(mivSec, 2);
    return text.Text();
}

LCString LCDateTime::StrTimeZone() const
{
    TextBlock text;
    PutDateAndTime(text, *this);
    PutZone(text);
    return text.Text();
}

LCString LCDateTime::StrDetailedTimeZone() const
{
    TextBlock text;
    PutDateAndTime(text, *this);
    text.Milliseconds(mivMSec);
    PutZone(text);
    return text.Text();
}

LCString LCDateTime::StrFormat(LCString const & format) const
{
    return qrtcl::time::Format(format.str(), tokenLetters, [this](TextBlock & text, int run) {
        switch (run) {
        case Run('Y', 4): text.Field(mivYear, 4); break;
        case Run('Y', 2): text.Field(mivYear % 100, 2); break;
        case Run('M', 2): text.Field(mivMonth, 2); break;
        case Run('D', 2): text.Field(mivDay, 2); break;
        case Run('H', 2): text.Field(mivHour, 2); break;
        case Run('h', 2): text.Field(mivHour > 12 ? mivHour - 12 : mivHour, 2); break;
        case Run('m', 2): text.Field(mivMin, 2); break;
        case Run('S', 2): text.Field(mivSec, 2); break;
        case Run('s', 3): text.Field(mivMSec, 3); break;
        case Run('t', 2):
            text.Char(mivHour > 12 ? 'P' : 'A');
            text.Char('M');
            break;
        case Run('Z', 2): PutZone(text); break;
        default: break;
        }
    });
}
