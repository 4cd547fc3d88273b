#include "colour/LCColor.h"

#include <array>
#include <cmath>
#include <concepts>

#include "colour/PrintColour.h"

namespace {

static_assert(!std::convertible_to<int, LCColor> && !std::totally_ordered<LCColor>);

using C = LCColor;
using B = LCBGRColor;

constexpr int Int(unsigned int bits) { return static_cast<int>(bits); }

TEST(Color, EveryConstructorFillsTheFieldsItNames)
{
    struct { LCColor colour; std::array<int, 5> fields; } const rows[] = {
        {C(), {31, 255, 255, 255, 255}}, {C(Int(0x80FF7F01), 0), {128, 255, 127, 1, 0}},
        {C(1, 2, 3, 4, 5), {1, 2, 3, 4, 5}}, {C(300, 256, -1, 4), {0, 44, 0, 255, 4}}, {B(), {0, 0, 0, 0, 255}},
        {LCRGBColor(), {0, 0, 0, 0, 255}}, {B(Int(0xFE020304), 5), {254, 4, 3, 2, 5}},
        {B(Int(0xFF00000F), 8), {255, 0, 0, 15, 8}}, {B(3, 2, 1), {0, 1, 2, 3, 255}},
        {B(3, 2, 1, 4), {0, 1, 2, 3, 4}}, {B(9, 3, 2, 1, 4), {9, 1, 2, 3, 4}}};
    for (auto const & [c, fields] : rows) {
        EXPECT_EQ((std::array{c.GetT(), c.GetR(), c.GetG(), c.GetB(), c.GetA()}), fields);
        EXPECT_EQ(C(c.GetTRGB(), c.GetA()), c);
        EXPECT_EQ(B(c.GetTBGR(), c.GetA()), c);
    }
    EXPECT_EQ(C(254, 1, 2, 3, 7).GetTBGR(), Int(0xFE030201));
    EXPECT_EQ(C(255, 1, 2, 3, 7).GetTBGR(), Int(0xFF010203));
    EXPECT_EQ(C(31, 0, 20, 255, 9).StrTRGBA(), "<T>31</T><R>0</R><G>20</G><B>255</B><A>9</A>");
    C changed;
    changed.SetT(510);
    changed.SetR(-1);
    changed.SetG(256);
    changed.SetB(260);
    changed.SetA(-3);
    EXPECT_EQ(changed, C(254, 255, 0, 4, 253));
}

TEST(Color, OrderIsByTypeThenRedGreenBlueAlpha)
{
    ExpectTotalOrder(std::array{C(0, 0, 0, 0, 0), C(0, 0, 0, 0, 1), C(0, 0, 0, 1, 0), C(0, 0, 1, 0, 0),
                                C(0, 128, 0, 0, 0), C(127, 255, 255, 255, 255), C(128, 0, 0, 0, 0)});
}

TEST(Color, BrightnessCutsTowardZeroAndStopsAt255)
{
    struct { C colour; double factor; C after; } const rows[] = {
        {C(100, 200, 255, 9), 2.0, C(200, 255, 255, 9)}, {C(101, 255, 1), 0.5, C(50, 127, 0)},
        {C(), 0.5, C(31, 127, 127, 127, 255)}, {C(1, 2, 3), -1.0, C(255, 254, 253)},
        {C(1, 2, 3), -HUGE_VAL, C(0, 0, 0)}, {C(1, 0, 3), HUGE_VAL, C(255, 0, 255)},
        {C(255, 0, 0, 15, 255), 2.0, C(255, 0, 0, 15, 255)}};
    for (auto [colour, factor, after] : rows) {
        colour.SetBrightness(factor);
        EXPECT_EQ(colour, after) << factor;
    }
}

}  // namespace
