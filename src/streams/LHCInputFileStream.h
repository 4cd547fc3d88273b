#pragma once

#include <iosfwd>
#include <memory>

#include "foundation/Export.h"
#include "foundation/LCString.h"
#include "streams/LCStream.h"

/// A file opened for reading, its bytes as they are; closed at the end of the object.
class QRTCL_API LHCInputFileStream : public LCInputFileStream {
public:
    /// What can't be opened, and a folder, gives a failed stream.
    explicit LHCInputFileStream(LCString const & fileName);
    LHCInputFileStream(LHCInputFileStream const &) = delete;
    LHCInputFileStream & operator=(LHCInputFileStream const &) = delete;
    ~LHCInputFileStream() override;

    void Reposition() override;
    LCLong GetSize() override;
    LCLong Read(void * buffer, LCLong count, bool rewind) override;
    LCString GetFileName() const override { return movFileName; }

private:
    LCString movFileName;
    std::unique_ptr<std::ifstream> mopFile;
};
