#include "time/LCDateTime.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <limits>
#include <string>
#include <vector>

#include "platform/Clock.h"
#include "support/Support.h"

namespace {

using namespace std::chrono;
using qrtcl::platform::LocalTime;

static_assert(sizeof(LCDateTimeNone) == sizeof(LCDateTime) && std::is_nothrow_move_assignable_v<LCDateTimeNone>);

constexpr int low = std::numeric_limits<int>::min();
constexpr int high = std::numeric_limits<int>::max();

/// From the form "2024-2-29 23:59:58.997 +60"; what is missing at the end is 0.
LCDateTime At(std::string const & text)
{
    int y = 0, mo = 0, d = 0, h = 0, mi = 0, s = 0, ms = 0, bias = 0;
    EXPECT_GE(std::sscanf(text.c_str(), "%d-%d-%d %d:%d:%d.%d %d", &y, &mo, &d, &h, &mi, &s, &ms, &bias), 3);
    return {y, mo, d, h, mi, s, ms, bias};
}

/// The fields as they stand, in the form that `At` reads.
std::string Fields(LCDateTime const & v)
{
    char text[128];
    int const date = std::snprintf(text, sizeof text, "%d-%d-%d", v.GetYear(), v.GetMonth(), v.GetDay());
    if (v.GetHour() == 0 && v.GetMin() == 0 && v.GetSec() == 0 && v.GetMSec() == 0 && v.GetTimeZoneBias() == 0) return text;
    std::snprintf(text + date, sizeof text - static_cast<unsigned>(date), " %d:%d:%d.%d %+d", v.GetHour(), v.GetMin(),
                  v.GetSec(), v.GetMSec(), v.GetTimeZoneBias());
    return text;
}

/// What the calendar of the standard library shows at a moment.
LCDateTime On(sys_time<milliseconds> moment, int bias = 0)
{
    auto const local = moment + minutes(bias);
    year_month_day const date(floor<days>(local));
    hh_mm_ss const time(local - floor<days>(local));
    return {int(date.year()), int(unsigned(date.month())), int(unsigned(date.day())), int(time.hours().count()),
            int(time.minutes().count()), int(time.seconds().count()), int(time.subseconds().count()), bias};
}

/// The zone of the process, for the life of the object.
struct InZone {
    explicit InZone(char const * zone) : before(std::getenv("TZ") ? std::getenv("TZ") : "") { ::setenv("TZ", zone, 1); }
    ~InZone() { before.empty() ? ::unsetenv("TZ") : ::setenv("TZ", before.c_str(), 1); }
    std::string const before;
};

/// Lets the system's clock show `reading` for the life of the object, which puts the application's clock back too.
struct ClockStopped {
    ClockStopped() { qrtcl::platform::ReplaceClock([]() noexcept { return reading; }); }
    ~ClockStopped()
    {
        qrtcl::platform::ReplaceClock(nullptr);
        LCDateTime::SetCurrentDateTimeOffset(0.0);
    }
    static inline LocalTime reading;
};

TEST(DateTime, AddingAndTakingASpanCarries)
{
    struct { char const * start; double seconds; char const * plus; char const * minus; } const rows[] = {
        {"2023-12-31 23:59:59.999 +60", 0.001, "2024-1-1 0:0:0.0 +60", "2023-12-31 23:59:59.998 +60"},
        {"2024-5-5 12:0:0.0", 1.001, "2024-5-5 12:0:1.0 +0", "2024-5-5 11:59:59.0 +0"},  // 1.001 lies a little under
        {"2000-1-1", 1e300, "2068-1-19 3:14:7.0 +0", "1931-12-13 20:45:53.0 +0"},
        {"2000-1-1", std::numeric_limits<double>::quiet_NaN(), "2000-1-1", "2000-1-1"},
        // Out of range: a day is carried whole on its side, the others by one turn.
        {"2023-2-31", 0.0, "2023-3-3", "2023-2-31"}, {"2024-2-31", -0.0, "2024-3-2", "2024-2-31"},
        {"2024-1-1000", 0.0, "2026-9-26", "2024-1-1000"}, {"2024-1--1000", 0.0, "2024-1--1000", "2021-4-5"},
        {"2023-20-380", 0.0, "2024-12-14", "2023-20-380"}, {"2024--5-0", 0.0, "2024--5-0", "2023-12-31"},
        {"2024-5-5 0:-70:0.500", 86399.5, "2024-5-6 0:-70:0.0 +0", "2024-5-3 23:-10:1.0 +0"},
        {"2024-5-5 50:130:130.5000", 0.0, "2024-5-6 27:71:71.4000 +0", "2024-5-5 50:130:130.5000 +0"},
        {"2024-5-5 -30:-70:-70.-3000", 0.0, "2024-5-5 -30:-70:-70.-3000 +0", "2024-5-4 -7:-11:-11.-2000 +0"}};
    for (auto const & row : rows) {
        EXPECT_EQ(Fields(At(row.start) + row.seconds), row.plus) << row.start;
        EXPECT_EQ(Fields(At(row.start) - row.seconds), row.minus) << row.start;
        LCDateTime moved = At(row.start);
        moved.AddTimeSpan(-row.seconds);
        EXPECT_EQ(Fields(moved), row.seconds > 0.0 ? row.minus : row.plus) << row.start;
        EXPECT_EQ(Fields(At(row.start) - -row.seconds), row.seconds > 0.0 ? row.plus : row.minus) << row.start;
    }
}

// All steps are eighths of a second, which a double holds exactly.
TEST(DateTime, IsRightOnEveryDayOf400YearsInEveryZone)
{
    for (long long n = 0; n < 146097; ++n) {
        sys_time<milliseconds> const moment = sys_days(1899y / 12 / 31) + days(n) + milliseconds(n * 7919 % 691200 * 125);
        milliseconds const far(n * 104729 % 17179776000 * 125);  // below 24855 days
        milliseconds const near((n % 3001 - 1500) * 120000);     // up to 50 hours
        int const bias = static_cast<int>(n * 31 % 1681) - 840;
        LCTimeSpan const span(static_cast<double>(far.count()) / 1000.0);
        LCDateTime const here = On(moment, bias), ahead = On(moment + far, bias), utc = On(moment);
        ASSERT_EQ(here + span, ahead) << Fields(here) << " and " << span.AsSeconds();
        ASSERT_EQ(ahead - span, here) << Fields(ahead) << " and " << span.AsSeconds();
        ASSERT_EQ(utc.GetTimeSpanHighPrecision(ahead), span) << Fields(utc) << " and " << Fields(ahead);
        ASSERT_EQ(LCDateTime(utc, bias), here) << Fields(utc) << " and " << bias;
        ASSERT_TRUE((utc <=> On(moment + near, bias)) == (milliseconds(0) <=> near)) << Fields(utc) << near.count();
        ASSERT_EQ(utc.IsLeapYear(), year(utc.GetYear()).is_leap()) << utc.GetYear();
        auto const lastDay = (year(utc.GetYear()) / utc.GetMonth() / last).day();
        ASSERT_EQ(utc.GetNrDaysMonth(), int(unsigned(lastDay))) << Fields(utc);
    }
    for (int const month : {-1, 0, 13}) EXPECT_EQ(LCDateTime::GetNrDaysMonth(2024, month), 31);
}

TEST(DateTime, AddMonthsLeavesTheDay)
{
    struct { char const * start; int months; char const * end; } const rows[] = {
        {"2023-1-31 1:2:3.4 +5", 1, "2023-2-31 1:2:3.4 +5"}, {"2024-1-1", -1, "2023-12-1"}, {"2024-1-1", 25, "2026-2-1"},
        {"2024-12-1", -24, "2022-12-1"}, {"2024-30-1", 0, "2026-6-1"}, {"2024--12-1", 0, "2022-12-1"}};
    for (auto const & row : rows) {
        LCDateTime value = At(row.start);
        value.AddMonths(row.months);
        EXPECT_EQ(Fields(value), row.end) << row.start;
    }
}

TEST(DateTime, ComparesInstants)
{
    ExpectTotalOrder(std::vector{
        At("-1-1-1"), At("1899-12-31 23:59:59.999"), LCDateTime(), At("1900-1-1 1:0:0.0 +30"), At("1900-1-1 0:31:0.0"),
        At("2024-2-28 23:59:59.999 -1"), At("2024-3-1 0:30:0.0 +60"), At("2024-2-29 23:30:0.001"), At("2024-3-1")});
    struct { char const * left; char const * right; bool equal; } const rows[] = {
        {"2024-1-1 0:0:0.0 +720", "2023-12-31 0:0:0.0 -720", true}, {"2024-1-3 2:0:0.0 +3000", "2024-1-1", true},
        {"2023-2-31", "2023-3-3", false},
        // Only the right side is taken into a zone, which carries its day, and the rest by one turn.
        {"2023-3-3 1:0:0.0 +60", "2023-2-31", true}, {"2023-2-31", "2023-3-3 1:0:0.0 +60", false},
        {"2024-5-5 1:0:0.0 +60", "2024-5-4 24:0:0.0", true}, {"2024-5-5 1:59:0.0 +60", "2024-5-5 0:58:60.0", true},
        {"2024-5-5 0:0:0.0 -60", "2024-5-5 0:60:0.0", false}};
    for (auto const & row : rows) {
        EXPECT_EQ(At(row.left) == At(row.right), row.equal) << row.left << " and " << row.right;
        EXPECT_EQ(At(row.left) <= At(row.right) && At(row.left) >= At(row.right), row.equal) << row.left;
    }
    EXPECT_EQ(Fields(LCDateTime(At("2023-2-31 1:2:3.4 +60"), 60)), "2023-3-3 1:2:3.4 +60");
    EXPECT_EQ(Fields(LCDateTime(At("2023-2-31 1:2:3.4 +60"), 59)), "2023-2-31 1:1:3.4 +59");
}

TEST(DateTime, TheSpanToAnotherIsPlainCalendarArithmetic)
{
    struct { char const * from; char const * to; double seconds; } const rows[] = {
        {"2024-1-2 0:0:0.999", "2024-1-1 23:59:59.0", -1.0}, {"2023-2-28", "2023-2-31", 3 * 86400.0},
        {"2023-12-1", "2023-13-1", 31 * 86400.0}, {"2024-1-1", "2024--11-1", -365 * 86400.0},
        {"2024-1-1", "2024-1-1 -25:61:-61.0", -25 * 3600.0 + 61 * 60.0 - 61.0}, {"0-0-0 10:0:0.0", "0-0-0 10:0:5.0", 5.0},
        {"-400-1-1", "400-1-1", 2 * 146097 * 86400.0},
        {"-2000000000-1-1", "2000000000-1-1", 10000000 * 146097.0 * 86400.0}};
    for (auto const & row : rows) {
        EXPECT_EQ(At(row.from).GetTimeSpan(At(row.to)), row.seconds) << row.from;
        EXPECT_EQ(At(row.to).GetTimeSpan(At(row.from)), -row.seconds) << row.from;
    }
}

TEST(DateTime, SettersStoreAnyNumberInTheirFieldOnly)
{
    LCDateTime value;
    EXPECT_EQ(Fields(value), "1900-1-1");
    EXPECT_TRUE(value.SetYear(-7) && value.SetMonth(13) && value.SetDay(0) && value.SetHour(99) && value.SetMin(-1) &&
                value.SetSec(61) && value.SetMSec(5000) && value.SetTimeZoneBias(-9999));
    LCDateTime noTime = value, noDate = value;
    noTime.ClearTime();
    noDate.ClearDate();
    EXPECT_EQ(Fields(value), "-7-13-0 99:-1:61.5000 -9999");
    EXPECT_EQ(Fields(noTime), "-7-13-0 0:0:0.0 -9999");
    EXPECT_EQ(Fields(noDate), "1900-1-1 99:-1:61.5000 -9999");
    EXPECT_EQ(LCDateTimeNone(), LCDateTime());
}

// The sanitizers watch; a value is only asked to come back into the calendar.
TEST(DateTime, AbsurdFieldsAreCarriedWithoutOverflow)
{
    for (auto const & [v, month] : {std::pair(low, 1), {low, low}, {high, 1}, {high, high}}) {
        LCDateTime value(v, month, v, v, v, v, v, v);
        value += 1e18;
        value -= 1e18;
        EXPECT_TRUE(value.GetDay() >= 1 && value.GetDay() <= 31) << Fields(value);
        EXPECT_NE(value, At("2024-1-1"));
        EXPECT_NE(value.GetTimeSpanHighPrecision(At("2024-1-1")), 0.0);
        value.AddMonths(v);
        EXPECT_TRUE(value.GetMonth() >= 1 && value.GetMonth() <= 12) << Fields(value);
    }
}

TEST(DateTime, TheZoneIsAskedForAtEachCall)
{
    constexpr std::int64_t winter = 1704110400123, summer = 1719835200000;  // 12:00 UTC on 1 January and 1 July 2024
    struct { char const * zone; std::int64_t moment; char const * reading; } const rows[] = {
        {"UTC0", winter, "2024-1-1 12:0:0.123 +0"}, {"UTC0", -1, "1969-12-31 23:59:59.999 +0"},
        {"EST5", winter, "2024-1-1 7:0:0.123 -300"}, {"<+0545>-5:45", summer, "2024-7-1 17:45:0.0 +345"},
        {"CET-1CEST,M3.5.0,M10.5.0/3", winter, "2024-1-1 13:0:0.123 +60"},
        {"CET-1CEST,M3.5.0,M10.5.0/3", summer, "2024-7-1 14:0:0.0 +120"},
        // Half an hour of daylight saving; a winter that saves minus one hour.
        {"LHST-10:30LHDT-11,M10.1.0,M4.1.0", winter, "2024-1-1 23:0:0.123 +660"},
        {"LHST-10:30LHDT-11,M10.1.0,M4.1.0", summer, "2024-7-1 22:30:0.0 +630"},
        {"IST-1GMT0,M10.5.0,M3.5.0/1", winter, "2024-1-1 12:0:0.123 +0"},
        {"IST-1GMT0,M10.5.0,M3.5.0/1", summer, "2024-7-1 13:0:0.0 +60"}};
    for (auto const & row : rows) {
        InZone const zone(row.zone);
        LocalTime const t = qrtcl::platform::LocalTimeAt(row.moment);
        EXPECT_EQ(Fields({t.year, t.month, t.day, t.hour, t.minute, t.second, t.millisecond, t.bias}), row.reading) << row.zone;
    }
    for (auto const & [name, bias] : {std::pair("EST5", -300), {"XST-5:30", 330}}) {
        InZone const zone(name);
        EXPECT_EQ(LCDateTime::GetCurrentTimeZoneBias(), bias);
        EXPECT_EQ(LCDateTime(2024, 1, 1, 0, 0, 0, 0).GetTimeZoneBias(), bias);
        double const now = At("1970-1-1").GetTimeSpan(LCDateTime::GetCurrentSystemDateTime()).AsSeconds();
        EXPECT_NEAR(now, static_cast<double>(std::time(nullptr)), 2.0);
    }
}

TEST(DateTime, TheApplicationsClockIsTheSystemsPlusAnOffset)
{
    ClockStopped const stopped;
    ClockStopped::reading = {2024, 3, 1, 0, 30, 15, 250, 120};
    EXPECT_EQ(LCDateTime::GetCurrentDateTimeOffset(), 0.0);
    EXPECT_EQ(Fields(LCDateTime::GetCurrentDateTime()), "2024-3-1 0:30:15.250 +120");
    LCDateTime::SetCurrentDateTimeOffset(-3600.5);
    EXPECT_EQ(LCDateTime::GetCurrentDateTimeOffset(), -3600.5);
    EXPECT_EQ(Fields(LCDateTime::GetCurrentSystemDateTime()), "2024-3-1 0:30:15.250 +120");
    EXPECT_EQ(Fields(LCDateTime::GetCurrentDateTime()), "2024-2-29 23:30:14.750 +120");
    EXPECT_EQ(Fields(LCDateTime::GetCurrentDate()), "2024-2-29");
    EXPECT_EQ(Fields(LCDateTime::GetTickCount()), "0-0-0 23:30:14.750 +120");
    LCDateTime::SetCurrentDateTime(At("2030-1-1 12:0:0.900 +60"));  // to the whole second
    EXPECT_EQ(Fields(LCDateTime::GetCurrentDateTime()), "2030-1-1 13:0:0.250 +120");
}

TEST(DateTime, HasTheFixedLayouts)
{
    LCDateTime const value = At("2024-3-5 7:8:9.045 +77");
    EXPECT_EQ(value.Str(), "05/03/2024 07:08:09");
    EXPECT_EQ(value.StrDate(), "05/03/2024");
    EXPECT_EQ(value.StrTime(), "07:08:09");
    EXPECT_EQ(value.StrDetailed(), "05/03/2024 07:08:09,045");
    EXPECT_EQ(value.StrTimeDetailed(), "07:08:09,045");
    EXPECT_EQ(value.StrFile(), "2024-03-05_07-08-09");
    EXPECT_EQ(At("12345-13-100 -1:-10:999.-5").StrDetailed(), "100/13/12345 -1:-10:999,0-5");
    ClockStopped const stopped;
    for (auto const & [bias, zone] : {std::pair(0, "+00:00"), {60, "+01:00"}, {-330, "-05:30"}, {-30, "-00:30"},
                                      {low, "-35791394:08"}}) {
        ClockStopped::reading.bias = bias;  // the zone is that of the machine, not of the value
        EXPECT_EQ(value.StrTimeZone(), LCString("05/03/2024 07:08:09") + zone);
        EXPECT_EQ(value.StrDetailedTimeZone(), LCString("05/03/2024 07:08:09,045") + zone);
        EXPECT_EQ(value.StrFormat("ZZ Z ZZZ"), LCString(zone) + "  ");
    }
    EXPECT_EQ(LCDateTime(low, low, low, low, low, low, low, 0).StrDetailedTimeZone(),
              "-2147483648/-2147483648/-2147483648 -2147483648:-2147483648:-2147483648,-2147483648-35791394:08");
}

TEST(DateTime, AFormatIsRunsOfLettersAndOtherCharacters)
{
    struct { char const * value; char const * format; char const * text; } const rows[] = {
        {"2024-3-5", "", ""}, {"2024-3-5 7:8:9.045", "YYYYMMDDHHmmSSsss", "20240305070809045"},
        {"2024-3-5", "YYYY-MM", "2024-03"}, {"2024-3-5", "YYYYY-MMM", "-"}, {"2024-3-5", "Year YYYY", "ear 2024"},
        {"2024-3-5", "YMDHhmSstZYYYMMMDDDHHHhhhmmmSSSssTtttZZZYYYYYssss", "T"}, {"2024-3-5", "AM PM {x}%d \xE4", "A P {x}%d \xE4"},
        {"2024-3-5", "DDDDDDDDDD|MMMMMMMMMMMMMMMMMM", "|"}, {"99-3-5", "YYYY YY", "0099 99"}, {"2005-3-5", "YY", "05"},
        {"12345-3-5", "YYYY YY", "12345 45"}, {"-7-3-5", "YYYY YY", "00-7 -7"}, {"2024-3-5 0:30:0.0", "hh:mm tt", "00:30 AM"},
        {"2024-3-5 12:30:0.0", "hh:mm tt", "12:30 AM"}, {"2024-3-5 13:30:0.0", "hh:mm tt HH", "01:30 PM 13"}};
    for (auto const & row : rows) EXPECT_EQ(At(row.value).StrFormat(row.format), row.text) << row.format;

    LCString format, text;
    for (int i = 0; i < 500; ++i) {
        format += "x MM";
        text += "x -2147483648";
    }
    EXPECT_EQ(LCDateTime(2024, low, 1).StrFormat(format), text);
    EXPECT_EQ(LCDateTime().StrFormat(std::string("D\0D", 3)), std::string(1, '\0'));
}

}  // namespace
