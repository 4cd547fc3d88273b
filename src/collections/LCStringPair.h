#pragma once

#include <utility>

#include "foundation/Export.h"
#include "foundation/LCString.h"

/// Two texts, ordered by `first`, then by `second`.
class QRTCL_API LCStringPair : public std::pair<LCString, LCString> {
public:
    LCStringPair() = default;
    LCStringPair(LCString const & f, LCString const & s) : pair(f, s) {}

    bool EqCI(LCStringPair const & other) const
    {
        return first.EqCI(other.first) && second.EqCI(other.second);
    }
};

/// A text and a number, ordered by `first`, then by `second`.
class QRTCL_API LCStringIntPair : public std::pair<LCString, int> {
public:
    LCStringIntPair() = default;
    LCStringIntPair(LCString const & f, int s) : pair(f, s) {}

    bool EqCI(LCStringIntPair const & other) const
    {
        return first.EqCI(other.first) && second == other.second;
    }
};
