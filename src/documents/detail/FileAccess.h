#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

#include "documents/platform/FileCalls.h"

// Whole files, safely. What fails is thrown as a Failure.
namespace qrtcl::documents {

/// Why a document can't be loaded or saved, as the user reads it.
struct Failure {
    std::string text;
};

/// Where the bytes of a document go.
class Sink {
public:
    virtual void Write(std::string_view bytes) = 0;

protected:
    ~Sink() = default;
};

/// Where the bytes of a document come from.
class Source {
public:
    /// The next piece, of two bytes or more but for the last one; empty at the end. It stays until the next
    /// call.
    virtual std::string_view Next() = 0;

protected:
    ~Source() = default;
};

class FileSource final : public Source {
public:
    explicit FileSource(std::string const & path);
    FileSource(FileSource const &) = delete;
    FileSource & operator=(FileSource const &) = delete;
    ~FileSource();

    std::string_view Next() override;
    /// In bytes; 0 of what has no size.
    std::size_t GetSize() const { return mivSize; }

private:
    static constexpr std::size_t room = 65536;

    FileCalls & moCalls;
    std::size_t mivSize = 0;
    int mivFile = -1;
    std::unique_ptr<char[]> mopBuffer = std::make_unique_for_overwrite<char[]>(room);
};

/// A file that is replaced as a whole: until `Commit` the old one stays as it is. Links are followed, and
/// what is there and no regular file is written straight into. A failed or forgotten one leaves nothing
/// behind.
class FileReplacement final : public Sink {
public:
    explicit FileReplacement(std::string const & path);
    FileReplacement(FileReplacement const &) = delete;
    FileReplacement & operator=(FileReplacement const &) = delete;
    ~FileReplacement();

    void Write(std::string_view bytes) override;
    /// Returns when the new file is on the disk. If it throws, the old file is there.
    void Commit();

private:
    void CreateTemporary();
    void Install();
    void Remove(std::string const & path) noexcept;
    void Close() noexcept;

    FileCalls & moCalls;
    std::string movPath;       ///< where the file stands in the end
    std::string movTemporary;  ///< what is to become it; empty when written straight
    FileState movOld;
    int mivFile = -1;
};

}  // namespace qrtcl::documents
