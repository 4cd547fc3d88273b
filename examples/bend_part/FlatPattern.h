#pragma once

#include <vector>

#include "Part.h"

/// The developed blank: where the bends of a part lie on the flat sheet, in mm from the edge of the first
/// flange.
struct FlatPattern {
    struct BendZone {
        double start;  ///< where the sheet begins to turn
        double line;   ///< the bend line, in the middle of the zone
        double end;
    };

    explicit FlatPattern(Part const & part);

    double length = 0.0;
    std::vector<BendZone> zones;
};
