#include "support/Allocations.h"

#include <cstdlib>
#include <new>

namespace {

thread_local std::size_t givCount = 0;
thread_local std::size_t givBytes = 0;

}  // namespace

std::size_t AllocationCount() { return givCount; }
std::size_t AllocatedBytes() { return givBytes; }

// The temporary buffers of the standard algorithms come from this one.
void * operator new(std::size_t size, std::nothrow_t const &) noexcept
{
    ++givCount;
    givBytes += size;
    return std::malloc(size > 0 ? size : 1);
}

void * operator new(std::size_t size)
{
    if (void * const block = operator new(size, std::nothrow)) return block;
    throw std::bad_alloc();
}

void operator delete(void * block) noexcept { std::free(block); }
void operator delete(void * block, std::size_t) noexcept { std::free(block); }
