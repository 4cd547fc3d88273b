#include "colour/LCDXFColor.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace {

using Packed = std::uint32_t;  // red, green and blue, with blue in the low byte

consteval Packed Pack(int r, int g, int b)
{
    return static_cast<Packed>(r) << 16 | static_cast<Packed>(g) << 8 | static_cast<Packed>(b);
}

/// Entries 10 to 249: 24 hues, each in five levels of brightness, full and pale by turns.
consteval Packed HueEntry(int index)
{
    int const hue = (index - 10) / 10;
    int const shade = (index - 10) % 10;
    int const q = hue % 4;

    // The corners of the colour circle, and the channels between them, in quarters.
    int const fractions[6][3] = {{4, q, 0},     {4 - q, 4, 0}, {0, 4, q},
                                 {0, 4 - q, 4}, {q, 0, 4},     {4, 0, 4 - q}};
    int const percent[5] = {100, 65, 50, 30, 15};

    int channels[3] = {};
    for (int i = 0; i < 3; ++i) {
        int const quarters = fractions[hue / 4][i];
        int const eighths = shade % 2 != 0 ? 4 + quarters : 2 * quarters;
        channels[i] = 255 * percent[shade / 2] * eighths / 800;
        // The six pure colours stand among the first entries already: these differ from them by one.
        if (q == 0 && shade == 0 && channels[i] == 0) channels[i] = 1;
    }
    return Pack(channels[0], channels[1], channels[2]);
}

consteval std::array<Packed, 256> MakePalette()
{
    std::array<Packed, 256> palette = {
        Pack(0, 0, 0),   Pack(255, 0, 0),   Pack(255, 255, 0),   Pack(0, 255, 0),     Pack(0, 255, 255),
        Pack(0, 0, 255), Pack(255, 0, 255), Pack(255, 255, 255), Pack(128, 128, 128), Pack(192, 192, 192),
    };
    for (int i = 10; i < 250; ++i) palette[static_cast<std::size_t>(i)] = HueEntry(i);
    std::size_t next = 250;
    for (int const gray : {84, 118, 152, 186, 220, 252}) palette[next++] = Pack(gray, gray, gray);
    return palette;
}

constexpr std::array<Packed, 256> palette = MakePalette();

// The way back: a factor was searched for that gives each entry but black a slot of its own.

constexpr int slotBits = 11;

constexpr std::size_t Slot(Packed colour) { return (colour * 0x8FE8F50Du) >> (32 - slotBits); }

/// In the slot of each colour, the colour and its index in the low byte; 0 in the others.
consteval std::array<std::uint32_t, 1 << slotBits> MakeIndexes()
{
    std::array<std::uint32_t, 1 << slotBits> indexes = {};
    for (std::uint32_t i = 1; i < palette.size(); ++i) {
        std::uint32_t & slot = indexes[Slot(palette[i])];
        if (slot != 0) throw "two colours in one slot";
        slot = palette[i] << 8 | i;
    }
    return indexes;
}

constexpr auto indexes = MakeIndexes();

}  // namespace

LCColor LCDXFColor::Color_From_ACI(int index)
{
    if (index <= 0 || index >= static_cast<int>(palette.size())) return LCColor();
    return LCColor(static_cast<int>(palette[static_cast<std::size_t>(index)]), 255);
}

int LCDXFColor::Color_To_ACI(LCColor const & colour)
{
    // With a type, the packed colour has more than 24 bits, and no slot holds that.
    Packed const packed = static_cast<Packed>(colour.GetTRGB());
    std::uint32_t const found = indexes[Slot(packed)];
    // Without a branch: which colours have an index, nobody can foresee.
    int const is = static_cast<int>(found >> 8 == packed) & static_cast<int>(colour.GetA() == 255);
    return static_cast<int>(found & 0xFF) * is;
}

std::vector<LCColor> const & LCDXFColor::GetACIColors() { return movACIColors; }

std::vector<LCColor> LCDXFColor::PrepareACIColors()
{
    std::vector<LCColor> colours;
    colours.reserve(palette.size());
    for (Packed const colour : palette) colours.emplace_back(static_cast<int>(colour), 255);
    return colours;
}
