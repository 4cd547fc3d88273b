#pragma once

#include "foundation/Export.h"

/// Asks whether an operation is cancelled; this class answers false.
class QRTCL_API LCCheckCancel {
public:
    LCCheckCancel() = default;
    LCCheckCancel(LCCheckCancel const &) = default;
    LCCheckCancel & operator=(LCCheckCancel const &) = default;
    virtual ~LCCheckCancel();

    virtual bool IsCancelled();
};
