#pragma once

#include "foundation/Export.h"
#include "foundation/LCString.h"
#include "foundation/LCTypes.h"

/// A run of bytes with a size and a read position, to which blocks of bytes can be appended.
///
/// Sizes and counts are signed 32-bit numbers, so contents stop below 2 GiB. Nothing but construction and
/// `GetFileName`, for want of memory, throws, and nothing returns an error: a stream whose file can't be
/// opened, that was asked for more than it held, or that found no room to write is failed for the rest of its
/// life. Its size is then -1 (that of an output file is 0), and it reads and writes nothing.
class QRTCL_API LCStream {
public:
    LCStream() = default;
    LCStream(LCStream const &) = default;
    LCStream & operator=(LCStream const &) = default;
    virtual ~LCStream();

    /// Appends the whole content of `source` to this stream, through one block in memory. With `rewind` false
    /// the source must stand at 0: the whole size is asked for, and what does not come is written as zero
    /// bytes. Nothing happens for a source whose size is not above 0, or if there is no memory for the block.
    virtual void LoadFromStream(LCStream & source, bool rewind);
    /// `target.LoadFromStream(*this, rewind)`.
    virtual void SaveToStream(LCStream & target, bool rewind);

    /// The read position goes to 0.
    virtual void Reposition() = 0;
    /// In bytes, -1 from 2 GiB on; the read position stays.
    virtual LCLong GetSize() = 0;
    /// Reads up to `count` bytes, first from position 0 if `rewind`. Always returns `count`, whether or not
    /// that many were there; a read that meets the end fails the stream.
    virtual LCLong Read(void * buffer, LCLong count, bool rewind) = 0;
    /// Appends; the read position stays.
    virtual void Write(void * buffer, LCLong count) = 0;
};

/// A file that is only read.
class QRTCL_API LCInputFileStream : public LCStream {
public:
    LCInputFileStream() = default;
    /// Does not look at the name.
    explicit LCInputFileStream(LCString const &) {}
    LCInputFileStream(LCInputFileStream const &) = default;
    LCInputFileStream & operator=(LCInputFileStream const &) = default;
    ~LCInputFileStream() override;

    /// Does nothing.
    void Write(void * buffer, LCLong count) override;
    virtual LCString GetFileName() const = 0;
};

/// A file that is only written.
class QRTCL_API LCOutputFileStream : public LCStream {
public:
    LCOutputFileStream() = default;
    /// Does not look at the name.
    explicit LCOutputFileStream(LCString const &) {}
    LCOutputFileStream(LCOutputFileStream const &) = default;
    LCOutputFileStream & operator=(LCOutputFileStream const &) = default;
    ~LCOutputFileStream() override;

    /// Returns 0 and leaves the buffer alone.
    LCLong Read(void * buffer, LCLong count, bool rewind) override;
    virtual LCString GetFileName() const = 0;
};

/// A block of memory that grows.
class QRTCL_API LCMemoryStream : public LCStream {
public:
    LCMemoryStream() = default;
    LCMemoryStream(LCMemoryStream const &) = default;
    LCMemoryStream & operator=(LCMemoryStream const &) = default;
    ~LCMemoryStream() override;
};
