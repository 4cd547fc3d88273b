#pragma once

#include <cstddef>
#include <new>

#include <gtest/gtest.h>

/// The blocks that this thread has had from `operator new` so far. Types that ask for more than the usual
/// alignment do not count.
std::size_t AllocationCount();
/// Their sizes together. What was given back is not taken off.
std::size_t AllocatedBytes();
/// Those that it has not given back.
std::size_t LiveAllocations();

/// The `n`-th of this thread's allocations from here on fails; 0 for none. Whether the one named before has failed.
bool FailAllocation(std::size_t n);

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
