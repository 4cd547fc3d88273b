#pragma once

// What the tests of threads, locks and timers share.

#include <atomic>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <memory>
#include <string>
#include <thread>

#include "concurrency/LHCThread.h"

constexpr LCULong forever = 0xFFFFFFFF;

/// Sanitizers keep locks of their own, inside the heap and elsewhere: a thread that is always there can't be ended.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool sanitized = true;
#elif defined(__has_feature)
constexpr bool sanitized = __has_feature(address_sanitizer) || __has_feature(thread_sanitizer);
#else
constexpr bool sanitized = false;
#endif

/// The number of repetitions of a stress: QRTCL_TEST_STRESS multiplies it.
inline int Rounds(int usual)
{
    char const * const factor = std::getenv("QRTCL_TEST_STRESS");
    return factor != nullptr ? usual * std::atoi(factor) : usual;
}

/// Work for a thread that is stopped or ended from outside. It keeps out of the thread sanitizer, where that could
/// not be done.
[[noreturn]] __attribute__((no_sanitize("thread"))) inline void CountForEver(std::atomic<unsigned> & count)
{
    for (;;) count.store(count.load(std::memory_order_relaxed) + 1, std::memory_order_relaxed);
}

/// A wait whose end shows that something has happened; the test's own time limit is the only other end.
template <typename Condition> void Await(Condition condition)
{
    while (!condition()) std::this_thread::yield();
}

/// Waits until the thread of this number sleeps in the system.
inline void AwaitAsleep(int thread)
{
    Await([&] {
        std::ifstream file("/proc/self/task/" + std::to_string(thread) + "/stat");
        std::string const status(std::istreambuf_iterator<char>(file), {});
        return status.substr(status.find(')') + 1, 2) == " S";
    });
}

/// A thread that runs a function. Destroyed while it runs, it ends by force, with the function still there.
struct Runner {
    explicit Runner(std::function<void(LCThread &)> work) : function(std::move(work))
    {
        thread->OnExecute << handler;
    }
    LHCThread * operator->() { return thread.get(); }
    void Run(LCThread & self) { function(self); }

    std::function<void(LCThread &)> function;
    LCEvent1Param<LCThread &>::LCHandler handler{*this, &Runner::Run};
    std::unique_ptr<LHCThread> thread = std::make_unique<LHCThread>(true);
};
