#include "support/Allocations.h"

#include <cstdlib>
#include <new>

namespace {

thread_local std::size_t givCount = 0;
thread_local std::size_t givBytes = 0;

}  // namespace

std::size_t AllocationCount() { return givCount; }
std::size_t AllocatedBytes() { return givBytes; }

void * operator new(std::size_t size)
{
    ++givCount;
    givBytes += size;
    if (void * const block = std::malloc(size > 0 ? size : 1)) return block;
    throw std::bad_alloc();
}

void operator delete(void * block) noexcept { std::free(block); }
void operator delete(void * block, std::size_t) noexcept { std::free(block); }
