#pragma once

#include <cstdint>
#include <memory>

#include "foundation/Export.h"

// Threads of the system that another thread stops, resumes and ends. Results are 0 or the system's number of
// the error.
namespace qrtcl::platform {

/// One run of a thread. Shared by its owner, by callers that wait for it, and by the thread itself.
class Thread;
using ThreadPtr = std::shared_ptr<Thread>;

/// Runs `function` on a new thread.
int StartThread(ThreadPtr & thread, void (*function)(void *), void * argument);

/// Waits until the function has returned or was ended; 0 also when the time is over before that.
int WaitForThread(Thread & thread, std::uint32_t milliseconds);

/// Stops the thread as if it were no longer given the processor; the call returns when it has stopped. Stops
/// count. Inside `Uninterrupted` it runs on to the end of that first. A thread may stop itself.
int StopThread(Thread & thread);

/// Takes back one stop. Nothing happens to a thread that is not stopped.
int ResumeThread(Thread & thread);

/// Ends the thread from outside, a stopped one too. The function's frames are left without destructors;
/// objects of the thread's own (`thread_local`) are destroyed. Waits at most 250 ms for the thread to be
/// somewhere where that is possible: not inside the C and C++ libraries or libxml2, which may hold locks of
/// the whole process there, unless it sleeps in the system, and not inside `Uninterrupted`. False if it was
/// not there in that time: it then runs on, is ended as soon as it is, and must find alive until then what it
/// works on. For the calling thread, the call does not return.
bool EndThread(Thread & thread);

/// Gives back what the system holds for a thread; nothing but `WaitForThread` may follow.
void CloseThread(Thread & thread);

/// From -2, the lowest, to 2, beside that of the process. Raising it needs the right to; a failure is not
/// reported.
void SetThreadPriority(Thread & thread, int level);

/// Other functions behind the first four, for tests; a null entry is the system's own.
struct ThreadServices {
    decltype(StartThread) * start = nullptr;
    decltype(WaitForThread) * wait = nullptr;
    decltype(StopThread) * stop = nullptr;
    decltype(ResumeThread) * resume = nullptr;
};
QRTCL_API void ReplaceThreadServices(ThreadServices const & services) noexcept;

}  // namespace qrtcl::platform
