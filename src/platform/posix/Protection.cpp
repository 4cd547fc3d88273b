#include "platform/Protection.h"

#include <cxxabi.h>

// What compilers name to say in which library something stands.
extern "C" __attribute__((visibility("hidden"))) void * __dso_handle;  // NOLINT(bugprone-reserved-identifier)

namespace qrtcl::platform {

constinit thread_local Protection cotProtection;

std::uint64_t NewThreadNumber() noexcept
{
    static constinit std::atomic<std::uint64_t> last{0};
    return ++last;
}

// As for a `thread_local` object with a destructor: the library stays loaded until then.
void AtThreadEnd(void (*function)(void *), void * argument) noexcept
{
    abi::__cxa_thread_atexit(function, argument, &__dso_handle);
}

}  // namespace qrtcl::platform
