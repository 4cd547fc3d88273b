#include "colour/LCNamedColors.h"

#include <map>

#include "colour/PrintColour.h"

namespace {

static_assert(sizeof(LCColorRed) == sizeof(LCColor) && !std::is_convertible_v<int, LCColorRed>);

#define QRTCL_COLOUR(name, ...) {#name, name(), name(7)},
std::tuple<std::string, LCColor, LCColor> const namedColours[] = {
#include "colour/lists/Basic.inc"
#include "colour/lists/Machine.inc"
#include "colour/lists/System.inc"
#include "colour/lists/Web.inc"
};
#undef QRTCL_COLOUR

TEST(NamedColors, WebColoursAreKeywordsOfCSSAndSystemColoursCountUp)
{
    std::map<std::string, LCColor> keywords;
    std::ifstream file("data/css-colours.txt");
    file.ignore(1000, '\n');
    std::string keyword;
    for (int r, g, b; file >> keyword >> r >> g >> b;) keywords.emplace(keyword, LCColor(r, g, b));
    int index = static_cast<int>(0xFF000000u) - 1;
    for (auto const & [name, colour, withAlpha7] : namedColours) {
        EXPECT_EQ(colour.GetA(), name.ends_with("FillColor") ? 200 : 255) << name;
        EXPECT_EQ(withAlpha7, LCColor(colour.GetTRGB(), 7)) << name;
        if (name.starts_with("LCColorWeb")) {
            EXPECT_EQ(colour, keywords[LCString(name).Tail(10).LowerCase().str()]) << name;
        } else if (colour.GetT() == 255) {
            index += name == "LCColorSystem" ? 0 : name == "LCColorHotLight" ? 2 : 1;
            EXPECT_EQ(colour.GetTRGB(), index) << name;
        }
    }
}

}  // namespace
