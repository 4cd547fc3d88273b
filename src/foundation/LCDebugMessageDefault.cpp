#include "foundation/LCDebugMessageDefault.h"

#include "foundation/LHCMessageBox.h"

LCDebugMessageDefault::LCDebugMessageDefault()
    : movReport(covDebugMessage.ReportDebugMessage, this, &LCDebugMessageDefault::OnReportDebugMessage),
      movReportYesNo(covDebugMessage.ReportDebugMessageYesNo, this,
                     &LCDebugMessageDefault::OnReportDebugMessageYesNo)
{
    covDebugMessage.mbvReportEnabled = true;
}

void LCDebugMessageDefault::OnReportDebugMessage(LCString const & caption, LCString const & text)
{
    if (covDebugMessage.mbvReportEnabled) LHCMessageBox::Show(text, caption, LHCMessageBox::civStyle_Ok);
}

void LCDebugMessageDefault::OnReportDebugMessageYesNo(LCString const & caption, LCString const & text,
                                                      bool & answer)
{
    answer = false;
    if (!covDebugMessage.mbvReportEnabled) return;
    answer =
        LHCMessageBox::Show(text, caption, LHCMessageBox::civStyle_YesNo) == LHCMessageBox::civAnswer_Yes;
}
