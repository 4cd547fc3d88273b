#include "streams/LHCOutputFileStream.h"

#include <fstream>

LHCOutputFileStream::LHCOutputFileStream(LCString const & fileName)
    : movFileName(fileName), mopFile(std::make_unique<std::ofstream>(
                                 fileName.c_str(), std::ios::out | std::ios::binary | std::ios::trunc))
{}

LHCOutputFileStream::~LHCOutputFileStream() = default;

void LHCOutputFileStream::Reposition() {}

LCLong LHCOutputFileStream::GetSize() { return 0; }

void LHCOutputFileStream::Write(void * buffer, LCLong count)
{
    mopFile->write(static_cast<char const *>(buffer), count);
}
