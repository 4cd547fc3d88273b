#include "colour/LCColor.h"

#include <array>
#include <cmath>
#include <concepts>

#include "colour/PrintColour.h"

namespace {

static_assert(std::is_nothrow_move_constructible_v<LCColor> && std::has_virtual_destructor_v<LCColor>);
static_assert(!std::convertible_to<int, LCColor> && !std::totally_ordered<LCColor>);
static_assert(LCColor::StandardColorsCount == 16 && LCColor::ExtendedColorsCount == 4);

constexpr int Int(unsigned int bits) { return static_cast<int>(bits); }

TEST(Color, EveryConstructorFillsTheFieldsItNames)
{
    struct { LCColor colour; std::array<int, 5> fields; } const rows[] = {
        {LCColor(), {31, 255, 255, 255, 255}}, {LCColor(Int(0x80FF7F01), 0), {128, 255, 127, 1, 0}},
        {LCColor(1, 2, 3), {0, 1, 2, 3, 255}}, {LCColor(1, 2, 3, 4, 5), {1, 2, 3, 4, 5}},
        {LCColor(300, 256, -1), {0, 44, 0, 255, 255}}, {LCRGBColor(), {0, 0, 0, 0, 255}},
        {LCRGBColor(1, 2, 3), {0, 1, 2, 3, 255}}, {LCBGRColor(), {0, 0, 0, 0, 255}},
        {LCBGRColor(Int(0xFE020304), 5), {254, 4, 3, 2, 5}}, {LCBGRColor(Int(0xFF00000F), 255), {255, 0, 0, 15, 255}},
        {LCBGRColor(3, 2, 1), {0, 1, 2, 3, 255}}, {LCBGRColor(3, 2, 1, 4), {0, 1, 2, 3, 4}},
        {LCBGRColor(9, 3, 2, 1, 4), {9, 1, 2, 3, 4}},
    };
    for (auto const & [c, fields] : rows) {
        EXPECT_EQ((std::array{c.GetT(), c.GetR(), c.GetG(), c.GetB(), c.GetA()}), fields);
        EXPECT_EQ(LCColor(c.GetTRGB(), c.GetA()), c);
        EXPECT_EQ(LCBGRColor(c.GetTBGR(), c.GetA()), c);
    }
    EXPECT_EQ(LCColor(254, 1, 2, 3, 7).GetTBGR(), Int(0xFE030201));
    EXPECT_EQ(LCColor(255, 1, 2, 3, 7).GetTBGR(), Int(0xFF010203));
    EXPECT_EQ(LCColor(31, 0, 20, 255, 9).StrTRGBA(), "<T>31</T><R>0</R><G>20</G><B>255</B><A>9</A>");
}

TEST(Color, SettersCutToTheLowByteAndLeaveTheOthers)
{
    LCColor colour(1, 2, 3, 4, 5);
    colour.SetR(-1);
    colour.SetB(260);
    EXPECT_EQ(colour, LCColor(1, 255, 3, 4, 5));
    colour.SetT(511);
    colour.SetG(256);
    colour.SetA(-2);
    EXPECT_EQ(colour, LCColor(255, 255, 0, 4, 254));
}

TEST(Color, OrderIsByTypeThenRedGreenBlueAlpha)
{
    using C = LCColor;
    ExpectTotalOrder(std::array{C(0, 0, 0, 0, 0), C(0, 0, 0, 0, 1), C(0, 0, 0, 1, 0), C(0, 0, 1, 0, 0),
                                C(0, 128, 0, 0, 0), C(127, 255, 255, 255, 255), C(128, 0, 0, 0, 0)});
}

TEST(Color, BrightnessCutsTowardZeroAndStopsAt255)
{
    struct { LCColor before; double factor; LCColor after; } const rows[] = {
        {LCColor(100, 200, 255, 9), 2.0, LCColor(200, 255, 255, 9)}, {LCColor(101, 255, 1), 0.5, LCColor(50, 127, 0)},
        {LCColor(), 0.5, LCColor(31, 127, 127, 127, 255)}, {LCColor(1, 2, 3), -1.0, LCColor(255, 254, 253)},
        {LCColor(1, 2, 3), -HUGE_VAL, LCColor(0, 0, 0)}, {LCColor(1, 0, 3), HUGE_VAL, LCColor(255, 0, 255)},
        {LCColor(255, 0, 0, 15, 255), 2.0, LCColor(255, 0, 0, 15, 255)},
    };
    for (auto const & row : rows) {
        LCColor colour = row.before;
        colour.SetBrightness(row.factor);
        EXPECT_EQ(colour, row.after) << row.factor;
    }
}

}  // namespace
