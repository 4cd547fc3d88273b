#include "platform/Files.h"

#include <algorithm>
#include <cerrno>
#include <sys/stat.h>

#include "platform/posix/Descriptor.h"

namespace qrtcl::platform {

namespace {

constexpr std::size_t pieceSize = 1 << 17;

/// Bytes read into a place; 0 at the end, negative if the read fails.
::ssize_t Read(Descriptor const & file, char * place, std::size_t size)
{
    ::ssize_t got = 0;
    do got = ::read(file.Number(), place, size);
    while (got < 0 && errno == EINTR);
    return got;
}

/// A folder can be opened, but it is no file.
bool IsFile(Descriptor const & file, struct stat & status)
{
    return file.IsOpen() && ::fstat(file.Number(), &status) == 0 && !S_ISDIR(status.st_mode);
}

}  // namespace

bool ReadFile(std::string const & name, std::string & content)
{
    Descriptor const file(name.c_str(), O_RDONLY);
    struct stat status {};
    if (!IsFile(file, status)) return false;

    // One byte more than the size lets the last read see the end without growing; what has no size grows by
    // blocks.
    constexpr std::size_t block = 1 << 12;
    std::size_t size = 0;
    content.resize(status.st_size > 0 ? static_cast<std::size_t>(status.st_size) + 1 : block);
    for (;;) {
        if (size == content.size()) content.resize(2 * size);
        ::ssize_t const got = Read(file, content.data() + size, content.size() - size);
        if (got <= 0) {
            content.resize(size);
            return got == 0;
        }
        size += static_cast<std::size_t>(got);
    }
}

bool ReadPieces(std::string const & name, std::function<void(std::string_view, std::size_t)> const & take)
{
    Descriptor const file(name.c_str(), O_RDONLY);
    struct stat status {};
    if (!IsFile(file, status)) return false;
    std::string piece(pieceSize, '\0');
    auto left = static_cast<std::size_t>(status.st_size);
    ::ssize_t got = 0;
    while ((got = Read(file, piece.data(), piece.size())) > 0) {
        std::string_view const read(piece.data(), static_cast<std::size_t>(got));
        left -= std::min(left, read.size());
        take(read, left);
    }
    return got == 0;
}

bool WriteFile(std::string const & name, std::string_view content)
{
    Descriptor const file(name.c_str(), O_WRONLY | O_CREAT | O_TRUNC);
    if (!file.IsOpen()) return false;
    WriteAll(file.Number(), content);
    return true;
}

bool WritePieces(std::string const & name, std::function<void(std::string &)> const & give)
{
    Descriptor const file(name.c_str(), O_WRONLY | O_CREAT | O_TRUNC);
    if (!file.IsOpen()) return false;
    std::string piece;
    for (give(piece); !piece.empty(); give(piece)) {
        WriteAll(file.Number(), piece);
        piece.clear();
    }
    return true;
}

}  // namespace qrtcl::platform
