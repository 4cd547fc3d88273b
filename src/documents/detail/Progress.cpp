#include "documents/detail/Progress.h"

#include <utility>

#include "documents/detail/FileAccess.h"
#include "foundation/LCCheckCancel.h"
#include "foundation/LCInfo.h"

namespace qrtcl::documents {

Progress::Progress(LCInfo * info, LCCheckCancel * cancel, std::string what)
    : mopInfo(info), mopCancel(cancel), movWhat(std::move(what))
{}

Progress::~Progress()
{
    if (!mbvShown) return;
    try {
        mopInfo->ClearInfo();
        mopInfo->HideInfo();
    } catch (...) {
        // What was loaded or saved is so nevertheless.
    }
}

void Progress::Report(double done)
{
    if (mopCancel != nullptr && mopCancel->IsCancelled()) throw Failure{"cancelled"};
    int const percent = static_cast<int>(done * 100.0);
    if (mopInfo == nullptr || mivSteps == 1 || (mbvShown && percent == mivPercent)) return;
    if (!std::exchange(mbvShown, true)) mopInfo->ShowInfo();
    mivPercent = percent;
    mopInfo->SetInfo(LCString(movWhat + ": " + std::to_string(percent) + " %"));
}

}  // namespace qrtcl::documents
