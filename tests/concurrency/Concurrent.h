#pragma once

// What the tests of threads, locks and timers share.

#include <chrono>
#include <functional>
#include <map>
#include <optional>
#include <random>
#include <sys/resource.h>
#include <thread>
#include <unistd.h>

#include "concurrency/LCTimer.h"
#include "concurrency/LHCMessageLoop.h"
#include "concurrency/LHCThread.h"
#include "platform/Ticking.h"

namespace platform = qrtcl::platform;

constexpr LCULong forever = 0xFFFFFFFF;

/// Work for a thread that is stopped or ended from outside. It keeps out of the thread sanitizer, where that could
/// not be done.
[[noreturn]] __attribute__((no_sanitize("thread"))) inline void CountForEver(std::atomic<unsigned> & count)
{ for (;;) count.store(count.load(std::memory_order_relaxed) + 1, std::memory_order_relaxed); }

/// A wait whose end shows that something has happened; the test's own time limit is the only other end.
void Await(auto condition) { while (!condition()) std::this_thread::yield(); }

/// A thread that runs a function. Destroyed while it runs, it ends by force, with the function still there.
struct Work {
    void Run(LCThread & self) { function(self); }
    std::function<void(LCThread &)> function;
    LCEvent1Param<LCThread &>::LCHandler handler{*this, &Work::Run};
};
struct Runner : Work, LHCThread {
    explicit Runner(decltype(function) work) : Work{std::move(work)}, LHCThread(true) { OnExecute << handler; }
};

/// A timer with a receiver that runs a function.
struct Ticker : LCTimer {
    explicit Ticker(std::function<void()> onTick, int every = 10) : function(std::move(onTick)) { SetInterval(every); }
    void Run(LCTimer &) { function(); }
    std::function<void()> function;
    LCEvent1Param<LCTimer &>::LCHook hook{OnTick, *this, &Ticker::Run};
};

/// While one lives, each thread has a time of its own, from 0, which moves by waiting and `Advance` only.
struct TestClock {
    TestClock()
    {
        now = 0;
        platform::ReplaceTickClock({[]() noexcept { return now; }, [](auto end) noexcept { now = std::max(now, end); }});
    }
    ~TestClock() { platform::ReplaceTickClock({}); }
    static int Now() { return static_cast<int>(now / 1'000'000); }
    static void Advance(int milliseconds) { now += platform::Moment{milliseconds} * 1'000'000; }
    /// Runs what comes within so many milliseconds.
    static void Pass(int milliseconds)
    {
        int const end = Now() + milliseconds;
        while (Now() < end) LHCMessageLoop::ProcessMessages(static_cast<unsigned int>(end - Now()));
    }

    static inline thread_local platform::Moment now = 0;
};
