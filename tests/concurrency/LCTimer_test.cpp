#include "concurrency/LCTimer.h"

#include <algorithm>
#include <list>
#include <map>
#include <random>
#include <sys/resource.h>

#include "concurrency/Concurrent.h"
#include "concurrency/LCClock.h"
#include "concurrency/LCHighResTimer.h"
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
    explicit Ticker(std::function<void()> onTick, int interval = 10) : function(std::move(onTick)) { Renew(interval); }
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
            LCTimer & timer = *tickers.at(i).timer;
            if (what < 2) model.interval = upTo(15) - 1;
            if (what == 0) tickers.at(i).Renew(model.interval);
            if (what == 1) timer.SetInterval(model.interval);
            if (what == 2) timer.Stop();
            ASSERT_TRUE(what != 3 || timer.Start());
            model.running = what == 3 || (what == 1 && model.running);
            if (model.running) model.due = TestClock::Now() + model.Period(), model.order = ++order;
            ASSERT_EQ(tickers.at(i).timer->IsRunning(), model.running);
            ASSERT_EQ(tickers.at(i).timer->GetInterval(), model.interval);
        };
        auto const onTick = [&](int i) {
            ticks.push_back(i);
            expected.push_back(std::ranges::min_element(models, {}, [](auto const & each) {
                                   auto const & [number, model] = each;
                                   return std::tuple(!model.IsDue(), model.due, model.order);
                               })->first);
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
    int ticks = 0;
    Ticker ticker([&] { ++ticks; });
    LCTimer copy(*ticker.timer);
    copy.Start();
    LCTimer shadow(copy), *running = new LCTimer(copy);
    TestClock::Pass(10);
    EXPECT_EQ(ticks, 1);
    shadow.Stop();  // both
    running->Start();
    *running = copy;  // stops first: nothing may tick into it later
    delete running;
    TestClock::Pass(20);
    EXPECT_EQ(ticks, 1);
}

TEST(Timer, MayBeStoppedAfterItsThreadHasEnded)
{
    for (bool const forced : {false, true}) {
        LCTimer stopped;
        std::atomic<int> ticks{0};
        Ticker ticker([&] { ++ticks; }, 1);
        Runner thread([&](LCThread &) {
            stopped.Start();
            ticker.timer->Start();
            while (forced || ticks == 0) LHCMessageLoop::ProcessMessages(forever);
        });
        thread->Resume();
        Await([&] { return ticks > 0; });
        if (!forced) thread->WaitFor(forever);
        thread.thread.reset();
        int const before = ticks;
        EXPECT_TRUE(stopped.IsRunning());
        stopped.Stop();
        ticker.timer.reset();
        LHCMessageLoop::ProcessMessages(5);
        EXPECT_EQ(ticks, before);
        EXPECT_TRUE(stopped.Start());  // here, now
    }
}

TEST(Timer, DoesNotStartWithoutADescriptor)
{
    std::jthread([] {
        LCTimer timer;
        struct rlimit before {};
        ::getrlimit(RLIMIT_NOFILE, &before);
        struct rlimit const none {0, before.rlim_max};
        ::setrlimit(RLIMIT_NOFILE, &none);
        EXPECT_FALSE(timer.Start() || timer.IsRunning());
        EXPECT_EQ(LHCMessageLoop::GetDescriptor(), -1);
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
            for (Ticker & each : tickers) random() % 2 == 0 ? void(each.timer->Start()) : each.timer->Stop();
            LHCMessageLoop::ProcessMessages(1);
        }
    };
    {
        std::jthread const first(work, 1), second(work, 2), third(work, 3);
    }
    EXPECT_EQ(strangers, 0);
}

TEST(TimerTable, IdsAreDistinctAndNotZeroAlsoWhenTheyComeRound)
{
    qrtcl::TimerTable table(0xFFFFFFFFu - 500);
    std::map<std::uint32_t, std::pair<qrtcl::TimerStart, LCTimer *>> model;
    std::vector<LCTimer> timers(300);
    std::vector<qrtcl::TimerStart> all;
    std::minstd_rand random(1);
    for (int step = 0; step < 5000; ++step) {
        if (random() % 2 == 0 && model.size() < timers.size()) {
            LCTimer & timer = timers[random() % timers.size()];
            all.push_back(table.Insert(timer));
            auto const id = qrtcl::TimerID(all.back());
            ASSERT_TRUE(id != 0 && model.emplace(id, std::pair(all.back(), &timer)).second);
        } else if (all.size() > 10) {  // the first few stay until the numbers have come round
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

TEST(TimerScan, ScansUntilItIsStoppedOrDestroysItself)
{
    TestClock const clock;
    static int scans;
    struct Scan : LCTimerScan {
        void DoScan() override
        {
            if (++scans == 4) delete this;
        }
    };
    Scan * const scan = new Scan;
    for (int const expected : {2, 4}) {
        EXPECT_TRUE(scan->Start(5));
        TestClock::Pass(12);
        EXPECT_EQ(scans, expected);
        if (scans < 4) scan->Stop();
        TestClock::Pass(12);
        EXPECT_EQ(scans, expected);
    }
}

TEST(Clock, ShowsTheTimeOfItsLastTick)
{
    TestClock const clock;
    static platform::LocalTime now;
    now = {2026, 3, 29, 1, 59, 59, 0, 60};
    platform::ReplaceClock([]() noexcept { return now; });
    LCClock wall;
    struct {
        void OnChange() { ++changes; }
        int changes = 0;
    } listener;
    LCEvent0Param::LCHook const hook(wall.OnChange, listener, &decltype(listener)::OnChange);
    auto const expect = [&](char const * format, char const * shown, int changes) {
        EXPECT_EQ(wall.GetCurDateTimeStr(format), shown);
        EXPECT_EQ(listener.changes, changes) << shown;
    };
    TestClock::Pass(2000);
    wall.Start();
    TestClock::Pass(999);
    expect("", "01/01/1900 00:00:00", 0);
    TestClock::Pass(1);
    now = {2026, 3, 29, 3, 0, 0, 0, 120};
    expect("", "29/03/2026 01:59:59", 1);
    expect("HH:mm", "01:59", 1);
    wall.SetFormat("mm:SS");
    expect("", "59:59", 2);
    TestClock::Pass(1000);
    expect("", "00:00", 3);
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
}

}  // namespace
