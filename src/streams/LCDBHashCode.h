#pragma once

#include "foundation/Export.h"

/// Stands for the state of a database record, so that two readings of it can be compared.
class QRTCL_API LCDBHashCode {
public:
    LCDBHashCode() = default;
    LCDBHashCode(LCDBHashCode const &) = default;
    LCDBHashCode & operator=(LCDBHashCode const &) = default;
    virtual ~LCDBHashCode();

    /// True here for every object: the base has nothing that could differ. Derived classes say what counts.
    virtual bool IsEqual(LCDBHashCode const & other) const;
    /// A copy that the caller owns and deletes.
    virtual LCDBHashCode * Clone() const = 0;
};
