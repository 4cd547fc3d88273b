#include "platform/Memory.h"

#include <cstdint>
#include <sys/mman.h>
#include <unistd.h>

namespace qrtcl::platform {

void PreferLargePages(void * block, std::size_t size) noexcept
{
#if defined(MADV_HUGEPAGE)
    // From here on an allocation is the system's, whole and untouched.
    constexpr std::size_t large = 1 << 25;
    if (size < large) return;
    // The system takes whole pages only: the rest of the first and of the last is left out.
    auto const page = static_cast<std::uintptr_t>(::sysconf(_SC_PAGESIZE));
    auto const begin = (reinterpret_cast<std::uintptr_t>(block) + page - 1) / page * page;
    auto const end = (reinterpret_cast<std::uintptr_t>(block) + size) / page * page;
    if (begin < end) ::madvise(reinterpret_cast<void *>(begin), end - begin, MADV_HUGEPAGE);
#endif
}

}  // namespace qrtcl::platform
