#pragma once

#include "colour/LCColor.h"

// A class for each colour that the family names in its code: `LCColorPBRam()` is the colour of that machine
// part.
//
// The rows in `colour/lists/` are the colours. The argument of each constructor is the alpha and nothing
// else. What a class gives is an ordinary colour that can be changed, and comparisons look at the fields
// only: `LCColorWebRed() == LCColorRed()`. The same word in two groups need not be the same colour:
// `LCColorOrange` is not `LCColorWebOrange`.

#define QRTCL_COLOUR(name, t, r, g, b, a)                                                                    \
    class QRTCL_API name : public LCColor {                                                                  \
    public:                                                                                                  \
        constexpr name() : name(a) {}                                                                        \
        constexpr explicit name(int alpha) : LCColor(t, r, g, b, alpha) {}                                   \
    };
#include "colour/lists/Basic.inc"
#include "colour/lists/Machine.inc"
#include "colour/lists/System.inc"
#include "colour/lists/Web.inc"
#undef QRTCL_COLOUR
