#include "streams/LHCInputFileStream.h"

#include <filesystem>
#include <fstream>

#include "streams/detail/StandardStream.h"

LHCInputFileStream::LHCInputFileStream(LCString const & fileName)
    : movFileName(fileName),
      mopFile(std::make_unique<std::ifstream>(fileName.c_str(), std::ios::in | std::ios::binary))
{
    // Some systems open a folder like a file, and even give it a size.
    std::error_code ignored;
    if (std::filesystem::is_directory(fileName.c_str(), ignored)) mopFile->setstate(std::ios::failbit);
}

LHCInputFileStream::~LHCInputFileStream() = default;

void LHCInputFileStream::Reposition() { mopFile->seekg(0); }

LCLong LHCInputFileStream::GetSize() { return qrtcl::streams::Size(*mopFile); }

LCLong LHCInputFileStream::Read(void * buffer, LCLong count, bool rewind)
{
    return qrtcl::streams::Read(*mopFile, buffer, count, rewind);
}
