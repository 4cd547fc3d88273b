#include "platform/Files.h"

#include <algorithm>
#include <cerrno>
#include <sys/stat.h>

#include "platform/posix/Descriptor.h"

namespace qrtcl::platform {

bool ReadFile(std::string const & name, std::string & content)
{
    Descriptor const file(name.c_str(), O_RDONLY);
    struct stat status {};
    if (!file.IsOpen() || ::fstat(file.Number(), &status) != 0 || S_ISDIR(status.st_mode)) return false;

    // One byte more than the size lets the last read see the end without growing; what has no size grows by
    // blocks.
    constexpr std::size_t block = 1 << 16;
    std::size_t size = 0;
    content.resize(std::max<std::size_t>(static_cast<std::size_t>(status.st_size) + 1, block));
    for (;;) {
        if (size == content.size()) content.resize(2 * size);
        ::ssize_t const got = ::read(file.Number(), content.data() + size, content.size() - size);
        if (got > 0) {
            size += static_cast<std::size_t>(got);
        } else if (got == 0 || errno != EINTR) {
            content.resize(size);
            return got == 0;
        }
    }
}

bool WriteFile(std::string const & name, std::string_view content)
{
    Descriptor const file(name.c_str(), O_WRONLY | O_CREAT | O_TRUNC);
    if (!file.IsOpen()) return false;
    WriteAll(file.Number(), content);
    return true;
}

}  // namespace qrtcl::platform
