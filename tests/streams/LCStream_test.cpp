#include "streams/LCStream.h"

#include <type_traits>

#include "streams/LHCInputFileStream.h"
#include "streams/LHCMemoryStream.h"
#include "streams/LHCOutputFileStream.h"
#include "support/Allocations.h"

namespace {

static_assert(!std::is_copy_constructible_v<LHCMemoryStream> && !std::is_copy_assignable_v<LHCMemoryStream>);

void Put(LCStream & stream, std::string bytes)
{
    stream.Write(bytes.data(), static_cast<LCLong>(bytes.size()));
}

/// What a read of `count` bytes makes of a buffer full of dots.
std::string Get(LCStream & stream, LCLong count, bool rewind)
{
    std::string buffer(static_cast<std::size_t>(count), '.');
    EXPECT_EQ(stream.Read(buffer.data(), count, rewind), count);
    return buffer;
}

void ExpectFailed(LCStream & stream)
{
    LHCMemoryStream target;
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ((std::pair{stream.GetSize(), Get(stream, 3, true)}), std::pair(-1, std::string("...")));
        stream.SaveToStream(target, true);
        stream.Reposition();
        Put(stream, "more");
    }
    EXPECT_EQ(target.GetSize(), 0);
}

TEST(Stream, KeepsItsPositionAndFailsForGoodBehindTheEnd)
{
    TemporaryFolder const folder;
    LHCMemoryStream memory;
    Put(memory, "0123456789");
    LHCInputFileStream file(folder.Write("ten", "0123456789"));
    for (LCStream * const stream : std::initializer_list<LCStream *>{&memory, &file}) {
        EXPECT_EQ(Get(*stream, 4, true), "0123");
        EXPECT_EQ(stream->GetSize(), 10);
        EXPECT_EQ(Get(*stream, 6, false), "456789");
        EXPECT_EQ(stream->GetSize(), 10);  // up to the end is not beyond it
        {
            LHCOutputFileStream copy(folder.Path("copy"));
            stream->SaveToStream(copy, true);
            stream->Reposition();
            EXPECT_EQ(Get(*stream, 7, false), "0123456");
            copy.LoadFromStream(*stream, false);
        }
        // A source that does not stand at 0 breaks the rule: the rest comes, and zeros for what did not.
        EXPECT_EQ(folder.Read("copy"), std::string("0123456789789\0\0\0\0\0\0\0", 20));
        ExpectFailed(*stream);
    }
}

TEST(Stream, MemoryWritesBehindTheEndWhereverItWasReadAndMoreThanOneLargePage)
{
    LHCMemoryStream stream, target;
    stream.Reposition();
    Put(stream, "abc");
    EXPECT_EQ(Get(stream, 2, true), "ab");
    Put(stream, std::string("d\0\n", 3));
    EXPECT_EQ(Get(stream, 2, false), "cd");
    stream.LoadFromStream(stream, true);
    EXPECT_EQ(Get(stream, 12, true), std::string("abcd\0\nabcd\0\n", 12));
    Put(stream, std::string(33 << 20, 'x'));
    stream.SaveToStream(target, true);
    EXPECT_TRUE(Get(target, target.GetSize(), true) == Get(stream, 12 + (33 << 20), true));
}

TEST(Stream, WithoutMemoryNothingLeaksAndAStreamIsWholeOrFailed)
{
    TemporaryFolder const folder;
    LCString const from = folder.Write("a file with a long name", "0123456789"), to = folder.Path("a copy with a long name");
    std::string const long1(3000, 'x');
    ExpectAllOrNothing(0, [&](int) {
        LHCInputFileStream input(from);
        LHCMemoryStream memory;
        memory.LoadFromStream(input, true);
        LCLong const size = memory.GetSize();
        EXPECT_TRUE(size == 10 || size == 0 || size == -1) << size;
        memory.Write(const_cast<char *>(long1.data()), 3000);
        EXPECT_TRUE(memory.GetSize() == -1 || memory.GetSize() == size + 3000) << memory.GetSize();
        LHCOutputFileStream output(to);
        memory.SaveToStream(output, true);
        EXPECT_TRUE(output.GetFileName() == to);
    });
    EXPECT_EQ(folder.Read("a copy with a long name"), "0123456789" + long1);
}

TEST(FileStream, WhatCannotBeOpenedIsAFailedStreamWithAName)
{
    TemporaryFolder const folder;
    for (LCString const & path : {folder.Path("missing"), folder.Path("missing/file"), folder.Path(".")}) {
        LHCInputFileStream input(path);
        ExpectFailed(input);
        LHCOutputFileStream output(path + "/file");
        Put(output, "lost");
        EXPECT_EQ(input.GetFileName() + output.GetFileName(), path + path + "/file");
    }
}

TEST(FileStream, AFileOfTwoGigabytesHasNoSizeButReads)
{
    TemporaryFolder const folder;
    LCString const path = folder.Write("large", "start");
    for (std::uintmax_t const bytes : {0x7FFFFFFFu, 0x80000000u}) {
        std::filesystem::resize_file(path.str(), bytes);  // sparse: takes no room
        LHCInputFileStream stream(path);
        EXPECT_EQ(stream.GetSize(), bytes == 0x7FFFFFFF ? 0x7FFFFFFF : -1);
        EXPECT_EQ(Get(stream, 5, false), "start");
    }
}

TEST(FileStream, EachDoesItsOwnDirectionOnly)
{
    TemporaryFolder const folder;
    LHCInputFileStream input(folder.Write("input", "kept"));
    input.LoadFromStream(input, true);
    EXPECT_EQ(Get(input, 4, true), "kept");
    auto output = std::make_unique<LHCOutputFileStream>(folder.Write("output", "old content"));
    EXPECT_EQ(folder.Read("output"), "");  // emptied at once
    Put(*output, "a\r\n");
    output->Reposition();
    Put(*output, "b");
    char buffer = '.';
    EXPECT_EQ((std::tuple{output->Read(&buffer, 1, true), output->GetSize(), buffer}), std::tuple(0, 0, '.'));
    output.reset();
    EXPECT_EQ(folder.Read("output"), "a\r\nb");
}

}  // namespace
