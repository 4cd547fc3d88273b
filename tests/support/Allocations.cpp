#include "support/Allocations.h"

#include <cstdlib>
#include <new>
#include <utility>

namespace {

thread_local std::size_t givCount = 0;
thread_local std::size_t givBytes = 0;
thread_local std::size_t givFreed = 0;
thread_local std::size_t givUntilFailure = 0;

}  // namespace

std::size_t AllocationCount() { return givCount; }
std::size_t AllocatedBytes() { return givBytes; }
std::size_t LiveAllocations() { return givCount - givFreed; }
bool FailAllocation(std::size_t n) { return std::exchange(givUntilFailure, n) == 0; }

// The temporary buffers of the standard algorithms come from this one.
void * operator new(std::size_t size, std::nothrow_t const &) noexcept
{
    if (givUntilFailure > 0 && --givUntilFailure == 0) return nullptr;
    ++givCount;
    givBytes += size;
    return std::malloc(size > 0 ? size : 1);
}

void * operator new(std::size_t size)
{
    if (void * const block = operator new(size, std::nothrow)) return block;
    throw std::bad_alloc();
}

void operator delete(void * block) noexcept
{
    givFreed += block != nullptr ? 1 : 0;
    std::free(block);
}
void operator delete(void * block, std::size_t) noexcept { operator delete(block); }
