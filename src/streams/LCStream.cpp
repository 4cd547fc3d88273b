#include "streams/LCStream.h"

#include <cstdlib>
#include <memory>

LCStream::~LCStream() = default;
LCInputFileStream::~LCInputFileStream() = default;
LCOutputFileStream::~LCOutputFileStream() = default;
LCMemoryStream::~LCMemoryStream() = default;

void LCStream::LoadFromStream(LCStream & source, bool rewind)
{
    struct Free {
        void operator()(void * block) const { std::free(block); }
    };
    LCLong const size = source.GetSize();
    if (size <= 0) return;
    // Zeros that the system provides cost no pass of their own.
    std::unique_ptr<void, Free> const block(std::calloc(static_cast<std::size_t>(size), 1));
    if (block == nullptr) return;
    source.Read(block.get(), size, rewind);
    Write(block.get(), size);
}

void LCStream::SaveToStream(LCStream & target, bool rewind) { target.LoadFromStream(*this, rewind); }

void LCInputFileStream::Write(void *, LCLong) {}

LCLong LCOutputFileStream::Read(void *, LCLong, bool) { return 0; }
