#include "support/Allocations.h"

#include <cstdlib>

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
    givFreed += block != nullptr;
    std::free(block);
}
void operator delete(void * block, std::size_t) noexcept { operator delete(block); }
