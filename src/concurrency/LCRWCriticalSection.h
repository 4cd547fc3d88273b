#pragma once

#include <atomic>
#include <cstdint>
#include <mutex>

#include "foundation/Export.h"
#include "foundation/LCTypes.h"

/// Reader-writer lock with time-outs: any number of readers, or one writer.
///
/// A thread that waits for the writer lock goes ahead of all readers that come later; readers that wait go
/// ahead of writers that come later. Nobody waits for ever: a writer may be overtaken by others for about a
/// millisecond, then it is its turn. Time-outs are in milliseconds, 0 for not waiting at all and 0xFFFFFFFF
/// for no limit, on a clock that setting the time does not change.
///
/// The thread that holds the writer lock may take it again, and must release it as often; it may also take
/// reader locks. A reader lock belongs to no thread: another one may release it. But a thread that holds one
/// must not ask for the writer lock, since it would wait for itself, nor for a second reader lock without a
/// time-out, since a writer may be waiting in between. Unlocking what is not held breaks the lock. What an
/// ended thread held stays locked.
///
/// Without contention, a lock or unlock is one atomic operation and no system call.
class QRTCL_API LCRWCriticalSection {
public:
    constexpr LCRWCriticalSection() noexcept = default;
    LCRWCriticalSection(LCRWCriticalSection const &) = delete;
    LCRWCriticalSection & operator=(LCRWCriticalSection const &) = delete;
    /// Nobody may hold the lock or wait for it; this is not checked. Whoever is the last to hold it may
    /// destroy it, also while another's `UnlockWriter` has not yet returned.
    virtual ~LCRWCriticalSection() { AwaitQueueFree(); }

    // True if the lock is now held, false if the time is over.

    bool LockReader(LCULong timeout);
    /// May take twice the time-out: the readers that are still inside get it anew once the other writers have
    /// left.
    bool LockWriter(LCULong timeout);

    void UnlockReader();
    void UnlockWriter();

private:
    struct Waiter;

    bool TryEnter(bool asWriter);
    bool WaitAsWriter(LCULong timeout);
    bool Queue(bool asWriter, LCULong timeout);
    bool Append(Waiter & waiter);
    bool EnterFromHead(Waiter & waiter);
    bool TakeOut(Waiter & waiter);
    void Remove(Waiter & waiter);
    void Open();
    bool AwaitReadersGone(LCULong timeout);
    void AwaitQueueFree();

    /// Number of readers, and the flags below them: all that matters without contention.
    std::atomic<std::uint32_t> mivState{0};
    std::uint32_t mivDepth = 0;
    std::atomic<std::uint64_t> mivOwner{0};
    /// Around the queue, which is in order of arrival. Held for a few instructions only.
    std::mutex movQueueLock;
    Waiter * mopFirst = nullptr;
};
