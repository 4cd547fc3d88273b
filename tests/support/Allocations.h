#pragma once

#include <cstddef>
#include <new>
#include <utility>

#include <gtest/gtest.h>

inline thread_local std::size_t givCount = 0, givBytes = 0, givFreed = 0, givUntilFailure = 0;

/// The blocks that this thread has had from `operator new` so far. Types that ask for more than the usual
/// alignment do not count.
inline std::size_t AllocationCount() { return givCount; }
/// Their sizes together. What was given back is not taken off.
inline std::size_t AllocatedBytes() { return givBytes; }
/// Those that it has not given back.
inline std::size_t LiveAllocations() { return givCount - givFreed; }

/// The `n`-th of this thread's allocations from here on fails; 0 for none. Whether the one named before has failed.
inline bool FailAllocation(std::size_t n) { return std::exchange(givUntilFailure, n) == 0; }

/// How many blocks a call takes.
template <typename Call> std::size_t AllocationsOf(Call call)
{
    std::size_t const before = AllocationCount();
    call();
    return AllocationCount() - before;
}

/// Runs `call` on a copy of `value` with its first allocation failing, then with its second, and so on until all
/// succeed. If it throws, the copy must be as it was; nothing may leak.
template <typename Value, typename Call> void ExpectAllOrNothing(Value const & value, Call call)
{
    std::size_t const live = LiveAllocations();
    bool failed = true;
    for (std::size_t n = 1; failed; ++n) {
        Value copy(value);
        FailAllocation(n);
        try {
            call(copy);
            failed = FailAllocation(0);
        } catch (std::bad_alloc const &) {
            EXPECT_TRUE(FailAllocation(0) && copy == value) << n;
        }
    }
    EXPECT_EQ(LiveAllocations(), live);
}
