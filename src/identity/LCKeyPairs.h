#pragma once

#include <concepts>
#include <utility>

#include "foundation/Export.h"
#include "identity/LCKey.h"

// Pairs of a key and something else. They are ordered by `first`, then by `second`, as the standard pair. The
// order LCCompareCI is stranger: it looks at the IDs of `first` without case, then, if `first` is equal by
// `EqCI`, at `second`. Pairs whose IDs are equal and whose revisions differ are thus equivalent whatever
// their `second`, which makes it no strict weak order; only `std::list::sort` is safe with it.

class QRTCL_API LCKeyIDRevPair : public std::pair<LCKeyIDRev, LCKeyIDRev> {
public:
    /// `second` by its exact order.
    struct QRTCL_API LCCompareCI {
        bool operator()(LCKeyIDRevPair const & a, LCKeyIDRevPair const & b) const;
    };
    /// Unlike `EqCI`, takes `second` exactly, case included.
    struct QRTCL_API LCEqualCI {
        bool operator()(LCKeyIDRevPair const & a, LCKeyIDRevPair const & b) const;
    };

    LCKeyIDRevPair() = default;
    LCKeyIDRevPair(LCKeyIDRev const & f, LCKeyIDRev const & s) : pair(f, s) {}

    bool EqCI(LCKeyIDRevPair const & other) const;
};

class QRTCL_API LCKeyIDRevBoolPair : public std::pair<LCKeyIDRev, bool> {
public:
    /// False before true.
    struct QRTCL_API LCCompareCI {
        bool operator()(LCKeyIDRevBoolPair const & a, LCKeyIDRevBoolPair const & b) const;
    };
    struct QRTCL_API LCEqualCI {
        bool operator()(LCKeyIDRevBoolPair const & a, LCKeyIDRevBoolPair const & b) const
        {
            return a.EqCI(b);
        }
    };

    LCKeyIDRevBoolPair() = default;
    template <std::same_as<bool> Bool> LCKeyIDRevBoolPair(LCKeyIDRev const & f, Bool s) : pair(f, s) {}

    bool EqCI(LCKeyIDRevBoolPair const & other) const;
};

class QRTCL_API LCKeyIDRevStringPair : public std::pair<LCKeyIDRev, LCString> {
public:
    struct QRTCL_API LCCompareCI {
        bool operator()(LCKeyIDRevStringPair const & a, LCKeyIDRevStringPair const & b) const;
    };
    struct QRTCL_API LCEqualCI {
        bool operator()(LCKeyIDRevStringPair const & a, LCKeyIDRevStringPair const & b) const
        {
            return a.EqCI(b);
        }
    };

    LCKeyIDRevStringPair() = default;
    LCKeyIDRevStringPair(LCKeyIDRev const & f, LCString const & s) : pair(f, s) {}

    bool EqCI(LCKeyIDRevStringPair const & other) const;
};
