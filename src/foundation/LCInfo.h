#pragma once

#include "foundation/LCString.h"

/// A sink for what an operation wants to show its user. This class shows nothing and answers true;
/// applications override what they can show.
class QRTCL_API LCInfo {
public:
    LCInfo() = default;
    LCInfo(LCInfo const &) = default;
    LCInfo & operator=(LCInfo const &) = default;
    virtual ~LCInfo();

    virtual bool ShowInfo();
    virtual bool HideInfo();
    /// The text to show from now on.
    virtual bool SetInfo(LCString const & info);
    virtual bool ClearInfo();
};

/// The application's own sink; null at load. The library neither reads nor writes it. Set it before other
/// threads read it.
extern QRTCL_API LCInfo * gopInfo;
