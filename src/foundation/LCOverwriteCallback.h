#pragma once

#include "foundation/LCObject.h"

/// Asks whether an object may be overwritten; this class answers true.
class QRTCL_API LCOverwriteCallback {
public:
    LCOverwriteCallback() = default;
    LCOverwriteCallback(LCOverwriteCallback const &) = default;
    LCOverwriteCallback & operator=(LCOverwriteCallback const &) = default;
    virtual ~LCOverwriteCallback();

    /// `object` may be null.
    virtual bool AskOverwrite(LCObject * object);
};
