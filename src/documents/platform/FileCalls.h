#pragma once

#include <cstddef>
#include <string>
#include <system_error>

#include "documents/Export.h"

namespace qrtcl::documents {

/// What stands at a path, links followed.
struct FileState {
    enum class Kind { Nothing, File, Folder, Other };

    Kind kind = Kind::Nothing;
    std::size_t size = 0;
    unsigned mode = 0;
    unsigned owner = 0;
    unsigned group = 0;
};

/// The calls of the system that loading and saving are made of, one call each: they may be interrupted, and
/// read and write may do less than asked. Paths are bytes and end at their first zero. A test puts a class in
/// their place that derives from this one.
class QRTCL_DOCUMENTS_API FileCalls {
public:
    /// Those in use.
    static FileCalls & Get() noexcept;
    /// Null puts the system's back.
    static void Replace(FileCalls * calls) noexcept;

    constexpr FileCalls() = default;
    FileCalls(FileCalls const &) = delete;
    FileCalls & operator=(FileCalls const &) = delete;

    virtual std::error_code Look(std::string const & path, FileState & state);
    /// The path without links. What the last one points to may be missing.
    virtual std::error_code Resolve(std::string & path);
    /// Whether this process may write the file that is there.
    virtual std::error_code CheckWritable(std::string const & path);

    virtual std::error_code OpenToRead(std::string const & path, int & file);
    virtual std::error_code OpenToWrite(std::string const & path, int & file);
    /// Makes a new file, which only its owner may use if it is `secret`.
    virtual std::error_code Create(std::string const & path, bool secret, int & file);
    virtual std::error_code Close(int file);
    /// `size` 0 is the end.
    virtual std::error_code Read(int file, char * bytes, std::size_t & size);
    virtual std::error_code Write(int file, char const * bytes, std::size_t & size);
    /// Gives the file the mode of another one, and its owner and group as far as this process may.
    virtual std::error_code CopyRights(int file, FileState const & from);
    virtual std::error_code Sync(int file);

    /// A second name for a file.
    virtual std::error_code Link(std::string const & from, std::string const & to);
    virtual std::error_code Rename(std::string const & from, std::string const & to);
    virtual std::error_code Remove(std::string const & path);
    /// No error on systems where a folder need not or can't be synced.
    virtual std::error_code SyncFolder(std::string const & path);

protected:
    ~FileCalls() = default;
};

}  // namespace qrtcl::documents
