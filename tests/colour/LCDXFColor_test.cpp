#include "colour/LCDXFColor.h"

#include <algorithm>
#include <cmath>
#include <map>

#include "colour/LCNamedColors.h"
#include "colour/PrintColour.h"

namespace {

/// Entry 10 to 249 from the colour circle: a hue every 15 degrees, in five levels, full and mixed with white.
LCColor FromCircle(int index)
{
    constexpr double levels[] = {1.0, 0.65, 0.5, 0.3, 0.15};
    int const hue = (index - 10) / 10, shade = (index - 10) % 10;
    auto const level = [&](double turn) {
        double const pure = std::clamp(std::abs(std::fmod(hue / 4.0 + turn, 6) - 3) - 1, 0.0, 1.0);
        return static_cast<int>(255 * levels[shade / 2] * (shade % 2 == 1 ? (1 + pure) / 2 : pure));
    };
    return LCColor(level(0), level(4), level(2));
}

TEST(DXFColor, EntriesFollowTheColourCircleAndNoOtherColourHasAnIndex)
{
    using C = LCColor;
    using D = LCDXFColor;
    std::map<int, LCColor> expected = {
        {1, D::Red()}, {2, D::Yellow()}, {3, D::Green()}, {4, D::Cyan()}, {5, D::Blue()}, {6, D::Magenta()},
        {7, D::White()}, {8, LCColorGray()}, {9, LCColorSilver()}, {10, C(255, 1, 1)}, {50, C(255, 255, 1)},
        {90, C(1, 255, 1)}, {130, C(1, 255, 255)}, {170, C(1, 1, 255)}, {210, C(255, 1, 255)}, {43, C(165, 145, 82)}};
    for (int i = 10; i < 250; ++i) expected.emplace(i, FromCircle(i));
    int index = 250;
    for (int const gray : {84, 118, 152, 186, 220, 252}) expected.emplace(index++, C(gray, gray, gray));
    auto const & colours = D::GetACIColors();
    ASSERT_EQ(std::pair(colours.size(), expected.size()), std::pair(256ul, 255ul));
    EXPECT_EQ(colours[0], D::Black());
    for (auto const & [i, colour] : expected) {
        EXPECT_EQ(D::Color_From_ACI(i), colour) << i;
        EXPECT_EQ(colours[static_cast<std::size_t>(i)], colour) << i;
        EXPECT_EQ(D::Color_To_ACI(colour), i);
        EXPECT_EQ(D::Color_To_ACI(C(colour.GetTRGB(), i - 1)), 0) << i;
        EXPECT_EQ(D::Color_To_ACI(C(i << 24 | colour.GetTRGB(), 255)), 0) << i;
    }
    for (int const i : {0, -1, 256, 2147483647}) EXPECT_EQ(D::Color_From_ACI(i), LCColorNone());

    int found = 0;
    for (int rgb = 0; rgb < 1 << 24; ++rgb) found += D::Color_To_ACI(C(rgb, 255)) != 0;
    EXPECT_EQ(found, 255);
}

}  // namespace
