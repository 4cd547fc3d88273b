#include "concurrency/LCTimer.h"

#include <list>
#include <map>
#include <optional>
#include <random>
#include <stdexcept>
#include <sys/resource.h>

#include "concurrency/Concurrent.h"
#include "concurrency/LCClock.h"
#include "concurrency/LCHighResTimer.h"
#include "concurrency/LCTimerScan.h"
#include "concurrency/LHCMessageLoop.h"
#include "concurrency/TestClock.h"
#include "concurrency/detail/TimerTable.h"
#include "platform/Clock.h"
#include "support/Support.h"

namespace platform = qrtcl::platform;

namespace {

static_assert(std::is_copy_constructible_v<LCTimer> && std::is_copy_assignable_v<LCTimer>);
static_assert(!std::is_copy_constructible_v<LCTimerScan> && !std::is_copy_assignable_v<LCTimerScan>);
static_assert(!std::is_copy_constructible_v<LCClock> && !std::is_convertible_v<char const *, LCClock>);

/// A timer with a receiver that runs a function.
struct Ticker {
    Ticker(std::function<void()> onTick, int interval = 1000) : function(std::move(onTick))
    {
        timer->OnTick << handler;
        timer->SetInterval(interval);
    }
    void OnTick(LCTimer & ticking)
    {
        EXPECT_EQ(&ticking, timer.get());
        function();
    }

    std::function<void()> function;
    LCEvent1Param<LCTimer &>::LCHandler handler{*this, &Ticker::OnTick};
    std::unique_ptr<LCTimer> timer = std::make_unique<LCTimer>();
};

/// Runs what comes within so many milliseconds of the test's clock.
void Pass(long milliseconds)
{
    long const end = TestClock::Milliseconds() + milliseconds;
    while (TestClock::Milliseconds() < end) {
        LHCMessageLoop::ProcessMessages(static_cast<unsigned int>(end - TestClock::Milliseconds()));
    }
}

TEST(Timer, TicksKeepTheirPhaseAndMissedOnesAreFoldedIntoOne)
{
    TestClock const clock;
    std::vector<long> times;
    Ticker ticker([&] { times.push_back(TestClock::Milliseconds()); }, 10);
    ASSERT_TRUE(ticker.timer->Start());
    Pass(30);
    TestClock::Advance(25);  // busy: 40 and 50 are missed
    Pass(15);
    TestClock::Advance(10);  // comes late, but on time
    Pass(1);
    EXPECT_EQ(times, (std::vector<long>{10, 20, 30, 55, 60, 70, 80}));
}

TEST(Timer, TicksComeOnlyWhileTheLoopRuns)
{
    TestClock const clock;
    int ticks = 0;
    Ticker ticker([&] { ++ticks; }, 10);
    ticker.timer->Start();
    TestClock::Advance(100);
    EXPECT_EQ(ticks, 0);
    EXPECT_TRUE(LHCMessageLoop::ProcessMessages(0));
    EXPECT_EQ(ticks, 1);
    EXPECT_FALSE(LHCMessageLoop::ProcessMessages(0));
    EXPECT_FALSE(LHCMessageLoop::ProcessMessages(9));
    EXPECT_TRUE(LHCMessageLoop::ProcessMessages(1));
    EXPECT_EQ(ticks, 2);
}

TEST(Timer, IntervalsAreKeptAsTheyWereSet)
{
    TestClock const clock;
    int ticks = 0;
    Ticker ticker([&] { ++ticks; });
    EXPECT_EQ(LCTimer().GetInterval(), 1000);
    for (int const interval : {1, 0, -5}) {
        ticker.timer->SetInterval(interval);
        EXPECT_EQ(ticker.timer->GetInterval(), interval);
        EXPECT_FALSE(ticker.timer->IsRunning());
        ticker.timer->Stop();
        ticks = 0;
        ticker.timer->Start();
        Pass(3);
        EXPECT_EQ(ticks, 3) << interval;
        ticker.timer->Stop();
    }
    // A running timer begins a new period.
    ticker.timer->SetInterval(10);
    ticker.timer->Start();
    Pass(9);
    ticker.timer->SetInterval(8);
    EXPECT_TRUE(ticker.timer->IsRunning());
    ticks = 0;
    Pass(7);
    EXPECT_EQ(ticks, 0);
    Pass(1);
    EXPECT_EQ(ticks, 1);
    Pass(7);
    ticker.timer->Start();
    Pass(7);
    EXPECT_EQ(ticks, 1);
}

// Random scripts beside a slow model: who ticks when, with timers that are started and stopped between and in
// ticks.
TEST(Timer, TicksCameAsTheModelTells)
{
    constexpr int count = 6;
    struct Model {
        long due = 0;
        long order = 0;
        int interval = 10;
        bool running = false;
    };
    for (int seed = 0; seed < Rounds(50); ++seed) {
        TestClock const clock;
        std::minstd_rand random(static_cast<unsigned>(seed) + 1);
        std::vector<Model> models(count);
        std::vector<std::unique_ptr<Ticker>> tickers;
        std::vector<int> ticks, expected;
        long order = 0;
        auto const act = [&](int choice, int target) {
            Model & model = models[static_cast<std::size_t>(target)];
            LCTimer & timer = *tickers[static_cast<std::size_t>(target)]->timer;
            int const interval = choice % 13 + 1;
            if (choice % 3 == 0) {
                ASSERT_TRUE(timer.Start());
                model = {TestClock::Milliseconds() + model.interval, ++order, model.interval, true};
            } else if (choice % 3 == 1) {
                timer.Stop();
                model.running = false;
            } else {
                timer.SetInterval(interval);
                model.interval = interval;
                if (model.running) model = {TestClock::Milliseconds() + interval, ++order, interval, true};
            }
            ASSERT_EQ(timer.IsRunning(), model.running);
        };
        // A tick is checked as it comes: it is that of the earliest due timer.
        for (int i = 0; i < count; ++i) {
            tickers.push_back(std::make_unique<Ticker>(
                [&, i] {
                    long const now = TestClock::Milliseconds();
                    int next = -1;
                    for (int k = 0; k < count; ++k) {
                        Model const & model = models[static_cast<std::size_t>(k)];
                        if (!model.running || model.due > now) continue;
                        Model const & best = models[static_cast<std::size_t>(next < 0 ? k : next)];
                        if (next < 0 || std::pair(model.due, model.order) < std::pair(best.due, best.order))
                            next = k;
                    }
                    ticks.push_back(i);
                    expected.push_back(next);
                    Model & model = models[static_cast<std::size_t>(i)];
                    while (model.due <= now) model.due += model.interval;
                    if (random() % 3 == 0)
                        act(static_cast<int>(random() % 100), static_cast<int>(random() % count));
                },
                10));
        }
        for (int step = 0; step < 300; ++step) {
            act(static_cast<int>(random() % 100), static_cast<int>(random() % count));
            if (random() % 4 == 0) TestClock::Advance(static_cast<long>(random() % 30));
            if (random() % 2 == 0) Pass(static_cast<long>(random() % 30));
            LHCMessageLoop::ProcessMessages(0);
            for (Model const & model : models)
                ASSERT_FALSE(model.running && model.due <= TestClock::Milliseconds());
        }
        ASSERT_EQ(ticks, expected) << "seed " << seed;
        ASSERT_GT(ticks.size(), 100u);
    }
}

TEST(Timer, AReceiverMayStopRestartAndDestroyTimers)
{
    TestClock const clock;
    int ticks = 0;
    std::unique_ptr<Ticker> other;
    Ticker ticker([&] {}, 10);
    struct { char const * name; std::function<void()> act; int ticks; } const rows[] = {
        {"stops", [&] { ticker.timer->Stop(); }, 1},
        {"stops and starts", [&] { ticker.timer->Stop(), ticker.timer->Start(); }, 3},
        {"changes the interval", [&] { ticker.timer->SetInterval(20); }, 2},
        {"destroys the other", [&] { other.reset(); }, 3}, {"destroys itself", [&] { ticker.timer.reset(); }, 1},
    };
    for (auto const & row : rows) {
        SCOPED_TRACE(row.name);
        ticks = 0;
        int others = 0;
        other = std::make_unique<Ticker>([&] { ++others; }, 10);
        ticker.timer->SetInterval(10);
        ticker.function = [&] {
            ++ticks;
            row.act();
        };
        ticker.timer->Start();
        other->timer->Start();
        Pass(30);
        EXPECT_EQ(ticks, row.ticks);
        EXPECT_EQ(others, other ? 3 : 0);
    }
}

TEST(Timer, ACopyHasTheReceiversAndNoTicks)
{
    TestClock const clock;
    struct Counter {
        void OnTick(LCTimer &) { ++ticks; }
        int ticks = 0;
    } counter;
    LCEvent1Param<LCTimer &>::LCHandler handler(counter, &Counter::OnTick);
    LCTimer timer;
    timer.OnTick << handler;
    timer.SetInterval(10);
    LCTimer copy(timer);
    EXPECT_EQ(copy.GetInterval(), 10);
    copy.Start();
    Pass(10);
    EXPECT_EQ(counter.ticks, 1);

    LCTimer shadow(copy);
    EXPECT_TRUE(shadow.IsRunning());
    Pass(10);
    EXPECT_EQ(counter.ticks, 2);
    shadow.Stop();
    Pass(20);
    EXPECT_EQ(counter.ticks, 2);
    copy = timer;
    EXPECT_FALSE(copy.IsRunning());

    // What is assigned to stops first: nothing may tick into it later.
    {
        LCTimer running(timer);
        running.Start();
        running = timer;
    }
    Pass(20);
    EXPECT_EQ(counter.ticks, 2);
}

TEST(Timer, MayBeStoppedAfterItsThreadHasEnded)
{
    for (bool const forced : {false, true}) {
        LCTimer stopped, destroyed;
        std::atomic<int> ticks{0};
        Ticker ticker([&] { ++ticks; }, 1);
        Runner thread([&](LCThread &) {
            stopped.Start();
            ticker.timer->Start();
            forced ? LHCMessageLoop::Run() : static_cast<void>(LHCMessageLoop::ProcessMessages(0xFFFFFFFF));
        });
        thread->Resume();
        if (forced) {
            Await([&] { return ticks > 3; });
        } else {
            thread->WaitFor(0xFFFFFFFF);
        }
        thread.Destroy();
        int const before = ticks;
        EXPECT_TRUE(stopped.IsRunning());
        stopped.Stop();
        ticker.timer.reset();
        EXPECT_FALSE(stopped.IsRunning());
        LHCMessageLoop::ProcessMessages(0);
        EXPECT_EQ(ticks, before);
        EXPECT_TRUE(stopped.Start());  // here, now
    }
}

TEST(Timer, DoesNotStartWithoutADescriptor)
{
    struct rlimit before {};
    ::getrlimit(RLIMIT_NOFILE, &before);
    std::thread([&] {
        LCTimer timer;
        struct rlimit const none{0, before.rlim_max};
        ::setrlimit(RLIMIT_NOFILE, &none);
        EXPECT_FALSE(timer.Start());
        EXPECT_FALSE(timer.IsRunning());
        EXPECT_EQ(LHCMessageLoop::GetDescriptor(), -1);
        EXPECT_FALSE(LHCMessageLoop::ProcessMessages(0xFFFFFFFF));
        LHCMessageLoop::Run();
        ::setrlimit(RLIMIT_NOFILE, &before);
        EXPECT_TRUE(timer.Start());
    }).join();
}

// Many threads start and stop timers at once: each gets its own ticks only.
TEST(Timer, ThreadsDoNotDisturbEachOther)
{
    std::vector<std::thread> threads;
    std::atomic<int> strangers{0};
    for (unsigned i = 0; i < 4; ++i) {
        threads.emplace_back([&, i] {
            std::minstd_rand random(i + 1);
            auto const self = std::this_thread::get_id();
            int ticks = 0;
            std::list<Ticker> tickers;
            auto const onTick = [&] {
                ++ticks;
                if (std::this_thread::get_id() != self) ++strangers;
            };
            for (int k = 0; k < 50; ++k) tickers.emplace_back(onTick, static_cast<int>(random() % 5));
            for (int round = 0; round < Rounds(100); ++round) {
                for (Ticker & ticker : tickers)
                    random() % 2 == 0 ? static_cast<void>(ticker.timer->Start()) : ticker.timer->Stop();
                LHCMessageLoop::ProcessMessages(1);
            }
            while (ticks == 0) {
                tickers.front().timer->Start();
                LHCMessageLoop::ProcessMessages(10);
            }
        });
    }
    for (auto & thread : threads) thread.join();
    EXPECT_EQ(strangers, 0);
}

TEST(Timer, AHundredThousandRunBesideEachOther)
{
    TestClock const clock;
    int ticks = 0;
    std::list<Ticker> tickers;
    int const count = sanitized ? 10'000 : 100'000;
    for (int i = 0; i < count; ++i) tickers.emplace_back([&] { ++ticks; }, 1 + i % 1000).timer->Start();
    for (int round = 0; round < 3; ++round) {
        for (Ticker & ticker : tickers) ticker.timer->Start();
    }
    Pass(1000);
    long expected = 0;
    for (int i = 0; i < count; ++i) expected += 1000 / (1 + i % 1000);
    EXPECT_EQ(ticks, expected);
    for (Ticker & ticker : tickers) ticker.timer->Stop();
    Pass(1000);
    EXPECT_EQ(ticks, expected);
}

TEST(TimerTable, IdsAreDistinctAndNotZeroAlsoWhenTheyComeRound)
{
    for (unsigned const before : {1000u, 100u, 5u}) {
        qrtcl::TimerTable table(0xFFFFFFFFu - before);
        std::map<std::uint32_t, std::pair<qrtcl::TimerStart, LCTimer *>> model;
        std::vector<LCTimer> timers(300);
        std::vector<qrtcl::TimerStart> all;
        std::minstd_rand random(before);
        for (int step = 0; step < 5000; ++step) {
            // The first few stay: their ids are still there when the numbers come round.
            if (random() % 2 == 0 && model.size() < timers.size()) {
                LCTimer & timer = timers[random() % timers.size()];
                qrtcl::TimerStart const start = table.Insert(timer);
                all.push_back(start);
                ASSERT_NE(qrtcl::TimerID(start), 0u);
                ASSERT_TRUE(model.emplace(qrtcl::TimerID(start), std::pair(start, &timer)).second);
            } else if (all.size() > 10) {
                auto const id = qrtcl::TimerID(all[10 + random() % (all.size() - 10)]);
                table.Erase(id);
                model.erase(id);
            }
            ASSERT_EQ(table.GetCount(), model.size());
            qrtcl::TimerStart const start = all.empty() ? 1 : all[random() % all.size()];
            auto const found = model.find(qrtcl::TimerID(start));
            ASSERT_EQ(table.Find(start), found == model.end() ? nullptr : found->second.second);
        }
        EXPECT_GT(all.back(), 0x100000000u);
        EXPECT_NE(table.Find(all.front()), nullptr);
        EXPECT_EQ(table.Find(all.front() + 0x100000000u), nullptr);
    }
}

TEST(TimerScan, ScansUntilItIsStoppedOrDestroysItself)
{
    TestClock const clock;
    struct Scan : LCTimerScan {
        explicit Scan(std::function<void()> onScan) : function(std::move(onScan)) {}
        void DoScan() override { function(); }
        std::function<void()> function;
    };
    int scans = 0;
    auto scan = std::make_unique<Scan>([&] { ++scans; });
    Pass(10);
    EXPECT_EQ(scans, 0);
    ASSERT_TRUE(scan->Start(5));
    Pass(12);
    EXPECT_EQ(scans, 2);
    scan->Stop();
    Pass(12);
    EXPECT_EQ(scans, 2);

    scan->function = [&] {
        ++scans;
        auto const last = std::move(scan->function);  // what runs lives on
        scan.reset();
    };
    scan->Start(5);
    Pass(12);
    EXPECT_EQ(scans, 3);
    LCTimerScan().DoScan();
}

TEST(Clock, ShowsTheTimeOfItsLastTick)
{
    TestClock const clock;
    static platform::LocalTime now;
    now = {2026, 3, 29, 1, 59, 59, 0, 60};
    platform::ReplaceClock([]() noexcept { return now; });
    struct Listener {
        void OnChange() { ++changes; }
        int changes = 0;
    } listener;
    {
        LCClock wall;
        LCEvent0Param::LCHook const hook(wall.OnChange, listener, &Listener::OnChange);
        EXPECT_EQ(wall.GetCurDateTimeStr(""), "01/01/1900 00:00:00");
        Pass(2000);
        EXPECT_EQ(listener.changes, 0);  // not started

        wall.Start();
        Pass(999);
        EXPECT_EQ(listener.changes, 0);
        Pass(1);
        EXPECT_EQ(listener.changes, 1);
        EXPECT_EQ(wall.GetCurDateTimeStr(""), "29/03/2026 01:59:59");
        now = {2026, 3, 29, 3, 0, 0, 0, 120};
        EXPECT_EQ(wall.GetCurDateTimeStr("HH:mm"), "01:59");
        wall.SetFormat("HH:mm");
        EXPECT_EQ(listener.changes, 2);
        EXPECT_EQ(wall.GetCurDateTimeStr(""), "01:59");
        Pass(1000);
        EXPECT_EQ(listener.changes, 3);
        EXPECT_EQ(wall.GetCurDateTimeStr(""), "03:00");
    }
    platform::ReplaceClock(nullptr);
}

TEST(HighResTimer, MeasuresBetweenStartAndEnd)
{
    TestClock const clock;
    LCHighResTimer watch;
    watch.Start();
    TestClock::Advance(1500);
    watch.End();
    TestClock::Advance(700);
    LCHighResTimer const copy(watch);
    EXPECT_EQ(copy.GetTimeInSeconds(), 1.5);
    EXPECT_EQ(copy.GetTimeInMilliseconds(), 1500.0);
    EXPECT_EQ(copy.GetTimeInMicroseconds(), 1500000.0);
    EXPECT_EQ(copy.GetTimeInNanoseconds(), 1500000000.0);
    watch.End();
    EXPECT_EQ(watch.GetTimeInSeconds(), 2.2);
}

}  // namespace
