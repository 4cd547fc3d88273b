#include "time/LCDateTime.h"

#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdlib>

#include "platform/Clock.h"
#include "time/detail/SpanParts.h"
#include "time/detail/TimeText.h"

using namespace qrtcl::time;

namespace {

constexpr TokenLetters tokenLetters("YMDHhmSstZ");

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

/// Days of the year from March of this year to February of the next, so that the leap day ends it.
constexpr int DaysOfMarchYear(long long year) noexcept { return IsLeap(year + 1) ? 366 : 365; }

constexpr short daysSinceMarch[] = {306, 337, 0, 31, 61, 92, 122, 153, 184, 214, 245, 275};

/// The first of a month in years that begin in March, and the days since that March began.
struct MarchDay {
    long long year;
    long long day;
};

constexpr MarchDay FirstOfMonth(long long year, long long month) noexcept
{
    return {year - (month <= 2 ? 1 : 0), daysSinceMarch[month - 1]};
}

/// Days from 1 March of the year 0 to the first of a month from 1 to 12.
constexpr long long DayNumber(long long year, long long month) noexcept
{
    auto const [y, day] = FirstOfMonth(year, month);
    return 365 * y + FloorDivide(y, 4) - FloorDivide(y, 100) + FloorDivide(y, 400) + day;
}

char * PutDate(char * out, LCDateTime const & value) noexcept
{
    out = PutChar(PutField2(out, value.GetDay()), '/');
    out = PutChar(PutField2(out, value.GetMonth()), '/');
    return PutField4(out, value.GetYear());
}

char * PutTime(char * out, LCDateTime const & value) noexcept
{
    return PutThree(out, value.GetHour(), value.GetMin(), value.GetSec(), ':');
}

char * PutDateAndTime(char * out, LCDateTime const & value) noexcept
{
    return PutTime(PutChar(PutDate(out, value), ' '), value);
}

/// The machine's zone: "+HH:mm".
char * PutZone(char * out) noexcept
{
    int const bias = LCDateTime::GetCurrentTimeZoneBias();
    out = PutField2(PutChar(out, bias >= 0 ? '+' : '-'), std::abs(bias / 60));
    return PutField2(PutChar(out, ':'), std::abs(bias % 60));
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

bool LCDateTime::TimeIsInRange() const noexcept
{
    auto const below = [](int field, unsigned int limit) { return static_cast<unsigned int>(field) < limit; };
    return below(mivHour, 24) && below(mivMin, 60) && below(mivSec, 60) && below(mivMSec, 1000);
}

int LCDateTime::MoveTimeInRange(long long milliseconds) noexcept
{
    constexpr unsigned int dayLength = 86'400'000;
    constexpr int back = 25'000;  // more days than a span has, so that the count is positive
    long long const before = ((mivHour * 60 + mivMin) * 60 + mivSec) * 1000 + mivMSec;
    auto const count =
        static_cast<unsigned long long>(before + milliseconds + back * std::int64_t{dayLength});
    auto const time = static_cast<unsigned int>(count % dayLength);
    unsigned int const sec = time / 1000;
    unsigned int const min = time / 60'000;
    unsigned int const hour = time / 3'600'000;
    mivHour = static_cast<int>(hour);
    mivMin = static_cast<int>(min - 60 * hour);
    mivSec = static_cast<int>(sec - 60 * min);
    mivMSec = static_cast<int>(time - 1000 * sec);
    return static_cast<int>(count / dayLength) - back;
}

int LCDateTime::MoveTimeByFields(double seconds, int sign) noexcept
{
    SpanParts const span = Split(seconds);
    int parts[] = {span.milliseconds, span.seconds, span.minutes, span.hours, span.days};
    int * const fields[] = {&mivMSec, &mivSec, &mivMin, &mivHour};
    constexpr int turns[] = {1000, 60, 60, 24};
    for (int i = 0; i < 4; ++i) {
        long long moved = *fields[i] + sign * static_cast<long long>(parts[i]);
        if (sign > 0 ? moved >= turns[i] : moved < 0) {
            moved -= sign * turns[i];
            // The carry goes into the next part, and on from a part that becomes full.
            int next = i + 1;
            for (; next < 4 && ++parts[next] == turns[next]; ++next) parts[next] = 0;
            if (next == 4) ++parts[4];
        }
        *fields[i] = static_cast<int>(moved);
    }
    return sign * parts[4];
}

void LCDateTime::Move(double seconds, int sign) noexcept
{
    auto const span = Cut(seconds);
    int const days = TimeIsInRange() ? MoveTimeInRange(sign * (span.seconds * 1000LL + span.milliseconds))
                                     : MoveTimeByFields(seconds, sign);
    long long const day = static_cast<long long>(mivDay) + days;
    // Without a branch on the sign, which nobody can foresee.
    if (((sign > 0) & (day > 28)) | ((sign < 0) & (day < 1))) {
        CarryDay(day);
    } else {
        mivDay = static_cast<int>(day);
    }
}

void LCDateTime::CarryDay(long long day) noexcept
{
    long long year = mivYear;
    long long month = mivMonth;
    if (!IsMonth(month)) {
        // A month out of range has 31 days; behind it and in front of it are the months of a year.
        for (; day > 31 && !IsMonth(month); day -= 31) {
            if (++month <= 12) continue;
            month = 1;
            ++year;
        }
        for (; day < 1 && !IsMonth(month); day += 31) {
            if (--month >= 1) continue;
            month = 12;
            --year;
        }
        if (!IsMonth(month)) return SetDate(year, month, day);
    }
    auto at = FirstOfMonth(year, month);
    at.day += day - 1;
    while (at.day < 0) at.day += DaysOfMarchYear(--at.year);
    while (at.day >= 365) {
        int const length = DaysOfMarchYear(at.year);
        if (at.day < length) break;
        at.day -= length;
        ++at.year;
    }
    auto const dayOfYear = static_cast<unsigned int>(at.day);
    unsigned int const monthOfYear = (5 * dayOfYear + 2) / 153;  // 0 for March
    unsigned int const wrap = monthOfYear >= 10 ? 1 : 0;
    SetDate(at.year + wrap, monthOfYear + 3 - 12 * wrap, dayOfYear - (153 * monthOfYear + 2) / 5 + 1);
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
    Move(std::fabs(seconds), seconds < 0.0 ? -1 : 1);
    return *this;
}

LCDateTime & LCDateTime::operator-=(LCTimeSpan const & span) noexcept
{
    double const seconds = span.AsSeconds();
    Move(std::fabs(seconds), seconds < 0.0 ? 1 : -1);
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

std::weak_ordering LCDateTime::CompareNear(LCDateTime const & other) const noexcept
{
    if (other.mivTimeZoneBias == mivTimeZoneBias)
        return CompareFields(other, other.mivDay, other.mivHour, other.mivMin);
    long long const min = other.mivHour * 60LL + other.mivMin + BiasFrom(other);
    // What the zone changes is mostly the time of day, and the day within its month.
    int const days = (min >= 1440) - (min < 0);
    long long const day = static_cast<long long>(other.mivDay) + days;
    long long const minOfDay = min - 1440 * days;
    if (other.TimeIsInRange() && minOfDay >= 0 && minOfDay < 1440 && day >= 1 && day <= 28) {
        auto const m = static_cast<unsigned int>(minOfDay);
        return CompareFields(other, static_cast<int>(day), static_cast<int>(m / 60),
                             static_cast<int>(m % 60));
    }
    LCDateTime const here(other, mivTimeZoneBias);
    return CompareFields(here, here.mivDay, here.mivHour, here.mivMin);
}

std::weak_ordering LCDateTime::CompareFields(LCDateTime const & other, int day, int hour,
                                             int min) const noexcept
{
    if (mivYear != other.mivYear) return mivYear <=> other.mivYear;
    if (mivMonth != other.mivMonth) return mivMonth <=> other.mivMonth;
    if (mivDay != day) return mivDay <=> day;
    if (mivHour != hour) return mivHour <=> hour;
    if (mivMin != min) return mivMin <=> min;
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
    LayoutBlock block;
    return TextUpTo(PutDateAndTime(block.data(), *this), block);
}

LCString LCDateTime::StrDate() const
{
    LayoutBlock block;
    return TextUpTo(PutDate(block.data(), *this), block);
}

LCString LCDateTime::StrTime() const
{
    LayoutBlock block;
    return TextUpTo(PutTime(block.data(), *this), block);
}

LCString LCDateTime::StrDetailed() const
{
    LayoutBlock block;
    return TextUpTo(PutMilliseconds(PutDateAndTime(block.data(), *this), mivMSec), block);
}

LCString LCDateTime::StrTimeDetailed() const
{
    LayoutBlock block;
    return TextUpTo(PutMilliseconds(PutTime(block.data(), *this), mivMSec), block);
}

LCString LCDateTime::StrFile() const
{
    LayoutBlock block;
    char * out = PutChar(PutField4(block.data(), mivYear), '-');
    out = PutChar(PutField2(out, mivMonth), '-');
    out = PutChar(PutField2(out, mivDay), '_');
    return TextUpTo(PutThree(out, mivHour, mivMin, mivSec, '-'), block);
}

LCString LCDateTime::StrTimeZone() const
{
    LayoutBlock block;
    return TextUpTo(PutZone(PutDateAndTime(block.data(), *this)), block);
}

LCString LCDateTime::StrDetailedTimeZone() const
{
    LayoutBlock block;
    return TextUpTo(PutZone(PutMilliseconds(PutDateAndTime(block.data(), *this), mivMSec)), block);
}

LCString LCDateTime::StrFormat(LCString const & format) const
{
    return Format(format.str(), tokenLetters, [this](char * out, int run) {
        switch (run) {
        case Run('Y', 4): return PutField4(out, mivYear);
        case Run('Y', 2): return PutField2(out, mivYear % 100);
        case Run('M', 2): return PutField2(out, mivMonth);
        case Run('D', 2): return PutField2(out, mivDay);
        case Run('H', 2): return PutField2(out, mivHour);
        case Run('h', 2): return PutField2(out, mivHour > 12 ? mivHour - 12 : mivHour);
        case Run('m', 2): return PutField2(out, mivMin);
        case Run('S', 2): return PutField2(out, mivSec);
        case Run('s', 3): return PutField3(out, mivMSec);
        case Run('t', 2): return PutChar(PutChar(out, mivHour > 12 ? 'P' : 'A'), 'M');
        case Run('Z', 2): return PutZone(out);
        default: return out;
        }
    });
}
