#include "platform/Ticking.h"

#include <algorithm>
#include <atomic>
#include <poll.h>
#include <sys/timerfd.h>
#include <time.h>
#include <unistd.h>

namespace qrtcl::platform {

namespace {

constinit std::atomic<Moment (*)() noexcept> cpvNow{Now};
constinit std::atomic<void (*)(Moment) noexcept> cpvWait{nullptr};

struct timespec Split(Moment moment) noexcept
{
    constexpr Moment second = 1'000'000'000;
    return {static_cast<time_t>(moment / second), static_cast<long>(moment % second)};
}

}  // namespace

Moment TickNow() noexcept { return cpvNow.load(std::memory_order_relaxed)(); }

int OpenAlarm() noexcept { return ::timerfd_create(CLOCK_MONOTONIC, TFD_NONBLOCK | TFD_CLOEXEC); }

void CloseAlarm(int alarm) noexcept { ::close(alarm); }

void SetAlarm(int alarm, Moment moment) noexcept
{
    struct itimerspec setting {};  // zero is off, so the earliest moment is the first nanosecond
    if (moment != never) setting.it_value = Split(std::max<Moment>(moment, 1));
    ::timerfd_settime(alarm, TFD_TIMER_ABSTIME, &setting, nullptr);
}

void AwaitAlarm(int alarm, Moment moment, Moment until) noexcept
{
    if (auto const wait = cpvWait.load(std::memory_order_relaxed)) return wait(std::min(moment, until));
    struct pollfd descriptor {
        alarm, POLLIN, 0
    };
    struct timespec const left = Split(std::max<Moment>(until - Now(), 0));
    ::ppoll(&descriptor, 1, until == never ? nullptr : &left, nullptr);
}

void ReplaceTickClock(TickClock const & clock) noexcept
{
    cpvNow = clock.now != nullptr ? clock.now : Now;
    cpvWait = clock.wait;
}

}  // namespace qrtcl::platform
