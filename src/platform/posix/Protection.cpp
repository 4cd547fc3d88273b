#include "platform/Protection.h"

namespace qrtcl::platform {

// Read in a signal handler: it must not be allocated at its first use.
__attribute__((tls_model("initial-exec"))) constinit thread_local Protection cotProtection;

std::uint64_t NewThreadNumber() noexcept
{
    static constinit std::atomic<std::uint64_t> last{0};
    return ++last;
}

}  // namespace qrtcl::platform
