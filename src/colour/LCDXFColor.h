#pragma once

#include <vector>

#include "colour/LCColor.h"
#include "foundation/Export.h"

/// The 256 colours that drawings in the DXF format name by an index, the ACI.
///
/// Both conversions take constant time and may run on any number of threads.
class QRTCL_API LCDXFColor {
public:
    /// The plain colour of an index from 1 to 255; no colour for any other number, 0 included.
    static LCColor Color_From_ACI(int index);
    /// The index of exactly this colour, never of a similar one. 0 for black, for no colour, and for any
    /// colour that has none, as every one with an alpha below 255 or a type.
    static int Color_To_ACI(LCColor const & colour);
    /// All colours in the order of their index; entry 0 is black.
    static std::vector<LCColor> const & GetACIColors();

    // The colours of the indexes 0 to 7. Black comes back from its index 0 as no colour.
#define QRTCL_DXF_COLOUR(name, r, g, b)                                                                      \
    class QRTCL_API name : public LCColor {                                                                  \
    public:                                                                                                  \
        constexpr name() : LCColor(r, g, b) {}                                                               \
    };
    // clang-format off
    QRTCL_DXF_COLOUR(Black,     0,   0,   0)
    QRTCL_DXF_COLOUR(Red,     255,   0,   0)
    QRTCL_DXF_COLOUR(Yellow,  255, 255,   0)
    QRTCL_DXF_COLOUR(Green,     0, 255,   0)
    QRTCL_DXF_COLOUR(Cyan,      0, 255, 255)
    QRTCL_DXF_COLOUR(Blue,      0,   0, 255)
    QRTCL_DXF_COLOUR(Magenta, 255,   0, 255)
    QRTCL_DXF_COLOUR(White,   255, 255, 255)
    // clang-format on
#undef QRTCL_DXF_COLOUR

private:
    static std::vector<LCColor> PrepareACIColors();

    static std::vector<LCColor> const movACIColors;
};
