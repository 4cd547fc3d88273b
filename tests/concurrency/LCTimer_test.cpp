#include "concurrency/LCTimer.h"

#include "concurrency/Concurrent.h"
#include "concurrency/LCClock.h"
#include "concurrency/LCHighResTimer.h"
#include "concurrency/detail/TimerTable.h"
#include "platform/Clock.h"
#include "support/Allocations.h"

namespace {

// Random scripts beside a slow model, on several threads at once: who ticks when, while timers are started, stopped,
// changed and destroyed between ticks and in them, their own too, and the thread is now and then busy for longer than
// some periods.
TEST(Timer, TicksComeAsTheModelTells)
{
    struct Model {
        int interval = 10, due = 0, order = 0;
        bool running = false;
        int Period() const { return std::max(interval, 1); }
        bool IsDue() const { return running && due <= TestClock::Now(); }
        auto Rank() const { return std::tuple(!IsDue(), due, order); }
    };
    auto const play = [](unsigned seed) {
        std::minstd_rand random(seed);
        auto const upTo = [&](unsigned limit) { return static_cast<int>(random() % limit); };
        std::map<int, Model> models;
        std::map<int, std::optional<Ticker>> tickers;
        std::vector<int> ticks, expected;
        std::function<void(int)> onTick;
        int order = 0;
        auto const act = [&] {
            int const i = upTo(6), what = upTo(4);
            auto & [interval, due, rank, running] = models[i];
            auto & ticker = tickers[i];
            if (what < 2) interval = upTo(15) - 1;
            if (what == 0 || !ticker) ticker.emplace([&, i] { onTick(i); }, interval);
            if (what == 1) ticker->SetInterval(interval);
            if (what == 2) ticker->Stop();
            ASSERT_TRUE(what != 3 || ticker->Start());
            running = what == 3 || (what == 1 && running);
            if (running) due = TestClock::Now() + models[i].Period(), rank = ++order;
            ASSERT_EQ(std::pair(ticker->IsRunning(), ticker->GetInterval()), std::pair(running, interval));
        };
        onTick = [&](int i) {
            ticks.push_back(i);
            auto const rank = [](auto const & each) { return each.second.Rank(); };
            expected.push_back(std::ranges::min_element(models, {}, rank)->first);
            while (models[i].IsDue()) models[i].due += models[i].Period();
            if (upTo(3) == 0) act();
        };
        for (int step = 0; step < 300; ++step) {
            act();
            if (upTo(4) == 0) TestClock::Advance(upTo(30));
            if (upTo(2) == 0) TestClock::Pass(upTo(30));
            LHCMessageLoop::ProcessMessages(0);
            for (auto const & [i, model] : models) ASSERT_FALSE(model.IsDue()) << i;
        }
        ASSERT_TRUE(ticks == expected && ticks.size() > 100) << "seed " << seed;
    };
    TestClock const clock;
    for (int round = 0; round < Rounds(20); ++round) {
        unsigned const seed = 3 * static_cast<unsigned>(round);
        std::jthread const first(play, seed + 1), second(play, seed + 2), third(play, seed + 3);
    }
}

TEST(Timer, ACopyHasTheReceiversAndNoTicks)
{
    TestClock const clock;
    std::vector<int> ticks;
    Ticker const ticker([&] { ticks.push_back(TestClock::Now()); });
    LCTimer copy(ticker);
    copy.Start();
    LCTimer shadow(copy);
    auto running = std::make_unique<LCTimer>(copy);
    TestClock::Pass(15);
    shadow.Stop();  // both
    running->Start();
    *running = copy;  // stops first: nothing may tick into it later
    running.reset();
    TestClock::Pass(20);
    EXPECT_EQ(ticks, std::vector{10});
}

TEST(Timer, MayBeStoppedAfterItsThreadHasEnded)
{
    for (bool const forced : {false, true}) {
        std::atomic<int> ticks{0};
        std::optional<Ticker> ticker(std::in_place, [&] { ++ticks; }, 1);
        auto thread = std::make_unique<Runner>([&](LCThread &) {
            ticker->Start();
            while (forced || ticks == 0) LHCMessageLoop::ProcessMessages(forever);
        });
        thread->Resume();
        Await([&] { return ticks > 0; });
        if (!forced) thread->WaitFor(forever);
        thread.reset();
        forced ? ticker->Stop() : void(ticker.emplace([&] { ++ticks; }, 1));
        int const before = ticks;
        EXPECT_TRUE(!LHCMessageLoop::ProcessMessages(5) && ticker->Start() && LHCMessageLoop::ProcessMessages(forever));
        EXPECT_EQ(ticks, before + 1);  // here, now
    }
}

TEST(Timer, DoesNotStartWithoutADescriptor)
{
    LCTimer timer;
    EXPECT_TRUE(timer.Start());
    std::jthread([&] {
        struct rlimit before {};
        ::getrlimit(RLIMIT_NOFILE, &before);
        struct rlimit const none {0, before.rlim_max};
        ::setrlimit(RLIMIT_NOFILE, &none);
        timer.SetInterval(5);  // stops it here, and can't start it
        EXPECT_FALSE(timer.IsRunning() || timer.Start() || timer.IsRunning());
        EXPECT_EQ(LHCMessageLoop::GetDescriptor(), -1);
        LHCMessageLoop::Run();
        ::setrlimit(RLIMIT_NOFILE, &before);
        EXPECT_TRUE(timer.Start());
    });
}

TEST(TimerTable, IdsAreDistinctAndNotZeroAlsoWhenTheyComeRound)
{
    qrtcl::TimerTable table(0xFFFFFFFFu - 500);
    LCTimer timers[300];
    std::map<qrtcl::TimerStart, LCTimer *> model{{table.Insert(timers[0]), &timers[0]}};  // this one stays
    std::minstd_rand random(1);
    for (unsigned step = 0; step < 5000; ++step) {
        if (auto gone = std::next(model.begin(), random() % 2 * (step % model.size())); gone == model.begin()) {
            qrtcl::TimerStart const start = table.Insert(timers[step % 300]);
            ASSERT_TRUE(qrtcl::TimerID(start) != 0 && model.emplace(start, &timers[step % 300]).second);
        } else {
            for (int twice = 0; twice < 2; ++twice) table.Erase(qrtcl::TimerID(gone->first));
            ASSERT_EQ(table.Find(gone->first), nullptr);
            model.erase(gone);
        }
        ASSERT_EQ(table.GetCount(), model.size());
        for (auto const & [start, timer] : model) ASSERT_EQ(table.Find(start), timer);
    }
    EXPECT_GT(model.rbegin()->first, 0x100000000u);
    EXPECT_EQ(table.Find(model.begin()->first + 0x100000000u), nullptr);
}

// Setting the wall clock, forward and back, is shown at the next tick, and moves no tick. The last destroys the clock.
TEST(Clock, ShowsTheTimeOfItsLastTickAndAStopwatchWhatLiesBetween)
{
    TestClock const clock;
    static platform::LocalTime now;
    static std::string log;
    platform::ReplaceClock([]() noexcept { return now; });
    struct Wall : LCClock {
        void Log()
        {
            log += std::to_string(TestClock::Now()) + ": " + GetCurDateTimeStr("").str() + "\n";
            if (log.ends_with("1999\n")) delete this;
        }
        LCEvent0Param::LCHook hook{OnChange, *this, &Wall::Log};
    } & wall = *new Wall;
    LCHighResTimer watch;
    watch.Start();
    TestClock::Pass(1500);  // the clock does not start by itself
    watch.End();
    wall.Log();
    wall.Start();
    for (int const year : {2026, 1999, 2099}) {
        now = {year, 3, 29, 1, 59, 59, 0, 60};
        TestClock::Pass(1000);
    }
    now = {1999, 1, 1, 0, 0, 0, 0, 60};
    wall.Stop();
    TestClock::Pass(2000);
    wall.SetFormat("YYYY");
    EXPECT_EQ(wall.GetCurDateTimeStr("HH:mm"), "01:59");
    wall.LCTimerScan::Start(5);
    TestClock::Pass(20);
    EXPECT_EQ(log, "1500: 01/01/1900 00:00:00\n2500: 29/03/2026 01:59:59\n3500: 29/03/1999 01:59:59\n"
                   "4500: 29/03/2099 01:59:59\n6500: 2099\n6505: 1999\n");
    platform::ReplaceClock(nullptr);
    EXPECT_EQ(std::tuple(watch.GetTimeInSeconds(), watch.GetTimeInMilliseconds(), watch.GetTimeInMicroseconds(),
                         watch.GetTimeInNanoseconds()), std::tuple(1.5, 1500.0, 1.5e6, 1.5e9));
}

// On threads without a loop, which the first start makes. What is refused is lost, and nothing else is.
TEST(Timer, DoesNotStartWithoutMemory)
{
    TestClock const clock;
    auto const descriptors = [] { return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {}); };
    auto const before = descriptors();
    for (std::size_t number = 1, failed = true; failed; ++number) {
        std::jthread([&] {
            int started = 0, ticks = 0;
            std::list<Ticker> timers;
            for (int i = 0; i < 100; ++i) timers.emplace_back([&] { ++ticks; });
            FailAllocation(number);
            try { for (Ticker & each : timers) started += each.Start(); } catch (std::bad_alloc const &) {}
            failed = FailAllocation(0);
            TestClock::Pass(10);
            auto const running = std::ranges::count_if(timers, &Ticker::IsRunning);
            EXPECT_EQ(std::tuple(failed, running, ticks), std::tuple(started < 100, started, started)) << number;
        });
        EXPECT_EQ(descriptors(), before) << number;
    }
}

}  // namespace
