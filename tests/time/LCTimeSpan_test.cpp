#include "time/LCTimeSpan.h"

#include <cmath>
#include <limits>
#include <vector>

#include "support/Support.h"

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

static_assert(LCTimeSpan(1, 25, 61, 61, 0) == 180121.0 && LCTimeSpan(0, 0, 0, 0, 1500) == 1.5);
static_assert(LCTimeSpan(-1, 2, -3, 4, -5) == ((-86400.0 + 7200.0) - 180.0) + (-5 / 1000.0 + 4));
static_assert(LCTimeSpan() == 0.0 && LCTimeSpan(0.1) + 0.2 != LCTimeSpan(0.3));

TEST(TimeSpan, DecodesIntoPartsOfItsSign)
{
    struct { double seconds; std::vector<int> parts; } const rows[] = {
        {0.0, {0, 0, 0, 0, 0}}, {-0.0, {0, 0, 0, 0, 0}}, {90061.5, {1, 1, 1, 1, 500}}, {-90061.5, {-1, -1, -1, -1, -500}},
        {-100.0, {0, 0, -1, -40, 0}}, {-0.5, {0, 0, 0, 0, -500}}, {2.3, {0, 0, 0, 2, 299}}, {0.001, {0, 0, 0, 0, 1}},
        {1.001, {0, 0, 0, 1, 0}}, {86399.9999, {0, 23, 59, 59, 999}}, {2147483647.75, {24855, 3, 14, 7, 750}},
        {2147483648.0, {24855, 3, 14, 7, 0}}, {1e300, {24855, 3, 14, 7, 0}}, {-infinity, {-24855, -3, -14, -7, 0}},
        {notANumber, {0, 0, 0, 0, 0}}};
    for (auto const & row : rows) {
        std::vector<int> five(5, -1), four(4, -1);
        LCTimeSpan(row.seconds).Decode(five[0], five[1], five[2], five[3], five[4]);
        LCTimeSpan(row.seconds).Decode(four[0], four[1], four[2], four[3]);
        EXPECT_EQ(five, row.parts) << row.seconds;
        EXPECT_EQ(four, (std::vector{24 * five[0] + five[1], five[2], five[3], five[4]})) << row.seconds;
    }
}

TEST(TimeSpan, ComputesAsItsDoubleDoes)
{
    LCTimeSpan span(10.0);
    EXPECT_EQ(&((((span += 5.0) -= 1.0) *= 3.0) /= 4.0), &span);
    EXPECT_EQ(span, LCTimeSpan(10.5));
    EXPECT_EQ((span + 1.5) * 2.0 - span / 2.0, LCTimeSpan(18.75));
    EXPECT_EQ((span / 0.0).AsSeconds(), infinity);
    EXPECT_TRUE(std::signbit((-LCTimeSpan()).AsSeconds()) && -LCTimeSpan() == LCTimeSpan());
}

TEST(TimeSpan, RoundsTheSignedValueToSeconds)
{
    struct { double seconds, up, down; } const rows[] = {{1.2, 2.0, 1.0}, {-1.2, -1.0, -2.0}, {3.0, 3.0, 3.0}, {-0.5, -0.0, -1.0}};
    for (auto const & row : rows) {
        LCTimeSpan up(row.seconds), down(row.seconds);
        up.CeilToSeconds();
        down.FloorToSeconds();
        EXPECT_TRUE(up == row.up && std::signbit(up.AsSeconds()) == std::signbit(row.up)) << row.seconds;
        EXPECT_EQ(down, row.down);
    }
}

TEST(TimeSpan, ComparesExactlyAndNeverEqualToNotANumber)
{
    ExpectTotalOrder(std::vector<LCTimeSpan>{-infinity, -1.0, 0.0, 5e-324, 0.3, 0.1 + 0.2, infinity});
    for (LCTimeSpan const other : {0.0, notANumber}) {
        LCTimeSpan const nan(notANumber);
        EXPECT_TRUE(nan != other && !(nan == other || nan < other || nan <= other || nan > other || nan >= other));
    }
}

TEST(TimeSpan, HasFourLayouts)
{
    struct { double seconds; char const * text; char const * time; char const * milliseconds; } const rows[] = {
        {0.0, "00:00:00", "00:00:00", ",000"}, {3661.0, "01:01:01", "01:01:01", ",000"}, {90061.5, "01 01:01:01", "25:01:01", ",500"},
        {360000.25, "04 04:00:00", "100:00:00", ",250"}, {86400.0 * 1000, "1000 00:00:00", "24000:00:00", ",000"},
        {-100.0, "00:-1:-40", "00:-1:-40", ",000"}, {-1.0, "00:00:-1", "00:00:-1", ",000"}, {-0.005, "00:00:00", "00:00:00", ",0-5"},
        {-90061.0, "-1:-1:-1", "-25:-1:-1", ",000"}, {1e300, "24855 03:14:07", "596523:14:07", ",000"}};
    for (auto const & row : rows) {
        LCTimeSpan const span(row.seconds);
        EXPECT_EQ(span.Str(), row.text);
        EXPECT_EQ(span.StrDetailed(), LCString(row.text) + row.milliseconds);
        EXPECT_EQ(span.StrTime(), row.time);
        EXPECT_EQ(span.StrTimeDetailed(), LCString(row.time) + row.milliseconds);
    }
}

TEST(TimeSpan, AFormatIsRunsOfLettersAndOtherCharacters)
{
    struct { double seconds; char const * format; char const * text; } const rows[] = {
        {90061.5, "", ""}, {90061.5, "HHH:mm", "25:01"}, {90061.5, "HH:mm", "01:01"}, {90061.5, "hhh hh", "25 1"},
        {90061.5, "DD HH SS sss", "01 01 01 500"}, {3661.0, "hh HH hhh HHH", "1 01 1 01"},
        {-90061.5, "DD HHH hh mm SS sss", "-1 -25 -1 -1 -1 -500"}, {1.0, "YYYY tt ZZ Day", "YYYY tt ZZ ay"},
        {1.0, "MMDHhmSsMMMDDDHHHHhhhhmmmSSSssss", ""}};
    for (auto const & row : rows) EXPECT_EQ(LCTimeSpan(row.seconds).StrFormat(row.format), row.text) << row.format;
}

}  // namespace
