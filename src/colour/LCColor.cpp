#include "colour/LCColor.h"

#include <algorithm>
#include <limits>

void LCColor::SetBrightness(double factor)
{
    if (mivT == 255) return;
    constexpr int lowest = std::numeric_limits<int>::min();
    for (std::uint8_t * const channel : {&mivR, &mivG, &mivB}) {
        double const scaled = std::min(*channel * factor, 255.0);
        *channel = LowByte(scaled >= lowest ? static_cast<int>(scaled) : lowest);
    }
}

LCString LCColor::StrTRGBA() const
{
    struct {
        char name;
        int value;
    } const fields[] = {{'T', mivT}, {'R', mivR}, {'G', mivG}, {'B', mivB}, {'A', mivA}};
    std::string text;
    for (auto const & [name, value] : fields) {
        text.append({'<', name, '>'}).append(std::to_string(value)).append({'<', '/', name, '>'});
    }
    return LCString(std::move(text));
}
