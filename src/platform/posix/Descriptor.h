#pragma once

#include <cerrno>
#include <fcntl.h>
#include <string_view>
#include <unistd.h>

namespace qrtcl::platform {

/// What a path leads to, opened; closed at the end of its life.
class Descriptor {
public:
    /// A terminal does not come to control the process by this.
    Descriptor(char const * path, int flags)
    {
        do mivNumber = ::open(path, flags | O_CLOEXEC | O_NOCTTY, 0666);
        while (mivNumber < 0 && errno == EINTR);
    }
    Descriptor(Descriptor const &) = delete;
    Descriptor & operator=(Descriptor const &) = delete;
    ~Descriptor()
    {
        if (IsOpen()) ::close(mivNumber);
    }
    bool IsOpen() const { return mivNumber >= 0; }
    int Number() const { return mivNumber; }

private:
    int mivNumber = -1;
};

/// Writes all bytes, or as many as go.
inline void WriteAll(int descriptor, std::string_view bytes)
{
    while (!bytes.empty()) {
        ::ssize_t const written = ::write(descriptor, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) return;
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
}

}  // namespace qrtcl::platform
