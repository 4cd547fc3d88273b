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

using qrtcl::platform::LocalTime;

static_assert(sizeof(LCDateTimeNone) == sizeof(LCDateTime) && std::is_nothrow_move_assignable_v<LCDateTimeNone>);

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
    std::string const all = text;
    for (std::string const zeros : {" 0:0:0.0 +0", " +0"}) {
        if (all.ends_with(zeros)) return all.substr(0, all.size() - zeros.size());
    }
    return all;
}

/// From here on, the zone of the process.
void SetZone(char const * zone) { ::setenv("TZ", zone, 1); }

TEST(DateTime, AddingAndTakingASpanCarries)
{
    constexpr double day = 86400.0, nan = std::numeric_limits<double>::quiet_NaN();
    // Out of range, a day is carried whole, the others by one turn.
    struct { char const * start; double seconds; char const * plus; char const * minus; } const rows[] = {
        {"2023-12-31 23:59:59.999 +60", 0.001, "2024-1-1 0:0:0.0 +60", "2023-12-31 23:59:59.998 +60"},
        {"2000-1-1", 0.001, "2000-1-1 0:0:0.1", "1999-12-31 23:59:59.999"},
        {"2024-3-1", day, "2024-3-2", "2024-2-29"}, {"2023-3-1", day, "2023-3-2", "2023-2-28"},
        {"2100-2-28", day, "2100-3-1", "2100-2-27"}, {"2000-2-28", day, "2000-2-29", "2000-2-27"},
        {"2024-5-5 12:0:0.0", 1.001, "2024-5-5 12:0:1.0", "2024-5-5 11:59:59.0"},
        {"2024-5-5 12:30:30.500", 90061.625, "2024-5-6 13:31:32.125", "2024-5-4 11:29:28.875"},
        {"2000-1-1", 1e300, "2068-1-19 3:14:7.0", "1931-12-13 20:45:53.0"}, {"2000-1-1", nan, "2000-1-1", "2000-1-1"},
        {"2023-2-31", 0.0, "2023-3-3", "2023-2-31"}, {"2024-2-31", -0.0, "2024-3-2", "2024-2-31"},
        {"2024-1-1000", 0.0, "2026-9-26", "2024-1-1000"}, {"2024-1--1000", 0.0, "2024-1--1000", "2021-4-5"},
        {"2024-20-40", 0.0, "2025-1-9", "2024-20-40"}, {"2024--5-0", 0.0, "2024--5-0", "2023-12-31"},
        {"2024-5-5 50:130:130.5000", 0.0, "2024-5-6 27:71:71.4000", "2024-5-5 50:130:130.5000"},
        {"2024-5-5 -30:-70:-70.-3000", 0.0, "2024-5-5 -30:-70:-70.-3000", "2024-5-4 -7:-11:-11.-2000"}};
    for (auto const & row : rows) {
        LCDateTime const start = At(row.start);
        LCTimeSpan const span(row.seconds);
        EXPECT_EQ(Fields(start + span), row.plus) << row.start;
        EXPECT_EQ(Fields(start - span), row.minus) << row.start;
        if (!(row.seconds > 0.0)) continue;
        LCDateTime back = start;
        back.AddTimeSpan(-span);
        EXPECT_EQ(Fields(back), row.minus) << row.start;
        EXPECT_EQ(Fields(start - -span), row.plus) << row.start;
    }
}

// The reference is the calendar of the standard library.
TEST(DateTime, TheCalendarIsRightOnEveryDayOf400Years)
{
    using namespace std::chrono;
    auto const on = [](sys_days day) {
        year_month_day const date(day);
        return LCDateTime(int(date.year()), int(unsigned(date.month())), int(unsigned(date.day())));
    };
    sys_days const first = year(1899) / 12 / 31;
    for (int n = 0; n < 146097; ++n) {
        int const far = n * 7919 % 24856;
        LCDateTime const today = on(first + days(n));
        LCDateTime const ahead = on(first + days(n + far));
        ASSERT_EQ(today + LCTimeSpan(far, 0, 0, 0, 0), ahead) << Fields(today) << " and " << far;
        ASSERT_EQ(ahead - LCTimeSpan(far, 0, 0, 0, 0), today) << Fields(today) << " and " << far;
        ASSERT_EQ(on(first).GetTimeSpan(today), n * 86400.0) << Fields(today);
        auto const last = year(today.GetYear()) / today.GetMonth() / std::chrono::last;
        ASSERT_EQ(today.GetNrDaysMonth(), int(unsigned(last.day()))) << Fields(today);
        ASSERT_EQ(today.IsLeapYear(), year(today.GetYear()).is_leap()) << Fields(today);
    }
    for (int const month : {-1, 0, 13}) EXPECT_EQ(LCDateTime::GetNrDaysMonth(2024, month), 31);
}

TEST(DateTime, AddMonthsLeavesTheDay)
{
    struct { char const * start; int months; char const * end; } const rows[] = {
        {"2023-1-31 1:2:3.4 +5", 1, "2023-2-31 1:2:3.4 +5"}, {"2024-1-1", -1, "2023-12-1"},
        {"2024-1-1", 25, "2026-2-1"}, {"2024-12-1", -24, "2022-12-1"}, {"2024-30-1", 0, "2026-6-1"},
        {"2024--12-1", 0, "2022-12-1"}};
    for (auto const & row : rows) {
        LCDateTime value = At(row.start);
        value.AddMonths(row.months);
        EXPECT_EQ(Fields(value), row.end) << row.start;
    }
}

TEST(DateTime, ComparesInstants)
{
    std::vector<LCDateTime> ascending;
    for (char const * const text : {
        "-1-1-1", "1899-12-31 23:59:59.999", "1900-1-1", "1900-1-1 1:0:0.0 +30", "1900-1-1 0:31:0.0",
        "2024-2-28 23:59:59.999 -1", "2024-3-1 0:30:0.0 +60", "2024-2-29 23:30:0.001", "2024-3-1 12:0:0.0 +720",
        "2024-2-29 12:0:0.1 -720", "2024-3-1 0:0:1.0"}) ascending.push_back(At(text));
    ExpectTotalOrder(ascending);
    // Only the right side is taken into a zone, which carries its day.
    struct { char const * left; char const * right; bool equal; } const rows[] = {
        {"2024-5-5 12:0:0.0 +60", "2024-5-5 11:0:0.0", true}, {"2023-3-1 0:30:0.0 +60", "2023-2-28 23:30:0.0", true},
        {"2024-3-1 0:30:0.0 +60", "2024-2-29 23:30:0.0", true},
        {"2024-1-1 0:0:0.0 +720", "2023-12-31 0:0:0.0 -720", true},
        {"2024-1-1 0:0:0.0 +10000", "2023-12-25 1:20:0.0", true}, {"2023-2-31", "2023-3-3", false},
        {"2023-3-3 1:0:0.0 +60", "2023-2-31", true}, {"2023-2-31", "2023-3-3 1:0:0.0 +60", false},
        {"2024-5-5 1:0:0.0 +60", "2024-5-4 24:0:0.0", true}, {"2024-5-5 1:59:0.0 +60", "2024-5-5 0:58:60.0", true},
        {"2024-5-5 0:0:0.0 -60", "2024-5-5 0:60:0.0", false}};
    for (auto const & row : rows) {
        LCDateTime const left = At(row.left), right = At(row.right);
        EXPECT_TRUE((left == right) == row.equal && (left <= right && left >= right) == row.equal) << row.left;
    }
}

TEST(DateTime, AnotherZoneShowsTheSameInstant)
{
    struct { char const * start; int bias; char const * end; } const rows[] = {
        {"2024-3-1 0:30:0.5 +60", 0, "2024-2-29 23:30:0.5"},
        {"2023-12-31 20:0:0.0 -300", 345, "2024-1-1 6:45:0.0 +345"},
        {"2023-2-31 1:2:3.4 +60", 60, "2023-3-3 1:2:3.4 +60"},
        {"2023-2-31 1:2:3.4 +60", 59, "2023-2-31 1:1:3.4 +59"}};
    for (auto const & row : rows) EXPECT_EQ(Fields(LCDateTime(At(row.start), row.bias)), row.end) << row.start;
}

TEST(DateTime, TheSpanToAnotherIsPlainCalendarArithmetic)
{
    struct { char const * from; char const * to; double seconds; } const rows[] = {
        {"2024-1-1", "2024-1-2", 86400.0}, {"2024-1-2 0:0:0.999", "2024-1-1 23:59:59.0", -1.0},
        {"1900-1-1", "2000-1-1", 36524 * 86400.0}, {"2014-10-25", "2014-10-27", 2 * 86400.0},
        {"2024-1-1 0:0:0.0 +60", "2024-1-1", 3600.0}, {"2023-2-28", "2023-2-31", 3 * 86400.0},
        {"2023-12-1", "2023-13-1", 31 * 86400.0}, {"2024-1-1", "2024--11-1", -365 * 86400.0},
        {"2024-1-1", "2024-1-1 -25:61:-61.0", -25 * 3600.0 + 61 * 60.0 - 61.0},
        {"0-0-0 10:0:0.0", "0-0-0 10:0:5.0", 5.0}, {"-400-1-1", "400-1-1", 2 * 146097 * 86400.0},
        {"-2000000000-1-1", "2000000000-1-1", 10000000 * 146097.0 * 86400.0}};
    for (auto const & row : rows) {
        EXPECT_EQ(At(row.from).GetTimeSpan(At(row.to)).AsSeconds(), row.seconds) << row.from;
        EXPECT_EQ(At(row.to).GetTimeSpan(At(row.from)).AsSeconds(), -row.seconds) << row.from;
    }
    EXPECT_EQ(At("2024-1-1 0:0:0.750").GetTimeSpanHighPrecision(At("2024-1-1 1:0:1.250 +60")), 0.5);
}

TEST(DateTime, SettersStoreAnyNumberInTheirFieldOnly)
{
    LCDateTime value;
    EXPECT_EQ(Fields(value) + Fields(LCDateTimeNone()), "1900-1-11900-1-1");
    EXPECT_TRUE(value.SetYear(-7) && value.SetMonth(13) && value.SetDay(0) && value.SetHour(99) && value.SetMin(-1) &&
                value.SetSec(61) && value.SetMSec(5000) && value.SetTimeZoneBias(-9999));
    EXPECT_EQ(Fields(value), "-7-13-0 99:-1:61.5000 -9999");
    LCDateTime noTime = value;
    noTime.ClearTime();
    EXPECT_EQ(Fields(noTime), "-7-13-0 0:0:0.0 -9999");
    value.ClearDate();
    EXPECT_EQ(Fields(value), "1900-1-1 99:-1:61.5000 -9999");
}

// The sanitizers watch; a value is only asked to come back into the calendar.
TEST(DateTime, AbsurdFieldsAreCarriedWithoutOverflow)
{
    for (int const v : {std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
        for (int const month : {1, v}) {
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
}

TEST(DateTime, TheZoneIsAskedForAtEachCall)
{
    // 12:00 UTC on 1 January and 1 July 2024. LHDT saves half an hour, GMT in winter minus one hour.
    constexpr std::int64_t winter = 1704110400123, summer = 1719835200000;
    struct { char const * zone; std::int64_t moment; char const * reading; } const rows[] = {
        {"UTC0", winter, "2024-1-1 12:0:0.123"}, {"EST5", winter, "2024-1-1 7:0:0.123 -300"},
        {"XST-5:30", summer, "2024-7-1 17:30:0.0 +330"}, {"<+0545>-5:45", summer, "2024-7-1 17:45:0.0 +345"},
        {"CET-1CEST,M3.5.0,M10.5.0/3", winter, "2024-1-1 13:0:0.123 +60"},
        {"CET-1CEST,M3.5.0,M10.5.0/3", summer, "2024-7-1 14:0:0.0 +120"},
        {"LHST-10:30LHDT-11,M10.1.0,M4.1.0", winter, "2024-1-1 23:0:0.123 +660"},
        {"LHST-10:30LHDT-11,M10.1.0,M4.1.0", summer, "2024-7-1 22:30:0.0 +630"},
        {"IST-1GMT0,M10.5.0,M3.5.0/1", winter, "2024-1-1 12:0:0.123"},
        {"IST-1GMT0,M10.5.0,M3.5.0/1", summer, "2024-7-1 13:0:0.0 +60"}, {"UTC0", -1, "1969-12-31 23:59:59.999"}};
    for (auto const & row : rows) {
        SetZone(row.zone);
        auto const [y, mo, d, h, mi, s, ms, bias] = qrtcl::platform::LocalTimeAt(row.moment);
        EXPECT_EQ(Fields({y, mo, d, h, mi, s, ms, bias}), row.reading) << row.zone;
    }
    for (auto const & [zone, bias] : {std::pair("EST5", -300), std::pair("XST-5:30", 330)}) {
        SetZone(zone);
        EXPECT_EQ(LCDateTime::GetCurrentTimeZoneBias(), bias);
        EXPECT_EQ(LCDateTime(2024, 1, 1, 0, 0, 0, 0).GetTimeZoneBias(), bias);
        LCDateTime const utc(LCDateTime::GetCurrentSystemDateTime(), 0);
        EXPECT_NEAR(At("1970-1-1").GetTimeSpan(utc).AsSeconds(), static_cast<double>(std::time(nullptr)), 2.0);
    }
}

TEST(DateTime, TheApplicationsClockIsTheSystemsPlusAnOffset)
{
    qrtcl::platform::ReplaceClock([]() noexcept { return LocalTime{2024, 3, 1, 0, 30, 15, 250, 120}; });
    EXPECT_EQ(LCDateTime::GetCurrentDateTimeOffset(), 0.0);
    EXPECT_EQ(Fields(LCDateTime::GetCurrentDateTime()), "2024-3-1 0:30:15.250 +120");

    LCDateTime::SetCurrentDateTimeOffset(-1815.25);
    EXPECT_EQ(Fields(LCDateTime::GetCurrentSystemDateTime()), "2024-3-1 0:30:15.250 +120");
    EXPECT_EQ(Fields(LCDateTime::GetCurrentDateTime()), "2024-3-1 0:0:0.0 +120");
    LCDateTime::SetCurrentDateTimeOffset(-3600.5);
    EXPECT_EQ(Fields(LCDateTime::GetCurrentDate()), "2024-2-29");
    EXPECT_EQ(Fields(LCDateTime::GetTickCount()), "0-0-0 23:30:14.750 +120");

    LCDateTime::SetCurrentDateTime(At("2030-1-1 12:0:0.900 +60"));  // to the whole second
    EXPECT_EQ(Fields(LCDateTime::GetCurrentDateTime()), "2030-1-1 13:0:0.250 +120");
    LCDateTime::SetCurrentDateTimeOffset(0.0);
    qrtcl::platform::ReplaceClock(nullptr);
}

TEST(DateTime, HasTheFixedLayouts)
{
    LCDateTime const value = At("2024-3-5 7:8:9.045 +60");
    EXPECT_EQ(value.Str() + "|" + value.StrDate() + "|" + value.StrTime(), "05/03/2024 07:08:09|05/03/2024|07:08:09");
    EXPECT_EQ(value.StrDetailed() + "|" + value.StrTimeDetailed(), "05/03/2024 07:08:09,045|07:08:09,045");
    EXPECT_EQ(value.StrFile() + "|" + LCDateTime().Str(), "2024-03-05_07-08-09|01/01/1900 00:00:00");
    EXPECT_EQ(At("12345-13-100 -1:-10:999.-5").StrDetailed(), "100/13/12345 -1:-10:999,0-5");
    constexpr int low = std::numeric_limits<int>::min();
    EXPECT_EQ(LCDateTime(low, low, low, low, low, low, low, 0).StrDetailed(),
              "-2147483648/-2147483648/-2147483648 -2147483648:-2147483648:-2147483648,-2147483648");
}

TEST(DateTime, ZoneTextsShowTheMachinesZone)
{
    struct { char const * zone; char const * text; } const rows[] = {
        {"UTC0", "+00:00"}, {"CET-1", "+01:00"}, {"XST5:30", "-05:30"}, {"XST0:30", "-00:30"}, {"XST-14", "+14:00"}};
    LCDateTime const value = At("2024-3-5 7:8:9.045 +77");
    for (auto const & row : rows) {
        SetZone(row.zone);
        EXPECT_EQ(value.StrTimeZone(), LCString("05/03/2024 07:08:09") + row.text);
        EXPECT_EQ(value.StrDetailedTimeZone(), LCString("05/03/2024 07:08:09,045") + row.text);
        EXPECT_EQ(value.StrFormat("ZZ Z ZZZ"), LCString(row.text) + "  ");
    }
}

// Two runs are 8 and 16 letters longer than one of the table.
TEST(DateTime, AFormatIsRunsOfLettersAndOtherCharacters)
{
    struct { char const * value; char const * format; char const * text; } const rows[] = {
        {"2024-3-5 7:8:9.045", "", ""}, {"2024-3-5 7:8:9.045", "YYYYMMDDHHmmSSsss", "20240305070809045"},
        {"2024-3-5 7:8:9.045", "YYYY-MM", "2024-03"}, {"2024-3-5 7:8:9.045", "YYYYY-MMM", "-"},
        {"2024-3-5 7:8:9.045", "Year YYYY", "ear 2024"},
        {"2024-3-5 7:8:9.045", "YMDHhmSstZYYYMMMDDDHHHhhhmmmSSSssstttZZZYYYYYssss", "045"},
        {"2024-3-5 7:8:9.045", "AM PM {x}%d \xE4", "A P {x}%d \xE4"},
        {"2024-3-5", "DDDDDDDDDD|MMMMMMMMMMMMMMMMMM", "|"}, {"99-3-5", "YYYY YY", "0099 99"},
        {"2005-3-5", "YY", "05"}, {"12345-3-5", "YYYY YY", "12345 45"}, {"-7-3-5", "YYYY YY", "00-7 -7"},
        {"2024-3-5 12:30:0.0", "hh:mm tt", "12:30 AM"}, {"2024-3-5 13:30:0.0", "hh:mm tt", "01:30 PM"},
        {"2024-3-5 0:30:0.0", "hh:mm tt", "00:30 AM"}, {"2024-3-5 23:59:59.999", "hh tt HH", "11 PM 23"}};
    for (auto const & row : rows) EXPECT_EQ(At(row.value).StrFormat(row.format), row.text) << row.format;

    LCString longFormat, expected;
    for (int i = 0; i < 500; ++i) {
        longFormat += "x MM";
        expected += "x -2147483648";
    }
    LCDateTime value;
    value.SetMonth(std::numeric_limits<int>::min());
    EXPECT_EQ(value.StrFormat(longFormat), expected);
    EXPECT_EQ(value.StrFormat(std::string("D\0D", 3)), std::string(1, '\0'));
}

}  // namespace
