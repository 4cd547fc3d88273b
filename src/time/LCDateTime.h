#pragma once

#include <compare>

#include "foundation/Export.h"
#include "time/LCTimeSpan.h"

/// A reading of a wall clock, year to millisecond, with the minutes that it lies ahead of UTC.
///
/// The eight fields are plain integers, and nothing checks them: what is below holds for fields in range, and
/// a field out of range is carried as far as an operation says. No time-zone rules stand behind the bias:
/// arithmetic keeps it, and only the constructor with a new bias moves a reading into another zone.
class QRTCL_API LCDateTime {
public:
    /// 1 January 1900, 00:00:00.000, bias 0.
    LCDateTime() = default;
    LCDateTime(LCDateTime const &) = default;
    LCDateTime(LCDateTime &&) noexcept = default;
    LCDateTime & operator=(LCDateTime const &) = default;
    LCDateTime & operator=(LCDateTime &&) noexcept = default;
    virtual ~LCDateTime() = default;

    /// Midnight with bias 0.
    LCDateTime(int year, int month, int day) : mivYear(year), mivMonth(month), mivDay(day) {}
    /// With the machine's present bias, which costs a look at the system's zone.
    LCDateTime(int year, int month, int day, int hour, int min, int sec, int msec);
    LCDateTime(int year, int month, int day, int hour, int min, int sec, int msec, int bias)
        : mivYear(year), mivMonth(month), mivDay(day), mivHour(hour), mivMin(min), mivSec(sec), mivMSec(msec),
          mivTimeZoneBias(bias)
    {}
    /// The same instant as the clock of another zone shows it.
    LCDateTime(LCDateTime const & instant, int bias);

    int GetYear() const noexcept { return mivYear; }
    /// 1 to 12.
    int GetMonth() const noexcept { return mivMonth; }
    /// From 1.
    int GetDay() const noexcept { return mivDay; }
    int GetHour() const noexcept { return mivHour; }
    int GetMin() const noexcept { return mivMin; }
    int GetSec() const noexcept { return mivSec; }
    int GetMSec() const noexcept { return mivMSec; }
    /// In minutes: 60 for one hour east of Greenwich.
    int GetTimeZoneBias() const noexcept { return mivTimeZoneBias; }

    // Setters store what they get, whatever it is, and return true.

    bool SetYear(int year) noexcept { return Set(mivYear, year); }
    bool SetMonth(int month) noexcept { return Set(mivMonth, month); }
    bool SetDay(int day) noexcept { return Set(mivDay, day); }
    bool SetHour(int hour) noexcept { return Set(mivHour, hour); }
    bool SetMin(int min) noexcept { return Set(mivMin, min); }
    bool SetSec(int sec) noexcept { return Set(mivSec, sec); }
    bool SetMSec(int msec) noexcept { return Set(mivMSec, msec); }
    /// Relabels the reading and moves no other field, so the instant changes.
    bool SetTimeZoneBias(int bias) noexcept { return Set(mivTimeZoneBias, bias); }

    /// 1 January 1900; the time and the bias stay.
    void ClearDate() noexcept;
    /// Midnight; the date and the bias stay.
    void ClearTime() noexcept;

    // Adding a span adds its whole milliseconds, and at most 2147483647 seconds, about 68 years. A day behind
    // the end of its month is carried into the next one, by an empty span too; of an hour, minute, second or
    // millisecond out of range only one turn is carried.

    LCDateTime & operator+=(LCTimeSpan const & span) noexcept;
    LCDateTime & operator-=(LCTimeSpan const & span) noexcept;
    LCDateTime operator+(LCTimeSpan const & span) const noexcept;
    LCDateTime operator-(LCTimeSpan const & span) const noexcept;
    void AddTimeSpan(LCTimeSpan const & span) noexcept { *this += span; }
    /// Moves month and year only: 31 January plus one month is a day 31 of February until a span is added.
    void AddMonths(int months) noexcept;

    /// From this reading to `other` in whole seconds, without the milliseconds; positive if `other` is later.
    /// Plain calendar arithmetic for every year; fields out of range count on.
    LCTimeSpan GetTimeSpan(LCDateTime const & other) const noexcept;
    /// The same with the milliseconds.
    LCTimeSpan GetTimeSpanHighPrecision(LCDateTime const & other) const noexcept;

    // The instants compare: if the biases differ, `b` is taken into the zone of `a`. Then the fields compare
    // from year to millisecond, so a day 31 of February is not the 3rd of March.

    friend bool operator==(LCDateTime const & a, LCDateTime const & b) noexcept { return a.Compare(b) == 0; }
    friend std::weak_ordering operator<=>(LCDateTime const & a, LCDateTime const & b) noexcept
    {
        return a.Compare(b);
    }

    static bool IsLeapYear(int year) noexcept;
    bool IsLeapYear() const noexcept { return IsLeapYear(mivYear); }
    /// 31 for a month outside 1 to 12.
    static int GetNrDaysMonth(int year, int month) noexcept;
    int GetNrDaysMonth() const noexcept { return GetNrDaysMonth(mivYear, mivMonth); }

    // Texts. A field is filled up with "0" to its width, in front of a minus sign too; the year has 4 places.
    // The zone is the machine's present one in hours and minutes, "+01:00", not the bias of the value.

    /// "DD/MM/YYYY HH:mm:SS".
    LCString Str() const;
    /// "DD/MM/YYYY".
    LCString StrDate() const;
    /// "HH:mm:SS".
    LCString StrTime() const;
    /// "DD/MM/YYYY HH:mm:SS,sss".
    LCString StrDetailed() const;
    /// "HH:mm:SS,sss".
    LCString StrTimeDetailed() const;
    /// "YYYY-MM-DD_HH-mm-SS".
    LCString StrFile() const;
    /// "DD/MM/YYYY HH:mm:SS" and directly behind it the zone.
    LCString StrTimeZone() const;
    /// "DD/MM/YYYY HH:mm:SS,sss" and directly behind it the zone.
    LCString StrDetailedTimeZone() const;
    /// Runs of letters stand for YYYY, YY, MM, DD, HH, mm, SS, sss as above, ZZ the zone, hh the hour of the
    /// 12-hour dial (00 to 12) and tt "AM" or "PM", where 12 counts as "AM". Other runs of these letters
    /// vanish; every other character stays.
    LCString StrFormat(LCString const & format) const;

    // The clock. The application's clock is the system's plus an offset of the process, which has no lock:
    // set it before other threads read it.

    static LCDateTime GetCurrentSystemDateTime() noexcept;
    static LCDateTime GetCurrentDateTime() noexcept;
    /// Midnight of today with bias 0, not the machine's.
    static LCDateTime GetCurrentDate() noexcept;
    /// The time of day with year, month and day 0.
    static LCDateTime GetTickCount() noexcept;
    /// The machine's bias in minutes, daylight saving included; asked for anew at each call.
    static int GetCurrentTimeZoneBias() noexcept;
    /// Lets the application's clock read `now`, to the whole second.
    static void SetCurrentDateTime(LCDateTime const & now) noexcept;
    static void SetCurrentDateTimeOffset(LCTimeSpan const & offset) noexcept
    {
        movCurrentDateTimeOffset = offset;
    }
    static LCTimeSpan GetCurrentDateTimeOffset() noexcept { return movCurrentDateTimeOffset; }

protected:
    static LCTimeSpan movCurrentDateTimeOffset;

private:
    static bool Set(int & field, int value) noexcept
    {
        field = value;
        return true;
    }
    bool TimeIsInRange() const noexcept;
    /// Both move hour to millisecond by less than 25000 days, and give the days to go on by. The first one
    /// takes a time in range and one count, the second any fields one by one, with the same result.
    int MoveTimeInRange(long long milliseconds) noexcept;
    int MoveTimeByFields(double seconds, int sign) noexcept;
    void Move(double seconds, int sign) noexcept;
    void CarryDay(long long day) noexcept;
    void SetDate(long long year, long long month, long long day) noexcept;
    long long SecondsOfCalendar() const noexcept;

    bool DateIsPlain() const noexcept
    {
        return static_cast<unsigned int>(mivMonth) - 1 < 12 && static_cast<unsigned int>(mivDay) - 1 < 31;
    }
    /// A count that grows with plain dates, as if each month had 31 days.
    long long PlainDay() const noexcept { return mivYear * 372LL + mivMonth * 31LL + mivDay; }
    /// How far this zone lies ahead of the other one.
    long long BiasFrom(LCDateTime const & other) const noexcept
    {
        return static_cast<long long>(mivTimeZoneBias) - other.mivTimeZoneBias;
    }
    std::weak_ordering Compare(LCDateTime const & other) const noexcept
    {
        // Zones up to two days apart, and what a time of day carries, move a date by less than 6 days, which
        // are at most 10 by this count.
        long long const apart = PlainDay() - other.PlainDay();
        long long const bias = BiasFrom(other);
        bool const isFar = (apart < -10 || apart > 10) && bias >= -2880 && bias <= 2880;
        return isFar && DateIsPlain() && other.DateIsPlain() ? apart <=> 0 : CompareNear(other);
    }
    std::weak_ordering CompareNear(LCDateTime const & other) const noexcept;
    std::weak_ordering CompareFields(LCDateTime const & other, int day, int hour, int min) const noexcept;

    int mivYear = 1900;
    int mivMonth = 1;
    int mivDay = 1;
    int mivHour = 0;
    int mivMin = 0;
    int mivSec = 0;
    int mivMSec = 0;
    int mivTimeZoneBias = 0;
};

/// The value for no date: that of a default `LCDateTime`. No operation treats it specially.
class QRTCL_API LCDateTimeNone : public LCDateTime {};
