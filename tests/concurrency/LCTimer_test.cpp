#include "concurrency/LCTimer.h"

#include <algorithm>
#include <list>
#include <optional>
#include <sys/resource.h>

#include "concurrency/Concurrent.h"
#include "concurrency/LCClock.h"
#include "concurrency/LCHighResTimer.h"
#include "concurrency/detail/TimerTable.h"
#include "platform/Clock.h"

namespace platform = qrtcl::platform;

namespace {

// Random scripts beside a slow model: who ticks when, while timers are started, stopped, changed and destroyed between
// ticks and in them, their own too, and the thread is now and then busy for longer than some periods.
TEST(Timer, TicksComeAsTheModelTells)
{
    struct Model {
        int interval = 10, due = 0, order = 0;
        bool running = false;
        int Period() const { return std::max(interval, 1); }
        bool IsDue() const { return running && due <= TestClock::Now(); }
    };
    for (int seed = 0; seed < Rounds(50); ++seed) {
        TestClock const clock;
        std::minstd_rand random(static_cast<unsigned>(seed) + 1);
        auto const upTo = [&](int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); };
        std::map<int, Model> models;
        std::map<int, Ticker> tickers;
        std::vector<int> ticks, expected;
        int order = 0;
        auto const act = [&] {
            int const i = upTo(6), what = upTo(4);
            Model & model = models[i];
            Ticker & ticker = tickers.at(i);
            if (what < 2) model.interval = upTo(15) - 1;
            if (what == 0) ticker.Renew(model.interval);
            if (what == 1) ticker->SetInterval(model.interval);
            if (what == 2) ticker->Stop();
            ASSERT_TRUE(what != 3 || ticker->Start());
            model.running = what == 3 || (what == 1 && model.running);
            if (model.running) model.due = TestClock::Now() + model.Period(), model.order = ++order;
            ASSERT_EQ(std::pair(ticker->IsRunning(), ticker->GetInterval()), std::pair(model.running, model.interval));
        };
        auto const onTick = [&](int i) {
            ticks.push_back(i);
            auto const rank = [&](auto const & each) {
                return std::tuple(!each.second.IsDue(), each.second.due, each.second.order);
            };
            expected.push_back(std::ranges::min_element(models, {}, rank)->first);
            while (models[i].IsDue()) models[i].due += models[i].Period();
            if (upTo(3) == 0) act();
        };
        for (int i = 0; i < 6; ++i) tickers.try_emplace(i, [&, i] { onTick(i); }), models[i];
        for (int step = 0; step < 300; ++step) {
            act();
            if (upTo(4) == 0) TestClock::Advance(upTo(30));
            if (upTo(2) == 0) TestClock::Pass(upTo(30));
            LHCMessageLoop::ProcessMessages(0);
            for (auto const & [i, model] : models) ASSERT_FALSE(model.IsDue()) << i;
        }
        ASSERT_EQ(ticks, expected) << "seed " << seed;
        ASSERT_GT(ticks.size(), 100u);
    }
}

TEST(Timer, ACopyHasTheReceiversAndNoTicks)
{
    TestClock const clock;
    std::vector<int> ticks;
    Ticker ticker([&] { ticks.push_back(TestClock::Now()); });
    LCTimer copy(*ticker.timer);
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
        Ticker ticker([&] { ++ticks; }, 1);
        std::optional<Runner> thread(std::in_place, [&](LCThread &) {
            ticker->Start();
            while (forced || ticks == 0) LHCMessageLoop::ProcessMessages(forever);
        });
        thread->Resume();
        Await([&] { return ticks > 0; });
        if (!forced) thread->WaitFor(forever);
        thread.reset();
        EXPECT_TRUE(ticker->IsRunning());
        forced ? ticker->Stop() : ticker.Renew(1);
        int const before = ticks;
        EXPECT_FALSE(LHCMessageLoop::ProcessMessages(5));
        EXPECT_TRUE(ticker->Start() && LHCMessageLoop::ProcessMessages(forever));  // here, now
        EXPECT_EQ(ticks, before + 1);
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
        EXPECT_EQ(std::pair(timer.GetInterval(), LHCMessageLoop::GetDescriptor()), std::pair(5, -1));
        LHCMessageLoop::Run();
        ::setrlimit(RLIMIT_NOFILE, &before);
        EXPECT_TRUE(timer.Start());
    });
}

// Many threads start and stop timers at once: each gets its own ticks, and no others.
TEST(Timer, ThreadsDoNotDisturbEachOther)
{
    std::atomic<int> strangers{0};
    auto const work = [&](unsigned seed) {
        std::minstd_rand random(seed);
        std::list<Ticker> tickers;
        int ticks = 0;
        auto const self = std::this_thread::get_id();
        auto const onTick = [&] { ++ticks, strangers += std::this_thread::get_id() != self; };
        for (int i = 0; i < 50; ++i) tickers.emplace_back(onTick, i % 5);
        for (int round = 0; round < Rounds(100) || ticks == 0; ++round) {
            for (Ticker & each : tickers) random() % 2 == 0 ? void(each->Start()) : each->Stop();
            LHCMessageLoop::ProcessMessages(1);
        }
    };
    std::thread first(work, 1), second(work, 2), third(work, 3);
    for (std::thread * const each : {&first, &second, &third}) each->join();
    EXPECT_EQ(strangers, 0);
}

TEST(TimerTable, IdsAreDistinctAndNotZeroAlsoWhenTheyComeRound)
{
    qrtcl::TimerTable table(0xFFFFFFFFu - 500);
    std::map<std::uint32_t, std::pair<qrtcl::TimerStart, LCTimer *>> model;
    std::vector<LCTimer> timers(300);
    std::vector<qrtcl::TimerStart> all{table.Insert(timers[0])};  // this one stays until the numbers have come round
    std::minstd_rand random(1);
    for (int step = 0; step < 5000; ++step) {
        LCTimer & timer = timers[random() % timers.size()];
        qrtcl::TimerStart const start = all[random() % all.size()];
        if (random() % 2 == 0 && model.size() < timers.size()) {
            all.push_back(table.Insert(timer));
            auto const id = qrtcl::TimerID(all.back());
            ASSERT_TRUE(id != 0 && id != qrtcl::TimerID(all[0]) && model.emplace(id, std::pair(all.back(), &timer)).second);
        } else if (start != all[0]) {
            table.Erase(qrtcl::TimerID(start));
            model.erase(qrtcl::TimerID(start));
            ASSERT_EQ(table.Find(start), nullptr);
        }
        ASSERT_EQ(table.GetCount(), model.size() + 1);
        for (auto const & [id, entry] : model) ASSERT_EQ(table.Find(entry.first), entry.second);
    }
    EXPECT_GT(all.back(), 0x100000000u);
    EXPECT_EQ(std::pair(table.Find(all[0]), table.Find(all[0] + 0x100000000u)), std::pair(&timers[0], (LCTimer *)nullptr));
}

TEST(TimerScan, ScansUntilItIsStoppedOrDestroysItself)
{
    TestClock const clock;
    static std::vector<int> scans;
    struct Scan : LCTimerScan {
        void DoScan() override
        {
            scans.push_back(TestClock::Now());
            if (scans.size() == 4) delete this;
        }
    } * const scan = new Scan;
    EXPECT_TRUE(scan->Start(5));
    TestClock::Pass(12);
    scan->Stop();
    TestClock::Pass(12);
    EXPECT_TRUE(scan->Start(5));
    TestClock::Pass(30);
    EXPECT_EQ(scans, (std::vector{5, 10, 29, 34}));
}

// Setting the wall clock, forward and back, is shown at the next tick, and moves no tick.
TEST(Clock, ShowsTheTimeOfItsLastTick)
{
    TestClock const clock;
    static platform::LocalTime now;
    platform::ReplaceClock([]() noexcept { return now; });
    struct Wall : LCClock {
        void Log() { log += std::to_string(TestClock::Now()) + ": " + GetCurDateTimeStr("").str() + "\n"; }
        std::string log;
        LCEvent0Param::LCHook hook{OnChange, *this, &Wall::Log};
    } wall;
    TestClock::Pass(1500);  // does not start by itself
    wall.Log();
    wall.Start();
    for (int const year : {2026, 1999, 2099}) {
        now = {year, 3, 29, 1, 59, 59, 0, 60};
        TestClock::Pass(1000);
    }
    now = {};
    wall.SetFormat("YYYY");
    EXPECT_EQ(wall.log, "1500: 01/01/1900 00:00:00\n2500: 29/03/2026 01:59:59\n3500: 29/03/1999 01:59:59\n"
                        "4500: 29/03/2099 01:59:59\n4500: 2099\n");
    EXPECT_EQ(wall.GetCurDateTimeStr("HH:mm"), "01:59");
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
    EXPECT_EQ(std::tuple(copy.GetTimeInSeconds(), copy.GetTimeInMilliseconds(), copy.GetTimeInMicroseconds(),
                         copy.GetTimeInNanoseconds()),
              std::tuple(1.5, 1500.0, 1500000.0, 1500000000.0));
}

}  // namespace
