#include "platform/RandomBytes.h"

#include <atomic>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <new>
#include <sys/mman.h>
#include <sys/random.h>
#include <unistd.h>

namespace qrtcl::platform {

namespace {

/// Random bytes fetched ahead by one thread. They may only be used in the generation in which they were
/// fetched.
struct Pool {
    std::array<unsigned char, 256 * sizeof(RandomBlock)> bytes;
    std::size_t left;
    std::uint32_t generation;
};

constinit thread_local Pool cotPool{};

constinit std::atomic<bool (*)(RandomBlock &) noexcept> cpvReplacement{nullptr};

/// A word on a page of its own that the kernel clears in a forked child, however it was forked.
constinit std::atomic<std::atomic<std::uint32_t> *> cpvForkWord{nullptr};

/// The last generation given out; a child inherits it and goes on from there.
constinit std::atomic<std::uint32_t> civLastGeneration{0};

bool FillFromSystem(unsigned char * bytes, std::size_t count) noexcept
{
    while (count != 0) {
        ::ssize_t const got = ::getrandom(bytes, count, 0);
        if (got < 0 && errno == EINTR) continue;
        if (got <= 0) return false;
        bytes += got;
        count -= static_cast<std::size_t>(got);
    }
    return true;
}

/// Null if the kernel has no such pages.
std::atomic<std::uint32_t> * MakeForkWord() noexcept
{
    auto const size = static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
    void * const page = ::mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (page == MAP_FAILED) return nullptr;
    auto * const mine = ::new (page) std::atomic<std::uint32_t>(0);
    std::atomic<std::uint32_t> * first = nullptr;
    if (::madvise(page, size, MADV_WIPEONFORK) == 0 && cpvForkWord.compare_exchange_strong(first, mine))
        return mine;
    ::munmap(page, size);
    return first;
}

/// A number that is never 0 and changes with each fork; 0 if forks can't be noticed.
std::uint32_t Generation() noexcept
{
    auto * word = cpvForkWord.load(std::memory_order_acquire);
    if (word == nullptr) word = MakeForkWord();
    if (word == nullptr) return 0;
    std::uint32_t generation = word->load(std::memory_order_relaxed);
    if (generation != 0) return generation;
    std::uint32_t const next = ++civLastGeneration;
    return word->compare_exchange_strong(generation, next) ? next : generation;
}

}  // namespace

bool RandomBytes(RandomBlock & block) noexcept
{
    if (auto const replacement = cpvReplacement.load(std::memory_order_relaxed)) return replacement(block);

    std::uint32_t const generation = Generation();
    if (generation == 0) return FillFromSystem(block.data(), block.size());

    Pool & pool = cotPool;
    if (pool.left == 0 || pool.generation != generation) {
        pool.left = 0;
        if (!FillFromSystem(pool.bytes.data(), pool.bytes.size())) return false;
        pool.left = pool.bytes.size();
        pool.generation = generation;
    }
    pool.left -= block.size();
    std::memcpy(block.data(), pool.bytes.data() + pool.left, block.size());
    return true;
}

void ReplaceRandomBytes(bool (*source)(RandomBlock &) noexcept) noexcept { cpvReplacement = source; }

}  // namespace qrtcl::platform
