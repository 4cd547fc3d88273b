#include "documents/detail/FileAccess.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cstdint>
#include <utility>

namespace qrtcl::documents {

namespace {

void Check(std::error_code error, char const * what)
{
    if (error) throw Failure{std::string(what) + ": " + error.message()};
}

/// Calls until it is not interrupted.
template <typename Call> std::error_code Repeat(Call call)
{
    std::error_code error;
    do error = call();
    while (error == std::errc::interrupted);
    return error;
}

/// The same for a call without which nothing goes on.
template <typename Call> void Do(Call call, char const * otherwise) { Check(Repeat(call), otherwise); }

std::string FolderOf(std::string const & path)
{
    std::size_t const slash = path.rfind('/');
    if (slash == path.npos) return ".";
    return path.substr(0, std::max<std::size_t>(slash, 1));
}

}  // namespace

FileSource::FileSource(std::string const & path) : moCalls(FileCalls::Get())
{
    FileState state;
    Do([&] { return moCalls.Look(path, state); }, "can't be read");
    if (state.kind == FileState::Kind::Folder) throw Failure{"is a folder"};
    mivSize = state.size;
    Do([&] { return moCalls.OpenToRead(path, mivFile); }, "can't be opened");
}

FileSource::~FileSource()
{
    if (mivFile >= 0) moCalls.Close(mivFile);
}

std::string_view FileSource::Next()
{
    std::size_t filled = 0;
    while (filled < room) {
        std::size_t count = 0;
        auto const read = [&] {
            count = room - filled;
            return moCalls.Read(mivFile, mopBuffer.get() + filled, count);
        };
        Do(read, "can't be read");
        if (count == 0) break;
        filled += count;
    }
    return {mopBuffer.get(), filled};
}

FileReplacement::FileReplacement(std::string const & path) : moCalls(FileCalls::Get()), movPath(path)
{
    Do([&] { return moCalls.Look(movPath, movOld); }, "can't be written");
    switch (movOld.kind) {
    case FileState::Kind::Folder: throw Failure{"is a folder"};
    case FileState::Kind::Other:
        Do([&] { return moCalls.OpenToWrite(movPath, mivFile); }, "can't be opened");
        return;
    case FileState::Kind::File: Do([&] { return moCalls.CheckWritable(movPath); }, "can't be written"); break;
    case FileState::Kind::Nothing: break;
    }
    Do([&] { return moCalls.Resolve(movPath); }, "can't be written");
    CreateTemporary();
}

FileReplacement::~FileReplacement()
{
    Close();
    if (!movTemporary.empty()) Remove(movTemporary);
}

void FileReplacement::CreateTemporary()
{
    // Other savers may be at work, so the name is tried until it is a new one.
    constexpr std::size_t longestEnd = 32;
    constexpr std::size_t longestName = 255;
    std::size_t const nameBegin = movPath.rfind('/') + 1;
    std::string const base = movPath.substr(0, nameBegin + longestName - longestEnd) + ".tmp-";
    auto number = static_cast<std::uint64_t>(std::chrono::steady_clock::now().time_since_epoch().count());
    for (;; ++number) {
        char digits[16];
        char * const end = std::to_chars(digits, digits + sizeof digits, number, 16).ptr;
        std::string name = base + std::string(digits, end);
        std::error_code const error =
            Repeat([&] { return moCalls.Create(name, movOld.kind == FileState::Kind::File, mivFile); });
        if (error == std::errc::file_exists) continue;
        Check(error, "no new file can be created in its folder");
        movTemporary = std::move(name);
        return;
    }
}

void FileReplacement::Write(std::string_view bytes)
{
    while (!bytes.empty()) {
        std::size_t count = 0;
        auto const write = [&] {
            count = bytes.size();
            return moCalls.Write(mivFile, bytes.data(), count);
        };
        Do(write, "can't be written");
        if (count == 0) Check(std::make_error_code(std::errc::io_error), "can't be written");
        bytes.remove_prefix(count);
    }
}

void FileReplacement::Commit()
{
    bool const straight = movTemporary.empty();
    if (!straight) {
        if (movOld.kind == FileState::Kind::File)
            Do([&] { return moCalls.CopyRights(mivFile, movOld); }, "its mode can't be kept");
        Do([&] { return moCalls.Sync(mivFile); }, "can't be written");
    }
    // An interrupted close has closed, and is not repeated.
    std::error_code const error = moCalls.Close(std::exchange(mivFile, -1));
    if (error != std::errc::interrupted) Check(error, "can't be written");
    if (!straight) Install();
}

/// A second name keeps the old file until the folder is on the disk, so that it can come back.
void FileReplacement::Install()
{
    std::string const spare = movTemporary + "-old";
    std::string const folder = FolderOf(movPath);
    bool const kept =
        movOld.kind == FileState::Kind::File && !Repeat([&] { return moCalls.Link(movPath, spare); });
    std::error_code error = Repeat([&] { return moCalls.Rename(movTemporary, movPath); });
    if (!error) {
        movTemporary.clear();
        error = Repeat([&] { return moCalls.SyncFolder(folder); });
        if (error && kept && !Repeat([&] { return moCalls.Rename(spare, movPath); }))
            Check(error, "can't be written");
        if (error && movOld.kind == FileState::Kind::Nothing) Remove(movPath);
    }
    if (kept) Remove(spare);
    Check(error, "can't be written");
}

void FileReplacement::Remove(std::string const & path) noexcept
{
    Repeat([&] { return moCalls.Remove(path); });
}

void FileReplacement::Close() noexcept
{
    if (mivFile >= 0) moCalls.Close(std::exchange(mivFile, -1));
}

}  // namespace qrtcl::documents
