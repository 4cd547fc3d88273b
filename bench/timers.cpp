// Starting and stopping many timers, and how late a periodic one ticks.

#include <algorithm>
#include <chrono>
#include <functional>
#include <list>
#include <sys/timerfd.h>
#include <unistd.h>

#include "Bench.h"
#include "concurrency/LCTimer.h"
#include "concurrency/LHCMessageLoop.h"

#ifdef PEER_LIBUV
#include <uv.h>
#endif
#ifdef PEER_ASIO
#include <asio.hpp>
#endif

namespace {

using Clock = std::chrono::steady_clock;

constexpr int period = 10;  // milliseconds
constexpr int ticks = 20;

/// The intervals of many timers, in milliseconds.
std::vector<int> Intervals(std::size_t count)
{
    auto random = bench::Random();
    std::vector<int> intervals;
    for (std::size_t i = 0; i < count; ++i) intervals.push_back(static_cast<int>(1000 + random() % 60'000));
    return intervals;
}

/// Sums up how much later than due each tick comes; due is one period after the last one was due.
class Lateness {
public:
    /// False after the last one.
    bool Tick()
    {
        mivDue += std::chrono::milliseconds(period);
        mivSum += std::max(Clock::now() - mivDue, Clock::duration(0));
        return ++mivTicks < ticks;
    }
    double Mean() const { return std::chrono::duration<double, std::nano>(mivSum).count() / ticks; }

private:
    Clock::time_point mivDue = Clock::now();
    Clock::duration mivSum{0};
    int mivTicks = 0;
};

/// `run` lets a timer tick until `Lateness::Tick` gives false.
void RegisterLateness(char const * name, void (*run)(Lateness &))
{
    benchmark::RegisterBenchmark(name, [run](benchmark::State & state) {
        double sum = 0;
        for (auto _ : state) {
            Lateness lateness;
            run(lateness);
            sum += lateness.Mean();
        }
        state.counters["ns"] = sum / static_cast<double>(state.iterations());
    })->Iterations(5);
}

void StartStop(std::size_t count)
{
    std::string const workload = "W14.start-stop-" + std::to_string(count);
    static std::list<std::vector<int>> kept;
    std::vector<int> const & intervals = kept.emplace_back(Intervals(count));
    {
        static std::list<std::vector<LCTimer>> all;
        auto & timers = all.emplace_back(count);
        for (std::size_t i = 0; i < count; ++i) timers[i].SetInterval(intervals[i]);
        bench::Register(workload, "ours", count, [&] {
            for (LCTimer & timer : timers) bench::Require(timer.Start(), "starting");
            for (LCTimer & timer : timers) timer.Stop();
        });
    }
#ifdef PEER_LIBUV
    {
        static std::list<std::vector<uv_timer_t>> all;
        auto & timers = all.emplace_back(count);
        for (auto & timer : timers) uv_timer_init(uv_default_loop(), &timer);
        bench::Register(workload, "libuv", count, [&] {
            for (std::size_t i = 0; i < timers.size(); ++i) {
                auto const interval = static_cast<std::uint64_t>(intervals[i]);
                uv_timer_start(
                    &timers[i], [](uv_timer_t *) {}, interval, interval);
            }
            for (auto & timer : timers) uv_timer_stop(&timer);
        });
    }
#endif
#ifdef PEER_ASIO
    {
        static asio::io_context context;
        static std::list<std::list<asio::steady_timer>> all;
        auto & timers = all.emplace_back();
        for (std::size_t i = 0; i < count; ++i) timers.emplace_back(context);
        bench::Register(workload, "asio", count, [&] {
            auto interval = intervals.begin();
            for (auto & timer : timers) {
                timer.expires_after(std::chrono::milliseconds(*interval++));
                timer.async_wait([](asio::error_code const &) {});
            }
            for (auto & timer : timers) timer.cancel();
            context.restart();
            context.poll();
        });
    }
#endif
}

void RunOurs(Lateness & lateness)
{
    struct Receiver {
        void OnTick(LCTimer &)
        {
            if (!lateness.Tick()) LHCMessageLoop::Quit();
        }
        Lateness & lateness;
    } receiver{lateness};
    LCTimer timer;
    LCEvent1Param<LCTimer &>::LCHook const hook(timer.OnTick, receiver, &Receiver::OnTick);
    timer.SetInterval(period);
    lateness = Lateness();
    timer.Start();
    LHCMessageLoop::Run();
}

void RunBare(Lateness & lateness)
{
    int const timer = ::timerfd_create(CLOCK_MONOTONIC, 0);
    lateness = Lateness();
    struct itimerspec const setting{{0, period * 1'000'000}, {0, period * 1'000'000}};
    ::timerfd_settime(timer, 0, &setting, nullptr);
    do {
        std::uint64_t ticks = 0;
        bench::Require(::read(timer, &ticks, sizeof ticks) == sizeof ticks, "reading a timer");
    } while (lateness.Tick());
    ::close(timer);
}

#ifdef PEER_LIBUV
void RunLibuv(Lateness & lateness)
{
    uv_loop_t loop;
    uv_loop_init(&loop);
    uv_timer_t timer;
    uv_timer_init(&loop, &timer);
    timer.data = &lateness;
    lateness = Lateness();
    auto const onTick = [](uv_timer_t * ticking) {
        if (!static_cast<Lateness *>(ticking->data)->Tick())
            uv_close(reinterpret_cast<uv_handle_t *>(ticking), nullptr);
    };
    uv_timer_start(&timer, onTick, period, period);
    uv_run(&loop, UV_RUN_DEFAULT);
    uv_loop_close(&loop);
}
#endif

#ifdef PEER_ASIO
void RunAsio(Lateness & lateness)
{
    asio::io_context context;
    asio::steady_timer timer(context);
    lateness = Lateness();
    timer.expires_after(std::chrono::milliseconds(period));
    std::function<void(asio::error_code const &)> const onTick = [&](asio::error_code const &) {
        if (!lateness.Tick()) return;
        timer.expires_at(timer.expiry() + std::chrono::milliseconds(period));
        timer.async_wait(onTick);
    };
    timer.async_wait(onTick);
    context.run();
}
#endif

}  // namespace

int main(int count, char * arguments[])
{
    for (std::size_t const timers : {1000, 10'000, 100'000}) StartStop(timers);
    RegisterLateness("W14.lateness-10ms/ours", RunOurs);
    RegisterLateness("bound.W14.lateness-10ms/a timer of the kernel, read", RunBare);
#ifdef PEER_LIBUV
    RegisterLateness("W14.lateness-10ms/libuv", RunLibuv);
#endif
#ifdef PEER_ASIO
    RegisterLateness("W14.lateness-10ms/asio", RunAsio);
#endif
    benchmark::Initialize(&count, arguments);
    benchmark::RunSpecifiedBenchmarks();
}
