#include "streams/LCBase64.h"

#include <cstdlib>
#include <memory>
#include <random>
#include <utility>
#include <vector>

#include "streams/detail/Base64Codec.h"
#include "support/Support.h"

namespace {

using namespace std::string_literals;
using Free = void (*)(void *);
using Rows = std::pair<std::string, std::string> const[];

std::string const letters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

/// The plain rule of decoding whole groups.
std::vector<unsigned char> PlainDecode(std::vector<char> const & text)
{
    std::vector<unsigned char> bytes;
    std::size_t bits = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        std::size_t const value = letters.find(text[i]);
        bits = bits << 6 | (value == std::string::npos ? 0 : value);
        for (int shift = 16; i % 4 == 3 && shift >= 0; shift -= 8) bytes.push_back(bits >> shift & 0xFF);
    }
    return bytes;
}

TEST(Base64, BothWaysOfAllForms)
{
    for (auto const & [bytes, text] : Rows{
             {"", ""}, {"abc", "YWJj"}, {"\0"s, "AA=="}, {"\0\xFF"s, "AP8="}, {"\xFB\xEF\xBE?", "++++Pw=="}}) {
        auto const * const data = reinterpret_cast<unsigned char const *>(bytes.data());
        EXPECT_EQ(LCBase64::Encode(LCString(bytes)), LCString(text));
        EXPECT_EQ(LCBase64::Encode(data, static_cast<unsigned int>(bytes.size())), LCString(text));
        EXPECT_EQ(LCBase64::Decode(LCString(text)).str(), bytes);

        LCUInt64 length = 99;
        std::unique_ptr<char, Free> const encoded(LCBase64::Encode(data, bytes.size(), length), std::free);
        EXPECT_EQ(std::string(encoded.get(), length + 1), text + '\0');
        std::unique_ptr<unsigned char, Free> const decoded(LCBase64::Decode(text, length), std::free);
        EXPECT_EQ(std::string(decoded.get(), decoded.get() + length), bytes);
        EXPECT_NE(decoded, nullptr);
    }
}

TEST(Base64, DecodingRefusesNothingButTheLength)
{
    for (auto const & [text, bytes] : Rows{
             {"!!!!", "\0\0\0"s}, {"YWJj YWJ", "abc\x01\x85\x89"}, {"YQ=A", "a\0"s}, {"YWJ=YWJj", "ab@abc"},
             {"YWJjY===", "abc`"s}, {"\xFF\x80YQ", "\0\6\x10"s}})
        EXPECT_EQ(LCBase64::Decode(LCString(text)).str(), bytes) << text;
    for (LCString const text : {"Y", "YW", "YWJ", "YWJjY"}) {
        LCUInt64 length = 99;
        EXPECT_TRUE(LCBase64::Decode(text, length) == nullptr && LCBase64::Decode(text) == "") << text.str();
        EXPECT_EQ(length, 99u);
    }
}

TEST(Base64, WithoutMemoryThereIsNoTextButALength)
{
    for (LCUInt64 const absurd : {LCUInt64{1} << 63, ~LCUInt64{0}}) {
        LCUInt64 length = 0;
        LCString out = "old";
        EXPECT_EQ(LCBase64::Encode(nullptr, absurd, length), nullptr);
        EXPECT_EQ(length, (absurd + 2) / 3 * 4);
        LCBase64::Encode(nullptr, absurd, out);
        EXPECT_EQ(out, "");
    }
}

TEST(Base64, TheTargetMayBeTheSource)
{
    LCString const before(std::string(1000, 'x'));
    LCString text = before;
    LCUInt64 bad = 0;
    LCBase64::Encode(text, text);
    EXPECT_TRUE(LCBase64::DecodeStrict(text, text, bad));
    EXPECT_EQ(text, before);
    LCBase64::Encode(reinterpret_cast<unsigned char const *>(text.c_str()) + 10, 900, text);
    LCBase64::Decode(text, text);
    EXPECT_EQ(text, before.Left(900));
}

// Every way this processor has, each of the 256 bytes at each place, and blocks of exact size: a sanitizer
// sees what goes beyond them.
TEST(Base64, EveryWayGivesThePlainRulesBytes)
{
    std::minstd_rand random(7);
    for (auto const & codec : qrtcl::base64::Codecs()) {
        for (unsigned round = 0; round < 256 * 44 + 69; ++round) {
            std::size_t const groups = round < 256 * 44 ? 11 : round % 69 + 1;
            std::vector<unsigned char> data(3 * groups);
            for (unsigned char & byte : data) byte = static_cast<unsigned char>(random() >> 8);
            std::vector<char> text(4 * groups);
            codec.Encode(data.data(), groups, text.data());
            ASSERT_EQ(PlainDecode(text), data) << codec.name;

            unsigned char const any = static_cast<unsigned char>(round % 256);
            bool const good = letters.find(static_cast<char>(any)) != std::string::npos;
            EXPECT_EQ(LCBase64::IsBase64Char(any), good) << round;
            text[round / 256 % text.size()] = static_cast<char>(any);
            ASSERT_EQ(codec.Decode(text.data(), groups, data.data()), good) << codec.name << ' ' << round;
            ASSERT_EQ(PlainDecode(text), data) << codec.name;
        }
        EXPECT_TRUE(codec.Decode(nullptr, 0, nullptr));
    }
}

TEST(Base64, StrictDecodingNamesTheFirstBadByte)
{
    std::string const many(400, '/');
    std::pair<std::string, LCUInt64> const rows[] = {
        {"", LCString::npos}, {"YWJj", LCString::npos}, {"YQ==", LCString::npos}, {"YWI=", LCString::npos},
        {many, LCString::npos}, {many + "YQ=A", 403}, {many.substr(0, 250) + '-' + many, 250}, {many + "Y", 401},
        {"YQ=", 3}, {"YQ", 2}, {"YW Jj", 2}, {"Y===", 1}, {"====", 0}, {"YQ==YWJj", 4}, {"YWI=YWJj", 4},
        {"YI==", 2}, {"YWK=", 3}, {"YWJj\n", 4}};
    for (auto const & [text, position] : rows) {
        bool const good = position == LCString::npos;
        LCString out = "old";
        LCUInt64 bad = 99;
        EXPECT_EQ(LCBase64::DecodeStrict(LCString(text), out, bad), good) << text;
        EXPECT_EQ(std::pair(bad, out), std::pair(position, good ? LCBase64::Decode(LCString(text)) : "")) << text;
    }
}

}  // namespace
