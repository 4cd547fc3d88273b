#pragma once

#include <utility>

#include "foundation/Export.h"

/// Two numbers, both 0 at first, ordered by `first`, then by `second`.
class QRTCL_API LCIntIntPair : public std::pair<int, int> {
public:
    LCIntIntPair() = default;
    LCIntIntPair(int f, int s) : pair(f, s) {}
};

/// The same with 16 bits for `second`.
class QRTCL_API LCIntShortPair : public std::pair<int, short> {
public:
    LCIntShortPair() = default;
    LCIntShortPair(int f, short s) : pair(f, s) {}
};
