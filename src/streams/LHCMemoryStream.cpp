#include "streams/LHCMemoryStream.h"

#include <sstream>

#include "streams/detail/StandardStream.h"

LHCMemoryStream::LHCMemoryStream()
    : mopContent(std::make_unique<std::stringstream>(std::ios::in | std::ios::out | std::ios::binary))
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
