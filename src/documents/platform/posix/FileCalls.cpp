#include "documents/platform/FileCalls.h"

#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <limits.h>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

namespace qrtcl::documents {

namespace {

class SystemCalls : public FileCalls {};

constinit SystemCalls covSystemCalls;
constinit std::atomic<FileCalls *> copReplacement{nullptr};

/// The error of a call that gives a negative number if it fails.
std::error_code Error(long result)
{
    return result < 0 ? std::error_code(errno, std::generic_category()) : std::error_code();
}

std::error_code Open(std::string const & path, int flags, ::mode_t mode, int & file)
{
    file = ::open(path.c_str(), flags | O_CLOEXEC | O_NOCTTY, mode);
    return Error(file);
}

std::error_code Moved(::ssize_t result, std::size_t & size)
{
    size = result < 0 ? 0 : static_cast<std::size_t>(result);
    return Error(result);
}

}  // namespace

FileCalls & FileCalls::Get() noexcept
{
    FileCalls * const replacement = copReplacement;
    return replacement == nullptr ? covSystemCalls : *replacement;
}

void FileCalls::Replace(FileCalls * calls) noexcept { copReplacement = calls; }

std::error_code FileCalls::Look(std::string const & path, FileState & state)
{
    struct stat status {};
    state = {};
    if (::stat(path.c_str(), &status) != 0) return errno == ENOENT ? std::error_code() : Error(-1);
    state.kind = S_ISREG(status.st_mode)   ? FileState::Kind::File
                 : S_ISDIR(status.st_mode) ? FileState::Kind::Folder
                                           : FileState::Kind::Other;
    state.size = static_cast<std::size_t>(status.st_size);
    state.mode = status.st_mode & 07777;
    state.owner = status.st_uid;
    state.group = status.st_gid;
    return {};
}

std::error_code FileCalls::Resolve(std::string & path)
{
    path.resize(std::strlen(path.c_str()));
    for (int links = 0; links < 40; ++links) {
        std::unique_ptr<char, decltype(&std::free)> const whole(::realpath(path.c_str(), nullptr),
                                                                &std::free);
        if (whole != nullptr) {
            path = whole.get();
            return {};
        }
        // Only the end of the chain may be missing: a link to nothing is followed by hand.
        if (errno != ENOENT) return Error(-1);
        char target[PATH_MAX];
        ::ssize_t const length = ::readlink(path.c_str(), target, sizeof target);
        if (length < 0) return errno == ENOENT ? std::error_code() : Error(-1);
        std::size_t const folder = target[0] == '/' ? 0 : path.rfind('/') + 1;
        path.replace(folder, path.npos, target, static_cast<std::size_t>(length));
    }
    return std::make_error_code(std::errc::too_many_symbolic_link_levels);
}

std::error_code FileCalls::CheckWritable(std::string const & path)
{
    return Error(::faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS));
}

std::error_code FileCalls::OpenToRead(std::string const & path, int & file)
{
    return Open(path, O_RDONLY, 0, file);
}

std::error_code FileCalls::OpenToWrite(std::string const & path, int & file)
{
    return Open(path, O_WRONLY, 0, file);
}

std::error_code FileCalls::Create(std::string const & path, bool secret, int & file)
{
    return Open(path, O_WRONLY | O_CREAT | O_EXCL, secret ? 0600 : 0666, file);
}

std::error_code FileCalls::Close(int file) { return Error(::close(file)); }

std::error_code FileCalls::Read(int file, char * bytes, std::size_t & size)
{
    return Moved(::read(file, bytes, size), size);
}

std::error_code FileCalls::Write(int file, char const * bytes, std::size_t & size)
{
    return Moved(::write(file, bytes, size), size);
}

std::error_code FileCalls::CopyRights(int file, FileState const & from)
{
    // Whoever may not give files away may still give them to a group of his own. A change of the owner may
    // take bits of the mode away, so the mode comes last.
    [[maybe_unused]] bool const given = ::fchown(file, from.owner, from.group) == 0 ||
                                        ::fchown(file, static_cast<::uid_t>(-1), from.group) == 0;
    std::error_code const error = Error(::fchmod(file, from.mode));
    // File systems without modes refuse to set the one that all their files have.
    struct stat now {};
    return error && ::fstat(file, &now) == 0 && (now.st_mode & 07777) == from.mode ? std::error_code()
                                                                                   : error;
}

std::error_code FileCalls::Sync(int file) { return Error(::fsync(file)); }

std::error_code FileCalls::Link(std::string const & from, std::string const & to)
{
    return Error(::link(from.c_str(), to.c_str()));
}

std::error_code FileCalls::Rename(std::string const & from, std::string const & to)
{
    return Error(::rename(from.c_str(), to.c_str()));
}

std::error_code FileCalls::Remove(std::string const & path) { return Error(::unlink(path.c_str())); }

std::error_code FileCalls::SyncFolder(std::string const & path)
{
    int folder = -1;
    std::error_code error = Open(path, O_RDONLY | O_DIRECTORY, 0, folder);
    if (!error) {
        error = Error(::fsync(folder));
        ::close(folder);
    }
    // Some file systems sync no folders, and a folder may be writable but not readable.
    bool const needless = error == std::errc::invalid_argument ||
                          error == std::errc::function_not_supported || error == std::errc::not_supported ||
                          error == std::errc::permission_denied;
    return needless ? std::error_code() : error;
}

}  // namespace qrtcl::documents
