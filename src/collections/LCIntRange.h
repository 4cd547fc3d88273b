#pragma once

#include "foundation/Export.h"

/// Two numbers, stored as they are: `First` may exceed `Last`.
class QRTCL_API LCIntRange {
public:
    LCIntRange() = default;
    LCIntRange(int first, int last) : First(first), Last(last) {}

    int First = 0;
    int Last = 0;
};
