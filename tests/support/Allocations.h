#pragma once

#include <cstddef>

/// The blocks that this thread has had from `operator new` so far. Types that ask for more than the usual
/// alignment do not count.
std::size_t AllocationCount();
/// Their sizes together. What was given back is not taken off.
std::size_t AllocatedBytes();

/// How many blocks a call takes.
template <typename Call> std::size_t AllocationsOf(Call call)
{
    std::size_t const before = AllocationCount();
    call();
    return AllocationCount() - before;
}
