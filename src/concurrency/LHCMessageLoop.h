#pragma once

#include <functional>
#include <thread>

#include "foundation/Export.h"

/// The message loop of the calling thread: where timers tick, and where calls from other threads arrive.
///
/// A thread has a loop from the first time that it uses one, by any of these operations or by starting a
/// timer, to its end. Either `Run` is the thread's main loop, or another event loop is, which watches
/// `GetDescriptor` and calls `ProcessMessages(0)` whenever it is readable.
///
/// Loops may be nested: a call or a receiver may itself call `Run` or `ProcessMessages`. An exception that
/// one raises passes through; the loop is as before and may be run again.
///
/// A forked child shares the descriptors of the loops with its parent, and would set its parent's alarm: it
/// must neither run the loop nor start or stop timers.
class QRTCL_API LHCMessageLoop {
public:
    LHCMessageLoop() = delete;

    /// Runs until `Quit`. Returns at once if the system gives no descriptor.
    static void Run();

    /// Ends the innermost `Run` of this thread once the current call or tick has returned; without one, the
    /// next `Run` returns at once.
    static void Quit();

    /// Handles what is due, and waits at most so many milliseconds for something to become due, 0xFFFFFFFF
    /// for no limit. True if anything ran.
    static bool ProcessMessages(unsigned int timeoutMilliseconds);

    /// Becomes readable when something is due; watch it, and do nothing else to it. It is rarely readable
    /// with nothing to do. -1 if the system gives none.
    static int GetDescriptor();

    /// Has the loop of another thread, or of this one, run the call; calls run in the order in which they
    /// came, each once. False if the thread has no loop. What it has not run when it ends is dropped.
    static bool Post(std::thread::id thread, std::function<void()> call);
};
