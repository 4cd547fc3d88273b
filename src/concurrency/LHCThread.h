#pragma once

#include <memory>

#include "concurrency/LCThread.h"
#include "foundation/LCString.h"

class LHCThreadState;

/// A thread of the operating system.
///
/// Build it with true, hook receivers to `OnExecute`, and start it with `Resume`: a thread that starts at
/// once finds no receivers and ends. One that has ended may be started again by `Resume`; `IsTerminated` then
/// stays true from the outset. An exception that leaves a receiver ends the process.
///
/// All operations but construction and destruction may be called from any thread.
///
/// Forced end. The destructor does not wait for receivers that still run: it ends the thread under them. This
/// is for the end of a program or after a receiver has failed to answer `Terminate`; it can't be made safe:
/// - No destructor of the receivers' local objects runs: memory is lost, what they hold open stays open.
/// - A lock that a receiver holds stays locked for ever: a reader or writer lock of this library, a mutex,
///   that of a condition variable it waits on, the stream that it reads from.
/// - Data that a receiver was changing stay half changed.
/// The heap and this library's own state stay usable; an event that was firing there is at rest again. A
/// thread that is busy in a system library or in the parser of the documents, or has blocked all signals,
/// can't be ended at once. After 250 ms the destructor returns nevertheless and the thread is ended as soon
/// as it can be; what the receivers use, and the event, had better live on until then. Destroying the object
/// on its own thread ends that thread there and then; what follows is not executed.
///
/// On POSIX systems, one real-time signal is taken for this, the last that is free when the first thread
/// starts.
class QRTCL_API LHCThread : public LCThread {
public:
    /// What could not be done, as text.
    class QRTCL_API LCLocalThreadException {
    public:
        LCLocalThreadException(LCString const & text) : movText(text) {}
        /// The system's text for one of its error numbers.
        LCLocalThreadException(LCULong error);

        LCString GetMessageA() const { return movText; }

    private:
        LCString movText;
    };

    /// False starts the thread before the constructor returns; with true, the first `Resume` does.
    template <std::same_as<bool> Bool>
    explicit LHCThread(Bool suspended) : LHCThread(suspended ? Beginning::later : Beginning::now)
    {}
    LHCThread(LHCThread const &) = delete;
    LHCThread & operator=(LHCThread const &) = delete;
    /// A forced end if the thread still runs.
    ~LHCThread() override;

    /// Stops a running thread wherever it is, until as many calls of `Resume`. It may hold any lock, that of
    /// the heap too: until it is resumed, its controller had better not need one. A call in which it was
    /// sleeping may return early as interrupted (`poll`, `nanosleep`).
    void Suspend() override;
    /// Resumes a running thread, and does nothing if it is not suspended; starts one that does not run.
    void Resume() override;
    bool IsTerminated() override;
    void Terminate() override;
    /// Returns when the thread has ended or the time is over, and does not say which. Raises if the thread
    /// was never started.
    void WaitFor(LCULong timeout) override;

    // Without effect before the first start. Most systems allow only the super-user to go above normal.
    void SetPriorityHighest() override;
    void SetPriorityHigher() override;
    void SetPriorityNormal() override;
    void SetPriorityLower() override;
    void SetPriorityLowest() override;

private:
    enum class Beginning { now, later };
    explicit LHCThread(Beginning beginning);

    std::unique_ptr<LHCThreadState> mopState;
};
