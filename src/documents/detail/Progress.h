#pragma once

#include <cstddef>
#include <string>

class LCCheckCancel;
class LCInfo;

namespace qrtcl::documents {

/// Tells of a long load or save and asks whether it is to go on; both are asked for only now and then.
class Progress {
public:
    /// `what` is the operation as the user reads it. Null for nobody.
    Progress(LCInfo * info, LCCheckCancel * cancel, std::string what);
    Progress(Progress const &) = delete;
    Progress & operator=(Progress const &) = delete;
    /// Clears and hides what was shown.
    ~Progress();

    /// Call for each paragraph. `done` gives the share that is done, from 0 to 1. Throws a Failure if
    /// cancelled.
    template <typename Done> void Step(Done done)
    {
        if (mivSteps++ % interval == 0) Report(mivSteps == 1 ? 0.0 : done());
    }

private:
    static constexpr std::size_t interval = 4096;

    void Report(double done);

    LCInfo * mopInfo;
    LCCheckCancel * mopCancel;
    std::string movWhat;
    std::size_t mivSteps = 0;
    int mivPercent = 0;  ///< the last one shown
    bool mbvShown = false;
};

}  // namespace qrtcl::documents
