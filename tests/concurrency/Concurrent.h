#pragma once

// What the tests of threads, locks and timers share.

#include <atomic>
#include <chrono>
#include <fstream>
#include <functional>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <thread>
#include <unistd.h>

#include "concurrency/LCTimer.h"
#include "concurrency/LHCMessageLoop.h"
#include "concurrency/LHCThread.h"
#include "platform/Ticking.h"
#include "support/Support.h"

constexpr LCULong forever = 0xFFFFFFFF;

/// Sanitizers keep locks of their own, inside the heap and elsewhere: a thread that is always there can't be ended.
constexpr bool sanitized = QRTCL_TEST_SANITIZED;

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

/// A thread that runs a function. Destroyed while it runs, it ends by force, with the function still there.
struct Work {
    void Run(LCThread & self) { function(self); }
    std::function<void(LCThread &)> function;
    LCEvent1Param<LCThread &>::LCHandler handler{*this, &Work::Run};
};
struct Runner : Work, LHCThread {
    explicit Runner(std::function<void(LCThread &)> work) : Work{std::move(work)}, LHCThread(true) { OnExecute << handler; }
};

/// A timer with a receiver that runs a function.
struct Ticker {
    explicit Ticker(std::function<void()> onTick, int interval = 10) : function(std::move(onTick)) { Renew(interval); }
    LCTimer * operator->() { return timer.get(); }
    void Renew(int interval)
    {
        timer = std::make_unique<LCTimer>();
        timer->OnTick << handler;
        timer->SetInterval(interval);
    }
    void OnTick(LCTimer &) { function(); }

    std::function<void()> function;
    LCEvent1Param<LCTimer &>::LCHandler handler{*this, &Ticker::OnTick};
    std::unique_ptr<LCTimer> timer;
};

/// While one lives, time stands still, and moves by waiting and by `Advance` only. In milliseconds from 0.
struct TestClock {
    TestClock()
    {
        now = 0;
        qrtcl::platform::ReplaceTickClock({[]() noexcept { return now; },
                                           [](qrtcl::platform::Moment until) noexcept { now = std::max(now, until); }});
    }
    ~TestClock() { qrtcl::platform::ReplaceTickClock({}); }

    static int Now() { return static_cast<int>(now / 1'000'000); }
    static void Advance(int milliseconds) { now += qrtcl::platform::Moment{milliseconds} * 1'000'000; }
    /// Runs what comes within so many milliseconds.
    static void Pass(int milliseconds)
    {
        int const end = Now() + milliseconds;
        while (Now() < end) LHCMessageLoop::ProcessMessages(static_cast<unsigned int>(end - Now()));
    }

    static inline qrtcl::platform::Moment now = 0;
};
