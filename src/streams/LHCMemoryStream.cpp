#include "streams/LHCMemoryStream.h"

#include <sstream>

#include "platform/Memory.h"
#include "streams/detail/StandardStream.h"

namespace {

/// The heap's memory, large blocks in large pages: what fills them for the first time takes a third.
template <typename T> struct LargePages : std::allocator<T> {
    template <typename Other> struct rebind {
        using other = LargePages<Other>;
    };
    LargePages() = default;
    template <typename Other> LargePages(LargePages<Other> const &) noexcept {}

    T * allocate(std::size_t count)
    {
        T * const block = std::allocator<T>::allocate(count);
        qrtcl::platform::PreferLargePages(block, count * sizeof(T));
        return block;
    }
};

using StringStream = std::basic_stringstream<char, std::char_traits<char>, LargePages<char>>;

}  // namespace

LHCMemoryStream::LHCMemoryStream()
    : mopContent(std::make_unique<StringStream>(std::ios::in | std::ios::out | std::ios::binary))
{}

LHCMemoryStream::~LHCMemoryStream() = default;

void LHCMemoryStream::Reposition() { mopContent->seekg(0); }

LCLong LHCMemoryStream::GetSize() { return qrtcl::streams::Size(*mopContent); }

LCLong LHCMemoryStream::Read(void * buffer, LCLong count, bool rewind)
{
    return qrtcl::streams::Read(*mopContent, buffer, count, rewind);
}

void LHCMemoryStream::Write(void * buffer, LCLong count)
{
    mopContent->write(static_cast<char const *>(buffer), count);
}
