#pragma once

#include <compare>

#include "foundation/Export.h"
#include "foundation/LCString.h"

/// A signed duration: one double of seconds, never rounded or limited.
///
/// All arithmetic is that of doubles and checks nothing: a division by zero stores an infinity or
/// not-a-number.
class QRTCL_API LCTimeSpan {
public:
    constexpr LCTimeSpan() = default;
    constexpr LCTimeSpan(double seconds) : mdvSeconds(seconds) {}
    /// The sum of the parts, of which none has a range: LCTimeSpan(1, 25, 61, 61, 0) is 180121 seconds.
    constexpr LCTimeSpan(int days, int hours, int minutes, int seconds, int milliseconds)
        : mdvSeconds(((days * 86400.0 + hours * 3600.0) + minutes * 60.0) + (milliseconds / 1000.0 + seconds))
    {}

    constexpr double AsSeconds() const { return mdvSeconds; }
    /// Days, hours below 24, and so on down to milliseconds, each with the sign of the span. What is below
    /// the millisecond is cut off, after the double's own rounding: 2.3 seconds give 299 milliseconds. Whole
    /// seconds stop at 2147483647, about 68 years; not-a-number gives zeros.
    void Decode(int & days, int & hours, int & minutes, int & seconds, int & milliseconds) const noexcept;
    /// The same with the days in the hours.
    void Decode(int & hours, int & minutes, int & seconds, int & milliseconds) const noexcept;

    void CeilToSeconds() noexcept;
    void FloorToSeconds() noexcept;

    constexpr LCTimeSpan & operator+=(LCTimeSpan const & rhs)
    {
        mdvSeconds += rhs.mdvSeconds;
        return *this;
    }
    constexpr LCTimeSpan & operator-=(LCTimeSpan const & rhs)
    {
        mdvSeconds -= rhs.mdvSeconds;
        return *this;
    }
    constexpr LCTimeSpan & operator*=(double factor)
    {
        mdvSeconds *= factor;
        return *this;
    }
    constexpr LCTimeSpan & operator/=(double divisor)
    {
        mdvSeconds /= divisor;
        return *this;
    }
    constexpr LCTimeSpan operator+(LCTimeSpan const & rhs) const { return mdvSeconds + rhs.mdvSeconds; }
    constexpr LCTimeSpan operator-(LCTimeSpan const & rhs) const { return mdvSeconds - rhs.mdvSeconds; }
    constexpr LCTimeSpan operator-() const { return -mdvSeconds; }
    constexpr LCTimeSpan operator*(double factor) const { return mdvSeconds * factor; }
    constexpr LCTimeSpan operator/(double divisor) const { return mdvSeconds / divisor; }

    /// Exact, as doubles compare: with not-a-number only `!=` is true.
    constexpr bool operator==(LCTimeSpan const &) const = default;
    constexpr std::partial_ordering operator<=>(LCTimeSpan const &) const = default;

    // Texts. A field is filled up with "0" to its width, in front of a minus sign too: each part of a
    // negative span shows its own sign, -100 seconds are "00:-1:-40".

    /// "HH:mm:SS", with "DD " in front if there are days; negative days are not shown.
    LCString Str() const;
    /// The same with ",sss" behind.
    LCString StrDetailed() const;
    /// "HH:mm:SS" with all hours: "100:00:00".
    LCString StrTime() const;
    /// The same with ",sss" behind.
    LCString StrTimeDetailed() const;
    /// Runs of letters stand for DD days, HH hours below 24, HHH all hours, mm, SS, sss, and hh and hhh for
    /// HH and HHH without fill. Other runs of these letters and of M vanish; every other character stays.
    LCString StrFormat(LCString const & format) const;

private:
    double mdvSeconds = 0.0;
};
