#include "colour/LCDXFColor.h"

#include <algorithm>
#include <cmath>
#include <map>

#include "colour/LCNamedColors.h"
#include "colour/PrintColour.h"

namespace {

/// A channel of the pure colour at an angle of the colour circle, from 0 to 1.
double Channel(double angle, double turn)
{
    return std::clamp(std::abs(std::fmod(angle / 60 + turn, 6) - 3) - 1, 0.0, 1.0);
}

/// Entry 10 to 249 from the colour circle: a hue every 15 degrees, in five levels, full and mixed with white.
LCColor FromCircle(int index)
{
    constexpr double levels[] = {1.0, 0.65, 0.5, 0.3, 0.15};
    double const angle = 15.0 * ((index - 10) / 10);
    int const shade = (index - 10) % 10;
    auto const level = [&](double turn) {
        double const fraction = Channel(angle, turn);
        return static_cast<int>(255 * levels[shade / 2] * (shade % 2 == 1 ? (1 + fraction) / 2 : fraction));
    };
    return LCColor(level(0), level(4), level(2));
}

TEST(DXFColor, EntriesAreKnownOrFollowTheColourCircle)
{
    std::map<int, LCColor> expected = {
        {0, LCColorNone()},          {-1, LCColorNone()},         {256, LCColorNone()},
        {2147483647, LCColorNone()}, {1, LCDXFColor::Red()},      {2, LCDXFColor::Yellow()},
        {3, LCDXFColor::Green()},    {4, LCDXFColor::Cyan()},     {5, LCDXFColor::Blue()},
        {6, LCDXFColor::Magenta()},  {7, LCDXFColor::White()},    {8, LCColorGray()},
        {9, LCColorSilver()},        {10, LCColor(255, 1, 1)},    {50, LCColor(255, 255, 1)},
        {90, LCColor(1, 255, 1)},    {130, LCColor(1, 255, 255)}, {170, LCColor(1, 1, 255)},
        {210, LCColor(255, 1, 255)}, {43, LCColor(165, 145, 82)}, {249, LCColor(38, 19, 23)}};
    for (int i = 10; i < 250; ++i) expected.emplace(i, FromCircle(i));
    int index = 250;
    for (int const gray : {84, 118, 152, 186, 220, 252}) expected.emplace(index++, LCColor(gray, gray, gray));
    for (auto const & [i, colour] : expected) EXPECT_EQ(LCDXFColor::Color_From_ACI(i), colour) << i;

    auto const & colours = LCDXFColor::GetACIColors();
    ASSERT_EQ(colours.size(), 256u);
    EXPECT_EQ(colours[0], LCDXFColor::Black());
    for (int i = 1; i < 256; ++i) EXPECT_EQ(colours[static_cast<std::size_t>(i)], expected.at(i)) << i;
}

// The way back is right for each of the 255 entries, and of all colours only 255 have one.
TEST(DXFColor, OnlyTheColoursOfTheTableHaveAnIndex)
{
    int found = 0;
    for (int rgb = 0; rgb < 1 << 24; ++rgb) found += LCDXFColor::Color_To_ACI(LCColor(rgb, 255)) != 0;
    EXPECT_EQ(found, 255);
    for (int i = 1; i < 256; ++i) {
        LCColor colour = LCDXFColor::Color_From_ACI(i);
        EXPECT_EQ(LCDXFColor::Color_To_ACI(colour), i);
        EXPECT_EQ(LCDXFColor::Color_To_ACI(LCColor(colour.GetTRGB(), i - 1)), 0);
        colour.SetT(i);
        EXPECT_EQ(LCDXFColor::Color_To_ACI(colour), 0);
    }
}

}  // namespace
