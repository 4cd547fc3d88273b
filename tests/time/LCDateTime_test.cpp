#include "time/LCDateTime.h"

#include <chrono>
#include <cstdio>
#include <limits>
#include <vector>

#include "platform/Clock.h"

namespace {

using namespace std::chrono;

constexpr int low = std::numeric_limits<int>::min(), high = std::numeric_limits<int>::max();

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
    std::snprintf(text, sizeof text, "%d-%d-%d %d:%d:%d.%d %+d", v.GetYear(), v.GetMonth(), v.GetDay(), v.GetHour(),
                  v.GetMin(), v.GetSec(), v.GetMSec(), v.GetTimeZoneBias());
    return text;
}

void ExpectFields(LCDateTime const & value, std::string const & expected, std::string const & from = "")
{
    EXPECT_EQ(Fields(value), Fields(At(expected))) << from;
}

/// What the calendar of the standard library shows at a moment.
LCDateTime On(sys_time<milliseconds> moment, int bias = 0)
{
    auto const local = moment + minutes(bias);
    year_month_day const date(floor<days>(local));
    auto const time = (local - floor<days>(local)).count();
    return {int(date.year()), int(unsigned(date.month())), int(unsigned(date.day())), int(time / 3600000),
            int(time / 60000 % 60), int(time / 1000 % 60), int(time % 1000), bias};
}

/// Lets the system's clock show `reading` for the life of the object.
struct ClockStopped {
    ClockStopped() { qrtcl::platform::ReplaceClock([]() noexcept { return reading; }); }
    ~ClockStopped() { qrtcl::platform::ReplaceClock(nullptr); }
    static inline qrtcl::platform::LocalTime reading;
};

TEST(DateTime, AddingAndTakingASpanCarries)
{
    struct { char const * start; double seconds; char const * plus; char const * minus; } const rows[] = {
        {"2023-12-31 23:59:59.999 +60", 0.001, "2024-1-1 0:0:0.0 +60", "2023-12-31 23:59:59.998 +60"},
        {"2024-5-5 12:0:0.0", 1.001, "2024-5-5 12:0:1.0 +0", "2024-5-5 11:59:59.0 +0"},  // 1.001 lies a little under
        {"2000-1-1", 1e300, "2068-1-19 3:14:7.0 +0", "1931-12-13 20:45:53.0 +0"},
        {"2000-1-1", std::numeric_limits<double>::quiet_NaN(), "2000-1-1", "2000-1-1"},
        {"2147483647-12-31 23:59:59.999", 0.001, "-2147483648-1-1", "2147483647-12-31 23:59:59.998"},
        // Out of range: a day is carried whole on its side, the others by one turn.
        {"2023-2-31", 0.0, "2023-3-3", "2023-2-31"}, {"2024-2-31", -0.0, "2024-3-2", "2024-2-31"},
        {"2024-1-1000", 0.0, "2026-9-26", "2024-1-1000"}, {"2024-1--1000", 0.0, "2024-1--1000", "2021-4-5"},
        {"2023-20-380", 0.0, "2024-12-14", "2023-20-380"}, {"2024--5-0", 0.0, "2024--5-0", "2023-12-31"},
        {"2024-5-5 0:-70:0.500", 86399.5, "2024-5-6 0:-70:0.0 +0", "2024-5-3 23:-10:1.0 +0"},
        {"2024-5-5 50:130:130.5000", 0.0, "2024-5-6 27:71:71.4000 +0", "2024-5-5 50:130:130.5000 +0"},
        {"2024-5-5 -30:-70:-70.-3000", 0.0, "2024-5-5 -30:-70:-70.-3000 +0", "2024-5-4 -7:-11:-11.-2000 +0"},
        {"0-1-2147483647 2147483587:2147483587:2147483647.2147483647", 1e300,
         "5879678-7-29 2147483567:2147483542:2147483595.2147482647",
         "0-1-2147458792 2147483584:2147483573:2147483640.2147483647"},
        {"0-1--2147483648 -2147483648:-2147483648:-2147483648.-2147483648", 1e300,
         "0-1--2147458793 -2147483645:-2147483634:-2147483641.-2147483648",
         "-5879679-6-2 -2147483628:-2147483603:-2147483596.-2147482648"}};
    for (auto const & row : rows) {
        ExpectFields(At(row.start) + row.seconds, row.plus, row.start);
        ExpectFields(At(row.start) - row.seconds, row.minus, row.start);
        ExpectFields(At(row.start) - -row.seconds, row.seconds > 0.0 ? row.plus : row.minus, row.start);
        ExpectFields(At(row.start) + -row.seconds, row.seconds > 0.0 ? row.minus : row.plus, row.start);
    }
}

// All steps are eighths of a second, which a double holds exactly.
TEST(DateTime, IsRightOnEveryDayOf400YearsInEveryZone)
{
    for (long long n = 0; n < 146097; ++n) {
        auto const moment = sys_days(1899y / 12 / 31) + days(n) + milliseconds(n * 7919 % 691200 * 125);
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
        year const y(utc.GetYear());
        ASSERT_EQ(utc.IsLeapYear(), y.is_leap()) << utc.GetYear();
        ASSERT_EQ(utc.GetNrDaysMonth(), int(unsigned((y / utc.GetMonth() / last).day()))) << Fields(utc);
    }
    for (int const month : {-1, 0, 13}) EXPECT_EQ(LCDateTime::GetNrDaysMonth(2024, month), 31);
}

TEST(DateTime, ComparesInstants)
{
    ExpectTotalOrder(std::vector{
        At("-1-1-1"), At("1899-12-31 23:59:59.999"), LCDateTime(), At("1900-1-1 1:0:0.0 +30"),
        At("1900-1-1 0:31:0.0"), At("2024-2-28 23:59:59.999 -1"), At("2024-3-1 0:30:0.0 +60"),
        At("2024-2-29 23:30:0.001"), At("2024-3-1")});
    struct { char const * left; char const * right; bool equal; } const rows[] = {
        {"2024-1-1 0:0:0.0 +720", "2023-12-31 0:0:0.0 -720", true}, {"2024-1-3 2:0:0.0 +3000", "2024-1-1", true},
        {"2024-1-1 0:0:0.0 +2147483647", "2024-1-1 0:0:0.0 -2147483648", false}, {"2023-2-31", "2023-3-3", false},
        // Only the right side is taken into a zone, which carries its day, and the rest by one turn.
        {"2023-3-3 1:0:0.0 +60", "2023-2-31", true}, {"2023-2-31", "2023-3-3 1:0:0.0 +60", false},
        {"2024-5-5 1:0:0.0 +60", "2024-5-4 24:0:0.0", true}, {"2024-5-5 1:59:0.0 +60", "2024-5-5 0:58:60.0", true},
        {"2024-5-5 0:0:0.0 -60", "2024-5-5 0:60:0.0", false}};
    for (auto const & row : rows) EXPECT_EQ(At(row.left) == At(row.right), row.equal) << row.left << row.right;
    ExpectFields(LCDateTime(At("2023-2-31 1:2:3.4 +60"), 60), "2023-3-3 1:2:3.4 +60");
    ExpectFields(LCDateTime(At("2023-2-31 1:2:3.4 +60"), 59), "2023-2-31 1:1:3.4 +59");
}

TEST(DateTime, TheSpanToAnotherIsPlainCalendarArithmetic)
{
    for (auto const & [from, to, seconds] : {
             std::tuple("2024-1-2 0:0:0.999", "2024-1-1 23:59:59.0", -1.0), {"2023-2-28", "2023-2-31", 3 * 86400.0},
             {"2023-12-1", "2023-13-1", 31 * 86400.0}, {"2024-1-1", "2024--11-1", -365 * 86400.0},
             {"2024-1-1", "2024-1-1 -25:61:-61.0", -25 * 3600.0 + 61 * 60.0 - 61.0},
             {"0-0-0 10:0:0.0", "0-0-0 10:0:5.0", 5.0}, {"-400-1-1", "400-1-1", 2 * 146097 * 86400.0},
             {"2147483647-2147483647-2147483647 2147483647:2147483647:2147483647.0",
              "-2147483648--2147483648--2147483648 -2147483648:-2147483648:-2147483648.0", -147217558883506995.0}}) {
        EXPECT_EQ(At(from).GetTimeSpan(At(to)), seconds) << from;
        EXPECT_EQ(At(to).GetTimeSpan(At(from)), -seconds) << from;
    }
}

TEST(DateTime, SettersAndMonthsCarryNothing)
{
    LCDateTime value;
    EXPECT_TRUE(value.SetYear(-7) && value.SetMonth(13) && value.SetDay(0) && value.SetHour(99) && value.SetMin(-1) &&
                value.SetSec(61) && value.SetMSec(5000) && value.SetTimeZoneBias(-9999));
    ExpectFields(value, "-7-13-0 99:-1:61.5000 -9999");
    value.ClearDate();
    ExpectFields(value, "1900-1-1 99:-1:61.5000 -9999");
    value.ClearTime();
    ExpectFields(value, "1900-1-1 0:0:0.0 -9999");

    for (auto const & [start, months, end] : {
             std::tuple("2023-1-31 1:2:3.4 +5", 1, "2023-2-31 1:2:3.4 +5"), {"2024-1-1", -1, "2023-12-1"},
             {"2024-1-1", 25, "2026-2-1"}, {"2024-12-1", -24, "2022-12-1"},
             {"2024-2147483647-1", high, "357915965-2-1"}, {"2024--2147483648-1", low, "-357911918-8-1"}}) {
        value = At(start);
        value.AddMonths(months);
        ExpectFields(value, end, start);
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
    std::string const before = std::getenv("TZ") ? std::getenv("TZ") : "";
    for (auto const & row : rows) {
        SCOPED_TRACE(row.zone);
        ::setenv("TZ", row.zone, 1);
        auto const t = qrtcl::platform::LocalTimeAt(row.moment);
        ExpectFields({t.year, t.month, t.day, t.hour, t.minute, t.second, t.millisecond, t.bias}, row.reading);
        LCDateTime const now = LCDateTime::GetCurrentSystemDateTime(), midnight(2024, 1, 1, 0, 0, 0, 0);
        EXPECT_LT(std::abs(On(floor<milliseconds>(system_clock::now())).GetTimeSpan(now).AsSeconds()), 2.0);
        EXPECT_EQ(midnight.GetTimeZoneBias(), now.GetTimeZoneBias());
    }
    before.empty() ? ::unsetenv("TZ") : ::setenv("TZ", before.c_str(), 1);
}

TEST(DateTime, TheApplicationsClockIsTheSystemsPlusAnOffset)
{
    ClockStopped const stopped;
    ClockStopped::reading = {2024, 3, 1, 0, 30, 15, 250, 120};
    ExpectFields(LCDateTime::GetCurrentDateTime(), "2024-3-1 0:30:15.250 +120");
    LCDateTime::SetCurrentDateTimeOffset(-3600.5);
    ExpectFields(LCDateTime::GetCurrentSystemDateTime(), "2024-3-1 0:30:15.250 +120");
    ExpectFields(LCDateTime::GetCurrentDateTime(), "2024-2-29 23:30:14.750 +120");
    ExpectFields(LCDateTime::GetCurrentDate(), "2024-2-29");
    ExpectFields(LCDateTime::GetTickCount(), "0-0-0 23:30:14.750 +120");
    LCDateTime::SetCurrentDateTime(At("2030-1-1 12:0:0.900 +60"));  // to the whole second
    ExpectFields(LCDateTime::GetCurrentDateTime(), "2030-1-1 13:0:0.250 +120");
    LCDateTime::SetCurrentDateTimeOffset(0.0);
}

TEST(DateTime, HasTheFixedLayouts)
{
    LCDateTime const value = At("2024-3-5 7:8:9.045 +77");
    EXPECT_EQ(value.Str() + "|" + value.StrDate() + "|" + value.StrTime() + "|" + value.StrFile(),
              "05/03/2024 07:08:09|05/03/2024|07:08:09|2024-03-05_07-08-09");
    EXPECT_EQ(value.StrDetailed() + "|" + value.StrTimeDetailed(), "05/03/2024 07:08:09,045|07:08:09,045");
    ClockStopped const stopped;
    for (auto const & [bias, zone] : {std::pair(0, "+00:00"), {60, "+01:00"}, {-330, "-05:30"}, {-30, "-00:30"},
                                      {low, "-35791394:08"}}) {
        ClockStopped::reading.bias = bias;  // the zone is that of the machine, not of the value
        EXPECT_EQ(value.StrTimeZone() + value.StrDetailedTimeZone() + value.StrFormat("|ZZ Z ZZZ"),
                  LCString("05/03/2024 07:08:09") + zone + "05/03/2024 07:08:09,045" + zone + "|" + zone + "  ");
    }
    EXPECT_EQ(LCDateTime(low, low, low, low, low, low, low, 0).StrDetailedTimeZone(),
              "-2147483648/-2147483648/-2147483648 -2147483648:-2147483648:-2147483648,-2147483648-35791394:08");
}

}  // namespace
