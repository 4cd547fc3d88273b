#pragma once

#include <iosfwd>
#include <memory>

#include "foundation/Export.h"
#include "streams/LCStream.h"

/// Bytes in memory, empty at first. Reading and writing each have their own position: what is written always
/// goes behind the end.
class QRTCL_API LHCMemoryStream : public LCMemoryStream {
public:
    LHCMemoryStream();
    LHCMemoryStream(LHCMemoryStream const &) = delete;
    LHCMemoryStream & operator=(LHCMemoryStream const &) = delete;
    ~LHCMemoryStream() override;

    void Reposition() override;
    LCLong GetSize() override;
    LCLong Read(void * buffer, LCLong count, bool rewind) override;
    void Write(void * buffer, LCLong count) override;

private:
    std::unique_ptr<std::iostream> mopContent;
};
