#pragma once

#include "concurrency/LCEvent.h"
#include "foundation/Export.h"
#include "foundation/LCString.h"

/// A channel for notes and yes/no questions to the developer or the operator. Without a receiver a message
/// reaches nobody.
class QRTCL_API LCDebugMessage {
public:
    /// Asked by the default dialogs only: raising works either way.
    bool mbvReportEnabled = false;
    /// Caption, text.
    LCEvent2Param<LCString const &, LCString const &> ReportDebugMessage;
    /// Caption, text, answer: a receiver sets it to true for Yes.
    LCEvent3Param<LCString const &, LCString const &, bool &> ReportDebugMessageYesNo;
};

/// The channel of the process. Receivers are hooked and unhooked while no other thread raises a message.
extern QRTCL_API LCDebugMessage covDebugMessage;
