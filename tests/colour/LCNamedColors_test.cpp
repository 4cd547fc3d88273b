#include "colour/LCNamedColors.h"

#include <fstream>
#include <map>

#include "colour/PrintColour.h"

namespace {

// Each row of the lists is a class of its own that adds nothing to a colour.
#define QRTCL_COLOUR(name, ...)                                                                              \
    static_assert(std::is_base_of_v<LCColor, name> && sizeof(name) == sizeof(LCColor));                      \
    static_assert(!std::is_convertible_v<int, name>);
#include "colour/lists/Basic.inc"
#include "colour/lists/Machine.inc"
#include "colour/lists/System.inc"
#include "colour/lists/Web.inc"
#undef QRTCL_COLOUR

struct Named {
    std::string name;
    LCColor colour;
    LCColor withAlpha7;
};

#define QRTCL_COLOUR(name, ...) {#name, name(), name(7)},
Named const webColours[] = {
#include "colour/lists/Web.inc"
};
Named const systemColours[] = {
#include "colour/lists/System.inc"
};
Named const otherColours[] = {
#include "colour/lists/Basic.inc"
#include "colour/lists/Machine.inc"
};
#undef QRTCL_COLOUR

TEST(NamedColors, WebColoursAreTheKeywordsOfCSS)
{
    std::map<std::string, LCColor> keywords;
    std::ifstream file("data/css-colours.txt");
    file.ignore(1000, '\n');
    std::string name;
    for (int r, g, b; file >> name >> r >> g >> b;) keywords.emplace(name, LCColor(r, g, b));
    ASSERT_EQ(keywords.size(), 147u);
    for (auto const & row : webColours) {
        LCString keyword(row.name.substr(std::string("LCColorWeb").size()));
        keyword.ToLowerCase();
        ASSERT_TRUE(keywords.contains(keyword.str())) << row.name;
        EXPECT_EQ(row.colour, keywords.at(keyword.str())) << row.name;
    }
}

TEST(NamedColors, SystemColoursCountUpAndKeepTheirIndexInBothForms)
{
    int last = 0;
    for (auto const & row : systemColours) {
        EXPECT_EQ(row.colour.GetTRGB(), static_cast<int>(0xFF000000u) + row.colour.GetB()) << row.name;
        EXPECT_EQ(row.colour.GetTBGR(), row.colour.GetTRGB()) << row.name;
        EXPECT_TRUE(row.colour.GetB() == last || row.colour.GetB() == last + 1 || last == 24) << row.name;
        last = row.colour.GetB();
    }
    EXPECT_EQ(last, 30);
    EXPECT_EQ(LCColorBtnFace().GetB(), 15);
    EXPECT_EQ(LCColorHotLight().GetB(), 26);
    EXPECT_EQ(LCColorSystem(), LCColorScrollBar());
}

TEST(NamedColors, TheArgumentIsTheAlphaAndNothingElse)
{
    auto const check = [](auto const & rows) {
        for (auto const & row : rows) {
            bool const isFill = row.name.ends_with("FillColor");
            EXPECT_EQ(row.colour.GetA(), isFill ? 200 : 255) << row.name;
            EXPECT_EQ(row.withAlpha7, LCColor(row.colour.GetTRGB(), 7)) << row.name;
        }
    };
    check(systemColours);
    check(otherColours);
    check(webColours);
}

TEST(NamedColors, ANameIsOnlyAValue)
{
    struct {
        LCColor named, value;
    } const rows[] = {
        {LCColorRed(), LCColor(255, 0, 0)},
        {LCColorRed(), LCColorWebRed()},
        {LCColorNone(), LCColor()},
        {LCColorDefault(), LCColor(32, 0, 0, 0, 255)},
        {LCColorOrange(), LCColor(255, 128, 0)},
        {LCColorPink(), LCColor(255, 0, 128)},
        {LCColorSkyBlue(), LCColor(166, 202, 240)},
        {LCColorDeepSkyBlue(), LCColor(0, 192, 255)},
        {LCColorWebDeepskyBlue(), LCColor(0, 191, 255)},
        {LCColorPBRam(), LCColorWhite()},
        {LCColorPBGaugeFinger(), LCColorGreen()},
        {LCColorPunchHolder(), LCColor(0, 64, 64)},
        {LCColorOrvaneBackgroundGradientBottomWire(), LCColor(0, 80, 159)},
        {LCColorQRTBendAnnotationFillColor(255), LCColorQRTBendAnnotationLineColor()},
        {LCColorQRTSolutionAnnotationFillColor(), LCColor(177, 202, 196, 200)},
        {LCColorQRTBendSymmetryDownColor(), LCColorMaroon()},
    };
    for (auto const & row : rows) EXPECT_EQ(row.named, row.value);
    EXPECT_NE(LCColor(LCColorOrange()), LCColorWebOrange());

    LCColorRed changed;
    changed.SetR(0);
    LCColorRed copy;
    copy = changed;
    EXPECT_EQ(copy, LCColorBlack());
}

}  // namespace
