#include "time/LCTimeSpan.h"

#include <cmath>
#include <vector>

namespace {

constexpr LCTimeSpan nan(NAN);

static_assert(LCTimeSpan(1, 25, 61, 61, 0) == 180121.0 && LCTimeSpan(0, 0, 0, 0, 1500) == 1.5);
static_assert(LCTimeSpan(-1, 2, -3, 4, -5) == ((-86400.0 + 7200.0) - 180.0) + (-5 / 1000.0 + 4));
static_assert(((((LCTimeSpan(10.0) += 5.0) -= 1.0) *= 3.0) /= 4.0) == 10.5);
static_assert((LCTimeSpan(1.5) + 4.0) * 2.0 - LCTimeSpan(3.0) / 6.0 == 10.5 && LCTimeSpan(0.1) + 0.2 > 0.3);
static_assert(nan != nan && !(nan == nan || nan < nan || nan <= 0.0 || nan > 0.0 || nan >= nan));

TEST(TimeSpan, DecodesIntoPartsOfItsSign)
{
    struct { double seconds; std::vector<int> parts; } const rows[] = {
        {0.0, {0, 0, 0, 0, 0}}, {90061.5, {1, 1, 1, 1, 500}}, {-90061.5, {-1, -1, -1, -1, -500}},
        {-100.0, {0, 0, -1, -40, 0}}, {-0.5, {0, 0, 0, 0, -500}}, {2.3, {0, 0, 0, 2, 299}}, {0.001, {0, 0, 0, 0, 1}},
        {1.001, {0, 0, 0, 1, 0}}, {86399.9999, {0, 23, 59, 59, 999}}, {2147483647.75, {24855, 3, 14, 7, 750}},
        {2147483648.0, {24855, 3, 14, 7, 0}}, {1e300, {24855, 3, 14, 7, 0}}, {-HUGE_VAL, {-24855, -3, -14, -7, 0}},
        {NAN, {0, 0, 0, 0, 0}}};
    for (auto const & row : rows) {
        std::vector<int> five(5, -1), four(4, -1);
        LCTimeSpan(row.seconds).Decode(five[0], five[1], five[2], five[3], five[4]);
        LCTimeSpan(row.seconds).Decode(four[0], four[1], four[2], four[3]);
        EXPECT_EQ(five, row.parts) << row.seconds;
        EXPECT_EQ(four, (std::vector{24 * five[0] + five[1], five[2], five[3], five[4]})) << row.seconds;
    }
}

TEST(TimeSpan, RoundsAndChangesTheSignOfItsDouble)
{
    LCTimeSpan up(-1.2), down(-1.2);
    up.CeilToSeconds();
    down.FloorToSeconds();
    EXPECT_EQ(std::pair(up, down), std::pair(LCTimeSpan(-1.0), LCTimeSpan(-2.0)));
    EXPECT_TRUE(std::signbit((-LCTimeSpan()).AsSeconds()));
}

TEST(TimeSpan, HasFourLayouts)
{
    struct { double seconds; char const * text; char const * time; char const * rest; } const rows[] = {
        {0.0, "00:00:00", "00:00:00", ",000"}, {3661.0, "01:01:01", "01:01:01", ",000"},
        {90061.5, "01 01:01:01", "25:01:01", ",500"}, {86400.0 * 1000, "1000 00:00:00", "24000:00:00", ",000"},
        {-100.0, "00:-1:-40", "00:-1:-40", ",000"}, {-0.005, "00:00:00", "00:00:00", ",0-5"},
        {-90061.0, "-1:-1:-1", "-25:-1:-1", ",000"}, {1e300, "24855 03:14:07", "596523:14:07", ",000"}};
    for (auto const & row : rows) {
        LCTimeSpan const span(row.seconds);
        LCString const text = row.text, time = row.time;
        EXPECT_EQ(span.Str() + "|" + span.StrTime(), text + "|" + time);
        EXPECT_EQ(span.StrDetailed() + "|" + span.StrTimeDetailed(), text + row.rest + "|" + time + row.rest);
    }
}

TEST(TimeSpan, AFormatIsRunsOfLettersAndOtherCharacters)
{
    struct { double seconds; char const * format; char const * text; } const rows[] = {
        {93784.5, "", ""}, {93784.5, "HHH:mm hhh DD hh HH SS sss", "26:03 26 01 2 02 04 500"},
        {-90061.5, "DD HHH hh mm SS sss", "-1 -25 -1 -1 -1 -500"}, {1.0, "YYYY tt ZZ Day MM", "YYYY tt ZZ ay "}};
    for (auto const & row : rows) EXPECT_EQ(LCTimeSpan(row.seconds).StrFormat(row.format), row.text) << row.format;
}

}  // namespace
