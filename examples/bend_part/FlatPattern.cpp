#include "FlatPattern.h"

// A flange is measured over its outer corners. On the blank it keeps its straight stretch, which ends a
// set-back before each corner; between two stretches lies the neutral line of the bend.
FlatPattern::FlatPattern(Part const & part)
{
    double setBackBefore = 0.0;
    for (std::size_t i = 0; i < part.bends.size(); ++i) {
        Bend const & bend = part.bends[i];
        double const setBack = bend.SetBack(part.thickness);
        double const allowance = bend.Allowance(part.thickness);
        double const start = length + part.flanges[i] - setBackBefore - setBack;
        zones.push_back({start, start + allowance / 2.0, start + allowance});
        length = start + allowance;
        setBackBefore = setBack;
    }
    length += part.flanges.back() - setBackBefore;
}
