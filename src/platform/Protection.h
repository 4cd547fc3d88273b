#pragma once

#include <atomic>
#include <cstdint>

// What the library does to live with threads that are stopped or ended from outside (platform/Threads.h).
namespace qrtcl::platform {

class Undo;

/// How the calling thread may be treated from outside.
struct Protection {
    bool IsUninterrupted() const;

    std::uint32_t uninterrupted = 0;
    bool putOff = false;
    Undo const * undo = nullptr;
    std::uint64_t number = 0;
};
/// Read in signal handlers, so it must not be allocated at its first use.
[[gnu::tls_model("initial-exec")]] extern constinit thread_local Protection cotProtection;

/// Has the calling thread do what was put off.
void CatchUp() noexcept;

/// From here on the calling thread is not stopped or ended from outside any more: it comes to its end first.
void FinishUninterrupted() noexcept;

/// While one lives, the calling thread is neither stopped nor ended from outside: it is put off. For short
/// sections without receivers that would leave something half done, such as those under a lock of the
/// library.
class Uninterrupted {
public:
    Uninterrupted() noexcept
    {
        ++cotProtection.uninterrupted;
        std::atomic_signal_fence(std::memory_order_seq_cst);
    }
    Uninterrupted(Uninterrupted const &) = delete;
    Uninterrupted & operator=(Uninterrupted const &) = delete;
    ~Uninterrupted()
    {
        std::atomic_signal_fence(std::memory_order_seq_cst);
        --cotProtection.uninterrupted;
        std::atomic_signal_fence(std::memory_order_seq_cst);
        if (cotProtection.putOff && !cotProtection.IsUninterrupted()) CatchUp();
    }
};

/// A sleep of the library that has left traces elsewhere, say in a queue. It may be interrupted, also inside
/// an `Uninterrupted` that is older: if the thread is ended while it sleeps in the system, `undo` first runs
/// on it, and the frames of the sleep still stand. Between two instructions it is not ended.
class Undo {
public:
    Undo(void (*undo)(void *), void * argument) noexcept
        : mopUndo(undo), mopArgument(argument), mivOlder(cotProtection.uninterrupted),
          mopOuter(cotProtection.undo)
    {
        std::atomic_signal_fence(std::memory_order_seq_cst);
        cotProtection.undo = this;
        std::atomic_signal_fence(std::memory_order_seq_cst);
    }
    Undo(Undo const &) = delete;
    Undo & operator=(Undo const &) = delete;
    ~Undo()
    {
        std::atomic_signal_fence(std::memory_order_seq_cst);
        cotProtection.undo = mopOuter;
        std::atomic_signal_fence(std::memory_order_seq_cst);
    }

    void operator()() const { mopUndo(mopArgument); }
    Undo const * Outer() const { return mopOuter; }
    std::uint32_t Older() const { return mivOlder; }

private:
    void (*mopUndo)(void *);
    void * mopArgument;
    std::uint32_t mivOlder;
    Undo const * mopOuter;
};

inline bool Protection::IsUninterrupted() const
{
    return uninterrupted > (undo != nullptr ? undo->Older() : 0);
}

std::uint64_t NewThreadNumber() noexcept;

/// A number of the calling thread that is not 0 and that no other thread ever gets. The system gives the ids
/// of ended threads to new ones.
inline std::uint64_t ThreadNumber() noexcept
{
    if (cotProtection.number == 0) cotProtection.number = NewThreadNumber();
    return cotProtection.number;
}

/// Has the calling thread call the function at its end, forced or not.
void AtThreadEnd(void (*function)(void *), void * argument) noexcept;

}  // namespace qrtcl::platform
