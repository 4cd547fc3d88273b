#include "concurrency/LCRWCriticalSection.h"

#include "foundation/Contract.h"
#include "platform/Protection.h"
#include "platform/Waiting.h"

using namespace qrtcl::platform;

namespace {

// The state. While a writer has closed the lock, nobody enters but that writer, which may still be waiting
// for the readers inside. A lock that is queued for but not closed has called the writer at the head of the
// queue: only a writer enters, mostly that one.
constexpr std::uint32_t closed = 1;     // a writer is inside or next
constexpr std::uint32_t queued = 2;     // the queue is not empty
constexpr std::uint32_t awaited = 4;    // the writer sleeps until the last reader has left
constexpr std::uint32_t oneReader = 8;  // above the flags, the number of readers inside

/// How often to look again before sleeping: longer than short sections take, shorter than falling asleep.
constexpr int spins = 100;

/// How long the writer at the head of the queue is called only, while threads that are awake may enter before
/// it. Sleepers that are handed the lock would make all others wait for their waking, and so put them to
/// sleep too.
constexpr Moment patience = 1'000'000;

}  // namespace

/// Somebody in the queue, on his own stack.
struct LCRWCriticalSection::Waiter {
    enum Call : std::uint32_t { none, enter, inside };

    LCRWCriticalSection & lock;
    bool writer;
    Moment since = Now();
    std::atomic<std::uint32_t> call = none;
    Waiter * next = nullptr;

    void Tell(Call what)
    {
        call.store(what, std::memory_order_release);
        WakeAll(call);
    }
};

bool LCRWCriticalSection::TryEnter(bool asWriter)
{
    std::uint32_t state = mivState.load(std::memory_order_relaxed);
    while ((state & (asWriter ? closed : closed | queued)) == 0) {
        std::uint32_t const entered = asWriter ? state | closed : state + oneReader;
        if (mivState.compare_exchange_weak(state, entered, std::memory_order_acquire,
                                           std::memory_order_relaxed))
            return true;
    }
    return false;
}

bool LCRWCriticalSection::LockReader(LCULong timeout)
{
    if (TryEnter(false)) return true;
    if (mivOwner.load(std::memory_order_relaxed) == ThreadNumber()) {
        mivState.fetch_add(oneReader, std::memory_order_relaxed);
        return true;
    }
    return Queue(false, timeout);
}

void LCRWCriticalSection::UnlockReader()
{
    QRTCL_REQUIRE(mivState.load(std::memory_order_relaxed) >= oneReader, "LCRWCriticalSection::UnlockReader",
                  this, "no reader holds the lock");
    std::uint32_t const state = mivState.fetch_sub(oneReader, std::memory_order_release) - oneReader;
    if (state < oneReader && (state & awaited) != 0) WakeAll(mivState);
}

bool LCRWCriticalSection::LockWriter(LCULong timeout)
{
    std::uint32_t state = 0;
    if (!mivState.compare_exchange_strong(state, closed, std::memory_order_acquire,
                                          std::memory_order_relaxed))
        return WaitAsWriter(timeout);
    mivOwner.store(ThreadNumber(), std::memory_order_relaxed);
    mivDepth = 1;
    return true;
}

bool LCRWCriticalSection::WaitAsWriter(LCULong timeout)
{
    Uninterrupted const uninterrupted;
    std::uint64_t const self = ThreadNumber();
    if (mivOwner.load(std::memory_order_relaxed) != self) {
        if (!TryEnter(true) && !Queue(true, timeout)) return false;
        mivOwner.store(self, std::memory_order_relaxed);
    }
    ++mivDepth;
    if (mivState.load(std::memory_order_acquire) < oneReader || AwaitReadersGone(timeout)) return true;
    UnlockWriter();
    return false;
}

void LCRWCriticalSection::UnlockWriter()
{
    QRTCL_REQUIRE(mivOwner.load(std::memory_order_relaxed) == ThreadNumber(),
                  "LCRWCriticalSection::UnlockWriter", this, "this thread does not hold the lock");
    if (--mivDepth != 0) return;
    mivOwner.store(0, std::memory_order_relaxed);
    std::uint32_t state = closed;
    while ((state & queued) == 0) {
        if (mivState.compare_exchange_weak(state, state & ~closed, std::memory_order_release,
                                           std::memory_order_relaxed))
            return;
    }
    Uninterrupted const uninterrupted;
    std::lock_guard const guard(movQueueLock);
    Open();
}

/// Waits for admission.
bool LCRWCriticalSection::Queue(bool asWriter, LCULong timeout)
{
    if (timeout == 0) return false;
    Uninterrupted const uninterrupted;
    for (int i = 0; i < spins; ++i) {
        Relax();
        if (TryEnter(asWriter)) return true;
    }

    Moment const until = After(timeout);
    Waiter self{*this, asWriter};
    auto const leave = [](void * argument) {
        auto & waiter = *static_cast<Waiter *>(argument);
        if (waiter.lock.TakeOut(waiter)) return;
        if (waiter.writer) {
            waiter.lock.mivOwner.store(ThreadNumber(), std::memory_order_relaxed);
            waiter.lock.mivDepth = 1;
            waiter.lock.UnlockWriter();
        } else {
            waiter.lock.UnlockReader();
        }
    };
    if (!Append(self)) return true;
    Undo const undo(leave, &self);
    for (;;) {
        std::uint32_t const call = self.call.load(std::memory_order_acquire);
        if (call == Waiter::inside || (call == Waiter::enter && EnterFromHead(self))) return true;
        if (call == Waiter::none && !SleepWhile(self.call, call, until)) return !TakeOut(self);
    }
}

/// False if the lock has opened meanwhile, and the waiter is inside.
bool LCRWCriticalSection::Append(Waiter & waiter)
{
    std::lock_guard const guard(movQueueLock);
    std::uint32_t state = 0;
    do {
        if (TryEnter(waiter.writer)) return false;
        state = mivState.load(std::memory_order_relaxed);
    } while ((state & (closed | queued)) == 0 ||
             !mivState.compare_exchange_weak(state, state | queued, std::memory_order_relaxed));
    Waiter ** end = &mopFirst;
    while (*end != nullptr) end = &(*end)->next;
    *end = &waiter;
    return true;
}

/// For the writer at the head of the queue, which has been called.
bool LCRWCriticalSection::EnterFromHead(Waiter & waiter)
{
    Uninterrupted const uninterrupted;
    std::lock_guard const guard(movQueueLock);
    if (waiter.call.load(std::memory_order_acquire) == Waiter::inside) return true;
    waiter.call.store(Waiter::none, std::memory_order_relaxed);
    if (!TryEnter(true)) return false;  // whoever has come first calls again as it leaves
    Remove(waiter);
    return true;
}

/// For a waiter whose time is over; false if it is inside already.
bool LCRWCriticalSection::TakeOut(Waiter & waiter)
{
    Uninterrupted const uninterrupted;
    std::lock_guard const guard(movQueueLock);
    if (waiter.call.load(std::memory_order_acquire) == Waiter::inside) return false;
    Remove(waiter);
    // If it had been called, the next one must be.
    if (mopFirst != nullptr && TryEnter(true)) Open();
    return true;
}

void LCRWCriticalSection::Remove(Waiter & waiter)
{
    Waiter ** place = &mopFirst;
    while (*place != &waiter) place = &(*place)->next;
    *place = waiter.next;
    if (mopFirst == nullptr) mivState.fetch_and(~queued, std::memory_order_relaxed);
}

/// Opens the lock, with the queue locked: the readers at the head of the queue are inside, the writer behind
/// them is called, or is the next inside if it has waited for long.
void LCRWCriticalSection::Open()
{
    auto const letIn = [this] {
        Waiter & head = *mopFirst;
        mopFirst = head.next;
        head.Tell(Waiter::inside);
    };
    while (mopFirst != nullptr && !mopFirst->writer) {
        mivState.fetch_add(oneReader, std::memory_order_relaxed);
        letIn();
    }
    std::uint32_t over = closed;
    if (mopFirst != nullptr) {
        if (Now() - mopFirst->since > patience) {
            letIn();
            over = 0;
        }
    }
    if (mopFirst == nullptr) over |= queued;
    mivState.fetch_and(~over, std::memory_order_release);
    if ((over & closed) != 0 && mopFirst != nullptr) mopFirst->Tell(Waiter::enter);
}

/// For the writer that has closed the lock.
bool LCRWCriticalSection::AwaitReadersGone(LCULong timeout)
{
    if (timeout == 0) return false;
    for (int i = 0; i < spins; ++i) {
        Relax();
        if (mivState.load(std::memory_order_acquire) < oneReader) return true;
    }

    Moment const until = After(timeout);
    auto const leave = [](void * lock) {
        auto & self = *static_cast<LCRWCriticalSection *>(lock);
        self.mivState.fetch_and(~awaited, std::memory_order_relaxed);
        self.UnlockWriter();
    };
    Undo const undo(leave, this);
    std::uint32_t state = mivState.fetch_or(awaited, std::memory_order_acquire) | awaited;
    while (state >= oneReader && SleepWhile(mivState, state, until)) {
        state = mivState.load(std::memory_order_acquire);
    }
    return mivState.fetch_and(~awaited, std::memory_order_acquire) < oneReader;
}

/// Who has let the last one in may still be on the way out of the queue.
void LCRWCriticalSection::AwaitQueueFree()
{
    Uninterrupted const uninterrupted;
    std::lock_guard const guard(movQueueLock);
}
