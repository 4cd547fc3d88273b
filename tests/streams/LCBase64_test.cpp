#include "streams/LCBase64.h"

#include <random>
#include <utility>
#include <vector>

#include "streams/detail/Base64Codec.h"
#include "support/Allocations.h"

namespace {

using namespace std::string_literals;

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

TEST(Base64, BothWaysOfTheSmallForms)
{
    std::pair<LCString, std::string> const rows[] = {
        {"", ""}, {"YWJj", "abc"}, {"AA==", "\0"s}, {"AP8=", "\0\xFF"s}, {"++++Pw==", "\xFB\xEF\xBE?"}, {"Y", ""}, {"YW", ""},
        {"!!!!", "\0\0\0"s}, {"YWJj YWJ", "abc\x01\x85\x89"}, {"YQ=A", "a\0"s}, {"YWJ=YWJj", "ab@abc"}, {"YWJjY", ""},
        {"YWJjY===", "abc`"s}, {"\xFF\x80YQ", "\0\6\x10"s}};
    LCUInt64 bad = 0;
    LCString out;
    for (auto const & [text, bytes] : rows) {
        EXPECT_EQ(LCBase64::Decode(text).str(), bytes) << text.str();
        EXPECT_EQ(LCBase64::Encode(LCString(bytes)) == text, LCBase64::DecodeStrict(text, out, bad)) << text.str();
    }
}

TEST(Base64, WithoutMemoryThereIsNoTextButALength)
{
    for (LCUInt64 const absurd : {LCUInt64{1} << 63, ~LCUInt64{0}}) {
        LCUInt64 length = 0;
        LCString out = "old";
        EXPECT_TRUE(LCBase64::Encode(nullptr, absurd, length) == nullptr && length == (absurd + 2) / 3 * 4);
        LCBase64::Encode(nullptr, absurd, out);
        EXPECT_EQ(out, "");
    }
    LCString const text(std::string(80, 'x'));
    ExpectAllOrNothing(text, [&](LCString & s) {
        LCUInt64 bad = 0;
        LCBase64::Encode(text, s);
        EXPECT_TRUE(s.size() == 108 || s.empty());
        EXPECT_TRUE(LCBase64::DecodeStrict(s, s, bad) ? s == text || s.empty() : s.empty() && bad == LCString::npos);
        LCBase64::Decode(text, s);
        EXPECT_TRUE(s.size() == 60 || s.empty());
    });
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

}  // namespace
