#include "streams/LCStream.h"

#include <filesystem>
#include <memory>
#include <type_traits>

#include "streams/LHCInputFileStream.h"
#include "streams/LHCMemoryStream.h"
#include "streams/LHCOutputFileStream.h"
#include "support/Support.h"

namespace {

static_assert(!std::is_copy_constructible_v<LHCMemoryStream> && !std::is_copy_assignable_v<LHCMemoryStream>);
static_assert(!std::is_copy_constructible_v<LHCInputFileStream> &&
              !std::is_copy_assignable_v<LHCInputFileStream>);
static_assert(!std::is_copy_constructible_v<LHCOutputFileStream>);
static_assert(!std::is_convertible_v<LCString, LHCInputFileStream>);

void Put(LCStream & stream, std::string bytes)
{
    stream.Write(bytes.data(), static_cast<LCLong>(bytes.size()));
}

/// What a read of `count` bytes changes in a buffer of dots; the dots that stay are part of it.
std::string Get(LCStream & stream, LCLong count, bool rewind)
{
    std::string buffer(static_cast<std::size_t>(count), '.');
    EXPECT_EQ(stream.Read(buffer.data(), count, rewind), count);
    return buffer;
}

void ExpectFailed(LCStream & stream)
{
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(stream.GetSize(), -1);
        EXPECT_EQ(Get(stream, 3, true), "...");
        stream.Reposition();
    }
    LHCMemoryStream target;
    target.LoadFromStream(stream, true);
    EXPECT_EQ(target.GetSize(), 0);
}

/// The same ten bytes in a file and in memory.
std::unique_ptr<LCStream> TenBytes(bool inFile, TemporaryFolder const & folder)
{
    if (inFile) return std::make_unique<LHCInputFileStream>(folder.Write("ten", "0123456789"));
    auto memory = std::make_unique<LHCMemoryStream>();
    Put(*memory, "0123456789");
    return memory;
}

class ReadableStream : public testing::TestWithParam<bool> {
protected:
    TemporaryFolder movFolder;
    std::unique_ptr<LCStream> movStream = TenBytes(GetParam(), movFolder);
};

TEST_P(ReadableStream, ReadsOnFromItsPositionWhichTheSizeLeavesAlone)
{
    LCStream & stream = *movStream;
    EXPECT_EQ(Get(stream, 4, true), "0123");
    EXPECT_EQ(stream.GetSize(), 10);
    EXPECT_EQ(Get(stream, 4, false), "4567");
    EXPECT_EQ(Get(stream, 0, false), "");
    EXPECT_EQ(Get(stream, 2, false), "89");
    EXPECT_EQ(stream.GetSize(), 10);  // up to the end is not beyond it
    stream.Reposition();
    EXPECT_EQ(Get(stream, 1, false), "0");
    EXPECT_EQ(Get(stream, 10, true), "0123456789");
}

TEST_P(ReadableStream, ReadingBeyondTheEndFailsItForGood)
{
    EXPECT_EQ(Get(*movStream, 8, false), "01234567");
    EXPECT_EQ(Get(*movStream, 4, false), "89..");
    ExpectFailed(*movStream);
    Put(*movStream, "more");
    ExpectFailed(*movStream);
}

TEST_P(ReadableStream, TransfersItsWholeContentAfterEarlierReads)
{
    Get(*movStream, 7, false);
    {
        LHCOutputFileStream file(movFolder.Path("copy"));
        Put(file, "<");
        movStream->SaveToStream(file, true);
        Put(file, ">");
    }
    EXPECT_EQ(movFolder.Read("copy"), "<0123456789>");
    LHCMemoryStream memory;
    movStream->Reposition();
    memory.LoadFromStream(*movStream, false);
    EXPECT_EQ(Get(memory, 10, false), "0123456789");
}

// A source that does not stand at 0 breaks the rule: the rest comes, and zeros for what did not.
TEST_P(ReadableStream, TransferOfAShortReadWritesZerosAndNoOtherMemory)
{
    Get(*movStream, 7, false);
    LHCMemoryStream target;
    target.LoadFromStream(*movStream, false);
    EXPECT_EQ(Get(target, 10, true), std::string("789\0\0\0\0\0\0\0", 10));
    ExpectFailed(*movStream);
}

INSTANTIATE_TEST_SUITE_P(Streams, ReadableStream, testing::Bool(),
                         [](auto const & row) { return row.param ? "File" : "Memory"; });

TEST(MemoryStream, WritesBehindTheEndWhereverItWasRead)
{
    LHCMemoryStream stream;
    EXPECT_EQ(stream.GetSize(), 0);
    stream.Reposition();
    Put(stream, "abc");
    EXPECT_EQ(Get(stream, 2, true), "ab");
    Put(stream, std::string("d\0\n", 3));
    EXPECT_EQ(Get(stream, 2, false), "cd");
    EXPECT_EQ(stream.GetSize(), 6);
    stream.Reposition();
    Put(stream, "e");
    stream.LoadFromStream(stream, true);
    EXPECT_EQ(Get(stream, 14, true), std::string("abcd\0\neabcd\0\ne", 14));
}

TEST(MemoryStream, TransfersMoreThanOneLargePage)
{
    std::string const piece(1 << 20, 'x');
    LHCMemoryStream source;
    for (int i = 0; i < 33; ++i) Put(source, piece);
    LHCMemoryStream target;
    source.SaveToStream(target, true);
    ASSERT_EQ(target.GetSize(), 33 << 20);
    EXPECT_EQ(Get(target, 33 << 20, true), std::string(33 << 20, 'x'));
}

TEST(FileStream, WhatCannotBeOpenedIsAFailedStreamWithAName)
{
    TemporaryFolder const folder;
    for (std::string const name : {"missing", "missing/file", "."}) {
        SCOPED_TRACE(name);
        LHCInputFileStream input(folder.Path(name));
        EXPECT_EQ(input.GetFileName(), folder.Path(name));
        ExpectFailed(input);
    }
    LHCOutputFileStream output(folder.Path("missing/file"));
    EXPECT_EQ(output.GetFileName(), folder.Path("missing/file"));
    Put(output, "lost");
    EXPECT_EQ(output.GetSize(), 0);
}

TEST(FileStream, AFileOfTwoGigabytesHasNoSizeButReads)
{
    TemporaryFolder const folder;
    LCString const path = folder.Write("large", "start");
    struct {
        std::uintmax_t bytes;
        LCLong size;
    } const rows[] = {{0x7FFFFFFF, 0x7FFFFFFF}, {0x80000000, -1}, {0x180000000, -1}};
    for (auto const & row : rows) {
        std::filesystem::resize_file(path.str(), row.bytes);  // sparse: takes no room
        LHCInputFileStream stream(path);
        EXPECT_EQ(stream.GetSize(), row.size);
        EXPECT_EQ(Get(stream, 5, false), "start");
    }
}

TEST(FileStream, WritingEmptiesTheFileAtOnceAndAppends)
{
    TemporaryFolder const folder;
    LCString const path = folder.Write("file", "old content");
    {
        LHCOutputFileStream stream(path);
        EXPECT_EQ(folder.Read("file"), "");
        Put(stream, "a\r\n");
        stream.Reposition();
        Put(stream, std::string("\0b", 2));
        EXPECT_EQ(stream.GetSize(), 0);
        EXPECT_EQ(stream.GetFileName(), path);
        LHCMemoryStream target;
        stream.SaveToStream(target, true);
        EXPECT_EQ(target.GetSize(), 0);
    }
    EXPECT_EQ(folder.Read("file"), std::string("a\r\n\0b", 5));
}

TEST(FileStream, TheOppositeDirectionDoesNothing)
{
    TemporaryFolder const folder;
    LCString const path = folder.Write("file", "kept");
    LHCInputFileStream input(path);
    LHCMemoryStream memory;
    Put(memory, "xyz");
    input.LoadFromStream(memory, true);
    Put(input, "xyz");
    EXPECT_EQ(Get(input, 4, true), "kept");

    LHCOutputFileStream output(folder.Path("other"));
    std::string buffer = "...";
    EXPECT_EQ(output.Read(buffer.data(), 3, true), 0);
    EXPECT_EQ(buffer, "...");
}

}  // namespace
