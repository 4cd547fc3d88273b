#pragma once

#include "foundation/Export.h"
#include "foundation/LCDebugMessage.h"
#include "foundation/LCString.h"

/// Answers the messages of `covDebugMessage` with `LHCMessageBox` for as long as it lives, on the thread that
/// raises them. An application creates one at its start and destroys it before the library goes down; each
/// one more shows each message once more.
class QRTCL_API LCDebugMessageDefault {
public:
    /// Switches `covDebugMessage.mbvReportEnabled` on, and nothing switches it off again: a caller may, and
    /// then there are no dialogs and every answer is No.
    LCDebugMessageDefault();

private:
    void OnReportDebugMessage(LCString const & caption, LCString const & text);
    void OnReportDebugMessageYesNo(LCString const & caption, LCString const & text, bool & answer);

    LCEvent2Param<LCString const &, LCString const &>::LCHook movReport;
    LCEvent3Param<LCString const &, LCString const &, bool &>::LCHook movReportYesNo;
};
