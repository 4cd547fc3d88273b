#include "colour/LCNamedColors.h"

#include <fstream>
#include <map>

#include "colour/PrintColour.h"

namespace {

struct Named {
    /// Each row of the lists is a class of its own that adds nothing to a colour.
    template <typename Class>
    Named(char const * text, Class plain, Class seven) : name(text), colour(plain), withAlpha7(seven)
    {
        static_assert(std::is_base_of_v<LCColor, Class> && sizeof(Class) == sizeof(LCColor));
        static_assert(!std::is_convertible_v<int, Class>);
    }
    std::string name;
    LCColor colour, withAlpha7;
};
#define QRTCL_COLOUR(name, ...) {#name, name(), name(7)},
std::vector<Named> const webColours = {
#include "colour/lists/Web.inc"
};
std::vector<Named> const systemColours = {
#include "colour/lists/System.inc"
};
std::vector<Named> const otherColours = {
#include "colour/lists/Basic.inc"
#include "colour/lists/Machine.inc"
};
#undef QRTCL_COLOUR

TEST(NamedColors, WebColoursAreTheKeywordsOfCSS)
{
    std::map<std::string, LCColor> keywords;
    std::ifstream file("data/css-colours.txt");
    file.ignore(1000, '\n');
    std::string keyword;
    for (int r, g, b; file >> keyword >> r >> g >> b;) keywords.emplace(keyword, LCColor(r, g, b));
    EXPECT_EQ(keywords.size(), 147u);
    for (auto const & row : webColours) {
        LCString const name = LCString(row.name).Tail(10).LowerCase();  // behind "LCColorWeb"
        EXPECT_TRUE(keywords.contains(name.str()) && keywords[name.str()] == row.colour) << row.name;
    }
}

TEST(NamedColors, SystemColoursCountUpAndKeepTheirIndexInBothForms)
{
    int index = -1;
    for (auto const & [name, colour, other] : systemColours) {
        if (name != "LCColorSystem") index += index == 24 ? 2 : 1;
        EXPECT_EQ(colour.GetTRGB(), static_cast<int>(0xFF000000u) + index) << name;
        EXPECT_EQ(colour.GetTBGR(), colour.GetTRGB()) << name;
    }
    EXPECT_EQ(index, 30);
}

TEST(NamedColors, TheArgumentIsTheAlphaAndNothingElse)
{
    for (auto const * rows : {&systemColours, &otherColours, &webColours}) {
        for (auto const & [name, colour, withAlpha7] : *rows) {
            EXPECT_EQ(colour.GetA(), name.ends_with("FillColor") ? 200 : 255) << name;
            EXPECT_EQ(withAlpha7, LCColor(colour.GetTRGB(), 7)) << name;
        }
    }
}

TEST(NamedColors, ANameIsOnlyAValue)
{
    EXPECT_EQ(LCColorRed(), LCColorWebRed());
    EXPECT_EQ(LCColorNone(), LCColor());
    EXPECT_EQ(LCColorOrange(), LCColor(255, 128, 0));
    EXPECT_EQ(LCColorQRTBendAnnotationFillColor(255), LCColorQRTBendAnnotationLineColor());
    LCColorRed changed;
    changed.SetR(0);
    EXPECT_EQ(LCColorRed(changed), LCColorBlack());
}

}  // namespace
