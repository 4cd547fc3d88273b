#include "time/LCTimeSpan.h"

#include <cmath>
#include <limits>
#include <vector>

#include "support/Support.h"

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

static_assert(LCTimeSpan(1, 25, 61, 61, 0) == 180121.0);
static_assert(LCTimeSpan(0, 0, 0, 0, 1500) == 1.5);
static_assert(LCTimeSpan(-1, 2, -3, 4, -5).AsSeconds() == ((-86400.0 + 7200.0) - 180.0) + (-5 / 1000.0 + 4));
static_assert(LCTimeSpan() == 0.0 && LCTimeSpan(0.1) + 0.2 != LCTimeSpan(0.3));

TEST(TimeSpan, DecodesIntoPartsOfItsSign)
{
    struct {
        double seconds;
        std::vector<int> parts;
    } const rows[] = {
        {0.0, {0, 0, 0, 0, 0}},
        {-0.0, {0, 0, 0, 0, 0}},
        {90061.5, {1, 1, 1, 1, 500}},
        {-90061.5, {-1, -1, -1, -1, -500}},
        {-100.0, {0, 0, -1, -40, 0}},
        {-0.5, {0, 0, 0, 0, -500}},
        {1.001, {0, 0, 0, 1, 0}},  // lies a little under
        {2.3, {0, 0, 0, 2, 299}},
        {0.001, {0, 0, 0, 0, 1}},
        {86399.9999, {0, 23, 59, 59, 999}},
        {2147483647.75, {24855, 3, 14, 7, 750}},
        {2147483648.0, {24855, 3, 14, 7, 0}},
        {1e300, {24855, 3, 14, 7, 0}},
        {-infinity, {-24855, -3, -14, -7, 0}},
        {notANumber, {0, 0, 0, 0, 0}},
    };
    for (auto const & row : rows) {
        std::vector<int> five(5, -1);
        LCTimeSpan(row.seconds).Decode(five[0], five[1], five[2], five[3], five[4]);
        EXPECT_EQ(five, row.parts) << row.seconds;
        std::vector<int> four(4, -1);
        LCTimeSpan(row.seconds).Decode(four[0], four[1], four[2], four[3]);
        EXPECT_EQ(four, (std::vector<int>{24 * five[0] + five[1], five[2], five[3], five[4]})) << row.seconds;
    }
}

TEST(TimeSpan, ComputesAsItsDoubleDoes)
{
    LCTimeSpan span(10.0);
    EXPECT_EQ(&(span += 5.0), &span);
    EXPECT_EQ(&(span -= 1.0), &span);
    EXPECT_EQ(&(span *= 3.0), &span);
    EXPECT_EQ(&(span /= 4.0), &span);
    EXPECT_EQ(span, LCTimeSpan(10.5));
    EXPECT_EQ((span + 1.5) * 2.0 - span / 2.0, LCTimeSpan(18.75));
    EXPECT_EQ((span / 0.0).AsSeconds(), infinity);
    EXPECT_TRUE(std::signbit((-LCTimeSpan()).AsSeconds()));
    EXPECT_EQ(-LCTimeSpan(), LCTimeSpan());
}

TEST(TimeSpan, RoundsTheSignedValueToSeconds)
{
    struct {
        double seconds, up, down;
    } const rows[] = {
        {1.2, 2.0, 1.0}, {-1.2, -1.0, -2.0}, {3.0, 3.0, 3.0}, {-0.5, -0.0, -1.0}, {1e300, 1e300, 1e300}};
    for (auto const & row : rows) {
        LCTimeSpan up(row.seconds);
        LCTimeSpan down(row.seconds);
        up.CeilToSeconds();
        down.FloorToSeconds();
        EXPECT_EQ(up, row.up);
        EXPECT_EQ(std::signbit(up.AsSeconds()), std::signbit(row.up)) << row.seconds;
        EXPECT_EQ(down, row.down);
    }
}

TEST(TimeSpan, ComparesExactlyAndNeverEqualToNotANumber)
{
    ExpectTotalOrder(std::vector<LCTimeSpan>{-infinity, -1.0, 0.0, 5e-324, 0.3, 0.1 + 0.2, infinity});
    LCTimeSpan const nan(notANumber);
    for (LCTimeSpan const other : {LCTimeSpan(), nan}) {
        EXPECT_TRUE(nan != other);
        EXPECT_FALSE(nan == other || nan < other || nan <= other || nan > other || nan >= other);
    }
}

}  // namespace
