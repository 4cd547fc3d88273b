#include "colour/LCColor.h"

#include <cmath>
#include <concepts>
#include <limits>
#include <type_traits>

#include "colour/PrintColour.h"

namespace {

static_assert(std::is_nothrow_move_constructible_v<LCColor> && std::has_virtual_destructor_v<LCColor>);
static_assert(!std::convertible_to<int, LCColor> && !std::totally_ordered<LCColor>);
static_assert(LCColor::StandardColorsCount == 16 && LCColor::ExtendedColorsCount == 4);

constexpr int Int(unsigned int bits) { return static_cast<int>(bits); }

TEST(Color, EveryConstructorFillsTheFieldsItNames)
{
    struct {
        LCColor colour;
        int t, r, g, b, a;
    } const rows[] = {
        {LCColor(), 31, 255, 255, 255, 255},
        {LCColor(0x01020304, 5), 1, 2, 3, 4, 5},
        {LCColor(Int(0x80FF7F01), 0), 128, 255, 127, 1, 0},
        {LCColor(1, 2, 3), 0, 1, 2, 3, 255},
        {LCColor(1, 2, 3, 4), 0, 1, 2, 3, 4},
        {LCColor(1, 2, 3, 4, 5), 1, 2, 3, 4, 5},
        {LCColor(300, 256, -1), 0, 44, 0, 255, 255},
        {LCRGBColor(), 0, 0, 0, 0, 255},
        {LCRGBColor(0x01020304, 5), 1, 2, 3, 4, 5},
        {LCRGBColor(1, 2, 3), 0, 1, 2, 3, 255},
        {LCRGBColor(1, 2, 3, 4), 0, 1, 2, 3, 4},
        {LCRGBColor(1, 2, 3, 4, 5), 1, 2, 3, 4, 5},
        {LCBGRColor(), 0, 0, 0, 0, 255},
        {LCBGRColor(0x01020304, 5), 1, 4, 3, 2, 5},
        {LCBGRColor(Int(0xFE020304), 5), 254, 4, 3, 2, 5},
        {LCBGRColor(Int(0xFF00000F), 255), 255, 0, 0, 15, 255},
        {LCBGRColor(3, 2, 1), 0, 1, 2, 3, 255},
        {LCBGRColor(3, 2, 1, 4), 0, 1, 2, 3, 4},
        {LCBGRColor(9, 3, 2, 1, 4), 9, 1, 2, 3, 4},
    };
    for (auto const & row : rows) {
        SCOPED_TRACE(testing::PrintToString(row.colour));
        EXPECT_EQ(row.colour.GetT(), row.t);
        EXPECT_EQ(row.colour.GetR(), row.r);
        EXPECT_EQ(row.colour.GetG(), row.g);
        EXPECT_EQ(row.colour.GetB(), row.b);
        EXPECT_EQ(row.colour.GetA(), row.a);
    }
}

TEST(Color, IntegerFormsKeepAllButAlpha)
{
    struct {
        LCColor colour;
        unsigned int trgb, tbgr;
    } const rows[] = {
        {LCColor(), 0x1FFFFFFF, 0x1FFFFFFF},
        {LCColor(1, 2, 3), 0x00010203, 0x00030201},
        {LCColor(32, 0, 0, 0, 7), 0x20000000, 0x20000000},
        {LCColor(254, 1, 2, 3, 7), 0xFE010203, 0xFE030201},
        {LCColor(255, 1, 2, 3, 7), 0xFF010203, 0xFF010203},
    };
    for (auto const & row : rows) {
        EXPECT_EQ(row.colour.GetTRGB(), Int(row.trgb));
        EXPECT_EQ(row.colour.GetTBGR(), Int(row.tbgr));
        EXPECT_EQ(LCColor(row.colour.GetTRGB(), row.colour.GetA()), row.colour);
        EXPECT_EQ(LCBGRColor(row.colour.GetTBGR(), row.colour.GetA()), row.colour);
    }
}

TEST(Color, SettersCutToTheLowByteAndLeaveTheOthers)
{
    LCColor colour(1, 2, 3, 4, 5);
    colour.SetR(-1);
    EXPECT_EQ(colour, LCColor(1, 255, 3, 4, 5));
    colour.SetT(511);
    colour.SetG(256);
    colour.SetB(7);
    colour.SetA(-2);
    EXPECT_EQ(colour, LCColor(255, 255, 0, 7, 254));
}

TEST(Color, OrderIsByTypeThenRedGreenBlueAlpha)
{
    ExpectTotalOrder(std::vector<LCColor>{
        LCColor(0, 0, 0, 0, 0), LCColor(0, 0, 0, 0, 1), LCColor(0, 0, 0, 1, 0), LCColor(0, 0, 1, 0, 0),
        LCColor(0, 1, 0, 0, 0), LCColor(0, 128, 0, 0, 0), LCColor(127, 255, 255, 255, 255),
        LCColor(128, 0, 0, 0, 0), LCColor(255, 0, 0, 0, 0)});
    EXPECT_NE(LCColor(), LCRGBColor());
}

TEST(Color, BrightnessCutsTowardZeroAndStopsAt255)
{
    constexpr double huge = std::numeric_limits<double>::infinity();
    struct {
        LCColor before;
        double factor;
        LCColor after;
    } const rows[] = {
        {LCColor(100, 200, 255, 9), 2.0, LCColor(200, 255, 255, 9)},
        {LCColor(101, 255, 1), 0.5, LCColor(50, 127, 0)},
        {LCColor(1, 2, 3), 1.0, LCColor(1, 2, 3)},
        {LCColor(1, 2, 3), 0.0, LCColor(0, 0, 0)},
        {LCColor(), 0.5, LCColor(31, 127, 127, 127, 255)},
        {LCColor(1, 2, 3), -1.0, LCColor(255, 254, 253)},
        {LCColor(1, 2, 3), 1e300, LCColor(255, 255, 255)},
        {LCColor(1, 2, 3), -huge, LCColor(0, 0, 0)},
        {LCColor(1, 0, 3), huge, LCColor(255, 0, 255)},
        {LCColor(1, 2, 3), std::nan(""), LCColor(0, 0, 0)},
        {LCColor(255, 0, 0, 15, 255), 2.0, LCColor(255, 0, 0, 15, 255)},
    };
    for (auto const & row : rows) {
        LCColor colour = row.before;
        colour.SetBrightness(row.factor);
        EXPECT_EQ(colour, row.after) << row.factor;
    }
}

TEST(Color, TextShowsAllFields)
{
    EXPECT_EQ(LCColor(31, 0, 20, 255, 9).StrTRGBA(), "<T>31</T><R>0</R><G>20</G><B>255</B><A>9</A>");
}

}  // namespace
