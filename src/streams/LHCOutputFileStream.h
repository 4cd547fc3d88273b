#pragma once

#include <iosfwd>
#include <memory>

#include "foundation/Export.h"
#include "foundation/LCString.h"
#include "streams/LCStream.h"

/// A file opened for writing, its bytes as they are; closed at the end of the object, and complete only then.
/// A failing write is not reported.
class QRTCL_API LHCOutputFileStream : public LCOutputFileStream {
public:
    /// Empties an existing file at once.
    explicit LHCOutputFileStream(LCString const & fileName);
    LHCOutputFileStream(LHCOutputFileStream const &) = delete;
    LHCOutputFileStream & operator=(LHCOutputFileStream const &) = delete;
    ~LHCOutputFileStream() override;

    /// Does nothing.
    void Reposition() override;
    /// 0, whatever was written and whether or not the file is open.
    LCLong GetSize() override;
    void Write(void * buffer, LCLong count) override;
    LCString GetFileName() const override { return movFileName; }

private:
    LCString movFileName;
    std::unique_ptr<std::ofstream> mopFile;
};
