#include "streams/LCBase64.h"

#include <cstdlib>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "streams/detail/Base64Codec.h"
#include "support/Support.h"

namespace {

using namespace std::string_literals;

std::string const letters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

/// The plain rule, bit by bit: the value of each character, 0 for a foreign one.
std::string PlainDecode(std::string const & text)
{
    if (text.size() % 4 != 0) return "";
    std::string bits;
    for (char const c : text) {
        std::size_t const value = letters.find(c) == std::string::npos ? 0 : letters.find(c);
        for (int bit = 5; bit >= 0; --bit) bits += static_cast<char>(value >> bit & 1);
    }
    std::string bytes;
    for (std::size_t i = 0; i < bits.size(); i += 8) {
        unsigned byte = 0;
        for (std::size_t bit = 0; bit < 8; ++bit) byte = byte * 2 + static_cast<unsigned char>(bits[i + bit]);
        bytes += static_cast<char>(byte);
    }
    for (std::size_t fromEnd = 1; fromEnd <= 2 && fromEnd <= text.size(); ++fromEnd) {
        if (text[text.size() - fromEnd] == '=') bytes.pop_back();
    }
    return bytes;
}

std::string RandomBytes(std::size_t count)
{
    static std::minstd_rand generator(7);
    std::string bytes(count, '\0');
    for (char & c : bytes) c = static_cast<char>(generator() >> 8);
    return bytes;
}

struct Free {
    void operator()(void * block) const { std::free(block); }
};

TEST(Base64, BothWaysOfTheTextForms)
{
    struct {
        std::string bytes, text;
    } const rows[] = {
        {"", ""},          {"abc", "YWJj"},  {"\0"s, "AA=="},          {"\0\0"s, "AAA="},
        {"a\0b"s, "YQBi"}, {"\xFF", "/w=="}, {"\xFB\xEF\xBE", "++++"}, {"light work.", "bGlnaHQgd29yay4="},
    };
    for (auto const & row : rows) {
        SCOPED_TRACE(row.text);
        auto const * const data = reinterpret_cast<unsigned char const *>(row.bytes.data());
        EXPECT_EQ(LCBase64::Encode(LCString(row.bytes)), LCString(row.text));
        EXPECT_EQ(LCBase64::Encode(data, static_cast<unsigned int>(row.bytes.size())), LCString(row.text));
        EXPECT_EQ(LCBase64::Decode(LCString(row.text)).str(), row.bytes);

        LCUInt64 length = 99;
        std::unique_ptr<char, Free> const text(LCBase64::Encode(data, row.bytes.size(), length));
        EXPECT_EQ(length, row.text.size());
        EXPECT_EQ(std::string(text.get(), length + 1), row.text + '\0');
        std::unique_ptr<unsigned char, Free> const bytes(LCBase64::Decode(LCString(row.text), length));
        ASSERT_NE(bytes, nullptr);
        EXPECT_EQ(std::string(bytes.get(), bytes.get() + length), row.bytes);
    }
}

TEST(Base64, DecodingRefusesNothingButTheLength)
{
    struct {
        std::string text, bytes;
    } const rows[] = {
        {"!!!!", "\0\0\0"s},
        {"YWJj YWJ", "abc\x01\x85\x89"},
        {"YW=jYWJj", "a`#abc"},
        {"YWJ=YWJj", "ab@abc"},
        {"YQ=A", "a\0"s},
        {"Y===", "`"},
        {"====", "\0"s},
        {"====YWJj", "\0\0\0abc"s},
        {"\xFF\x80YQ", "\0\x06\x10"s},
    };
    for (auto const & row : rows) {
        EXPECT_EQ(PlainDecode(row.text), row.bytes) << row.text;
        EXPECT_EQ(LCBase64::Decode(LCString(row.text)).str(), row.bytes) << row.text;
    }
    for (std::string const text : {"Y", "YW", "YWJ", "YWJjY"}) {
        LCUInt64 length = 99;
        EXPECT_EQ(LCBase64::Decode(text.c_str(), text.size(), length), nullptr) << text;
        EXPECT_EQ(length, 99u);
        LCString out = "old";
        LCBase64::Decode(LCString(text), out);
        EXPECT_EQ(out, "");
    }
}

TEST(Base64, WithoutMemoryThereIsNoTextButALength)
{
    LCUInt64 const absurd = LCUInt64{1} << 63;
    LCUInt64 length = 0;
    EXPECT_EQ(LCBase64::Encode(nullptr, absurd, length), nullptr);
    EXPECT_EQ(length, (absurd + 2) / 3 * 4);
    LCString out = "old";
    LCBase64::Encode(nullptr, absurd, out);
    EXPECT_EQ(out, "");
}

TEST(Base64, TheTargetMayBeTheSource)
{
    LCString text(RandomBytes(1000));
    LCString const before = text;
    LCBase64::Encode(text, text);
    EXPECT_EQ(text, LCBase64::Encode(before));
    LCUInt64 bad = 0;
    LCString strict = text;
    EXPECT_TRUE(LCBase64::DecodeStrict(strict, strict, bad));
    EXPECT_EQ(strict, before);
    LCBase64::Decode(text, text);
    EXPECT_EQ(text, before);
    LCBase64::Encode(reinterpret_cast<unsigned char const *>(text.c_str()) + 10, 30, text);
    EXPECT_EQ(text, LCBase64::Encode(before.substr(10, 30)));
}

TEST(Base64, TheTablesAreThoseOfTheAlphabet)
{
    for (unsigned c = 0; c < 256; ++c) {
        std::size_t const value = letters.find(static_cast<char>(c));
        EXPECT_EQ(LCBase64::IsBase64Char(static_cast<unsigned char>(c)), value != std::string::npos) << c;
        EXPECT_EQ(LCBase64::mcaDecodingTable[c], value == std::string::npos ? 0 : static_cast<char>(value))
            << c;
    }
    EXPECT_EQ(std::string(LCBase64::mcaEncodingTable.begin(), LCBase64::mcaEncodingTable.end()), letters);
}

TEST(Base64, EveryWayGivesThePlainRulesBytesAndStaysInItsBlock)
{
    for (auto const & codec : qrtcl::base64::Codecs()) {
        for (std::size_t groups = 0; groups < 70; ++groups) {
            SCOPED_TRACE(codec.name + " "s + std::to_string(groups));
            // Blocks of exact size: a sanitizer sees what goes beyond them.
            std::string const bytes = RandomBytes(3 * groups);
            std::vector<unsigned char> const data(bytes.begin(), bytes.end());
            std::vector<char> text(4 * groups);
            codec.Encode(data.data(), groups, text.data());
            for (char const c : text) EXPECT_NE(letters.find(c), std::string::npos);

            std::vector<unsigned char> back(3 * groups);
            EXPECT_TRUE(codec.Decode(text.data(), groups, back.data()));
            EXPECT_EQ(back, data);
            EXPECT_EQ(PlainDecode(std::string(text.begin(), text.end())), bytes);

            std::string const any = RandomBytes(4 * groups);
            std::vector<char> const foreign(any.begin(), any.end());
            bool const clean = any.find_first_not_of(letters) == std::string::npos;
            EXPECT_EQ(codec.Decode(foreign.data(), groups, back.data()), clean);
            std::string expected = PlainDecode(any + "AAAA");  // an "=" at the end is for the caller
            expected.resize(3 * groups);
            EXPECT_EQ(std::string(back.begin(), back.end()), expected);
        }
    }
}

// Each of the 256 bytes at each place of two vectors.
TEST(Base64, EveryWaySeesEachForeignByteAtEachPlace)
{
    constexpr std::size_t groups = 19;
    for (auto const & codec : qrtcl::base64::Codecs()) {
        for (std::size_t place = 0; place < 4 * groups; ++place) {
            for (unsigned c = 0; c < 256; ++c) {
                std::string text(4 * groups, '/');
                text[place] = static_cast<char>(c);
                std::string bytes(3 * groups, '\0');
                auto * const to = reinterpret_cast<unsigned char *>(bytes.data());
                bool const good = codec.Decode(text.data(), groups, to);
                EXPECT_EQ(good, letters.find(text[place]) != std::string::npos)
                    << codec.name << place << ' ' << c;
                std::size_t const group = place / 4;
                EXPECT_EQ(bytes.substr(3 * group, 3),
                          PlainDecode(text.substr(4 * group, 4) + "AAAA").substr(0, 3));
            }
        }
    }
}

TEST(Base64, StrictDecodingNamesTheFirstBadByte)
{
    std::string const longText = LCBase64::Encode(LCString(RandomBytes(300))).str();
    std::string oneBad = longText;
    oneBad[250] = '-';
    struct {
        std::string text;
        LCUInt64 bad;
    } const rows[] = {
        {"", LCString::npos},
        {"YWJj", LCString::npos},
        {"YQ==", LCString::npos},
        {"YWI=", LCString::npos},
        {"YWJjY", 5},
        {"YQ=", 3},
        {"Y", 1},
        {"YW Jj", 2},
        {"Y===", 1},
        {"====", 0},
        {"YQ=A", 3},
        {"YQ==YWJj", 4},
        {"YWI=YWJj", 4},
        {"YR==", 2},
        {"YWJ=", 3},
        {"YWJj\n", 4},
        {"!!!!", 0},
        {"YQ==\n", 4},
        {longText + "YQ=A", 403},
        {oneBad, 250},
        {oneBad + "Y", 250},
        {longText + "Y", 401},
        {longText, LCString::npos},
    };
    for (auto const & row : rows) {
        LCString out = "old";
        LCUInt64 bad = 99;
        bool const good = row.bad == LCString::npos;
        EXPECT_EQ(LCBase64::DecodeStrict(LCString(row.text), out, bad), good) << row.text;
        EXPECT_EQ(bad, row.bad) << row.text;
        EXPECT_EQ(out.str(), good ? PlainDecode(row.text) : "") << row.text;
    }
}

}  // namespace
