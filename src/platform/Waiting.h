#pragma once

#include <atomic>
#include <cstdint>

// Sleeping on a word of memory, with time-outs on a clock that nobody sets.
namespace qrtcl::platform {

/// A moment on the monotonic clock, in nanoseconds.
using Moment = std::int64_t;

/// Later than every other moment.
constexpr Moment never = INT64_MAX;

/// Interfaces give time-outs in milliseconds; this one means that there is no limit.
constexpr std::uint32_t noLimit = 0xFFFFFFFF;

Moment Now() noexcept;

/// So many milliseconds from now; `never` for `noLimit`.
Moment After(std::uint32_t milliseconds) noexcept;

/// Sleeps while `word` holds `value`. False once `until` is over; true may also come for no reason: look
/// again.
bool SleepWhile(std::atomic<std::uint32_t> const & word, std::uint32_t value, Moment until) noexcept;

/// Wakes all that sleep on `word`. Touches no memory: the word may be gone already.
void WakeAll(std::atomic<std::uint32_t> const & word) noexcept;

/// Tells the processor that this is a loop that waits.
void Relax() noexcept;

}  // namespace qrtcl::platform
