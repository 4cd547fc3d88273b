#include "platform/Files.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace qrtcl::platform {

namespace {

/// An open file, closed at the end of its life.
class File {
public:
    File(std::string const & name, int flags) : mivDescriptor(::open(name.c_str(), flags | O_CLOEXEC, 0666))
    {}
    File(File const &) = delete;
    File & operator=(File const &) = delete;
    ~File()
    {
        if (mivDescriptor >= 0) ::close(mivDescriptor);
    }
    bool IsOpen() const { return mivDescriptor >= 0; }
    int Descriptor() const { return mivDescriptor; }

private:
    int mivDescriptor;
};

}  // namespace

bool ReadFile(std::string const & name, std::string & content)
{
    File const file(name, O_RDONLY);
    struct stat status {};
    if (!file.IsOpen() || ::fstat(file.Descriptor(), &status) != 0 || S_ISDIR(status.st_mode)) return false;

    // One byte more than the size lets the last read see the end without growing; what has no size grows by
    // blocks.
    constexpr std::size_t block = 1 << 16;
    std::size_t size = 0;
    content.resize(std::max<std::size_t>(static_cast<std::size_t>(status.st_size) + 1, block));
    for (;;) {
        if (size == content.size()) content.resize(2 * size);
        ::ssize_t const got = ::read(file.Descriptor(), content.data() + size, content.size() - size);
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
    File const file(name, O_WRONLY | O_CREAT | O_TRUNC);
    if (!file.IsOpen()) return false;
    while (!content.empty()) {
        ::ssize_t const written = ::write(file.Descriptor(), content.data(), content.size());
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) break;
        content.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

}  // namespace qrtcl::platform
