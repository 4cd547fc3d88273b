#include "platform/Waiting.h"

#include <cerrno>
#include <linux/futex.h>
#include <sys/syscall.h>
#include <time.h>
#include <unistd.h>

namespace qrtcl::platform {

namespace {

constexpr Moment second = 1'000'000'000;

// Also called by the signal handler of platform/Threads, which may have interrupted the thread sanitizer.
#define QRTCL_IN_HANDLER __attribute__((no_sanitize("thread")))

QRTCL_IN_HANDLER long Futex(std::atomic<std::uint32_t> const & word, int operation, std::uint32_t value,
                            struct timespec const * until) noexcept
{
    return ::syscall(SYS_futex, &word, operation | FUTEX_PRIVATE_FLAG, value, until, nullptr,
                     FUTEX_BITSET_MATCH_ANY);
}

}  // namespace

Moment Now() noexcept
{
    struct timespec now {};
    ::clock_gettime(CLOCK_MONOTONIC, &now);
    return Moment{now.tv_sec} * second + now.tv_nsec;
}

Moment After(std::uint32_t milliseconds) noexcept
{
    return milliseconds == noLimit ? never : Now() + Moment{milliseconds} * 1'000'000;
}

QRTCL_IN_HANDLER bool SleepWhile(std::atomic<std::uint32_t> const & word, std::uint32_t value,
                                 Moment until) noexcept
{
    // With a bit set the time is a moment on the monotonic clock, not a span.
    struct timespec const limit{static_cast<time_t>(until / second), static_cast<long>(until % second)};
    long const result = Futex(word, FUTEX_WAIT_BITSET, value, until == never ? nullptr : &limit);
    return result == 0 || errno != ETIMEDOUT;
}

QRTCL_IN_HANDLER void WakeAll(std::atomic<std::uint32_t> const & word) noexcept
{
    Futex(word, FUTEX_WAKE_BITSET, INT32_MAX, nullptr);
}

void Relax() noexcept
{
#if defined(__x86_64__)
    __builtin_ia32_pause();
#elif defined(__aarch64__)
    __asm__ volatile("yield");
#endif
}

}  // namespace qrtcl::platform
