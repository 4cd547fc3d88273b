#include "identity/LCGUID.h"

#include <fcntl.h>
#include <set>
#include <string>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <unordered_set>

#include "platform/RandomBytes.h"
#include "support/Support.h"

namespace {

using qrtcl::platform::RandomBlock;

template <typename T> concept HasOrEqual = requires(T const & a) { a <= a; } || requires(T const & a) { a >= a; };
template <typename T> concept TakesLiteralAsFlag = requires(T const & a) { a.AsStr("braces"); };
static_assert(!HasOrEqual<LCGUID> && !TakesLiteralAsFlag<LCGUID>);
static_assert(std::is_nothrow_move_constructible_v<LCGUID> && std::is_nothrow_move_assignable_v<LCGUIDList>);

TEST(GUID, TakesOffOneBraceAtEachEnd)
{
    struct { char const * given; std::string text; } const rows[] = {
        {"", ""}, {"{}", ""}, {"{", ""}, {"}", ""}, {"{abc}", "abc"}, {"{abc", "abc"}, {"abc}", "abc"},
        {"{{abc}}", "{abc}"}, {"a{b}c", "a{b}c"}, {"}{", "}{"}, {"{{", "{"}, {"}}", "}"},
        {"{00000000-0000-0000-0000-000000000000}", "00000000-0000-0000-0000-000000000000"}};
    for (auto const & [given, text] : rows) {
        LCGUID const guid(given);
        EXPECT_EQ(guid.AsStr(false).str() + " " + guid.AsStr(true).str(), text + " {" + text + "}") << given;
        EXPECT_EQ(guid.IsValid(), !text.empty()) << given;
        EXPECT_EQ(guid == LCGUID::EmptyGUID(), text.empty()) << given;
    }
}

TEST(GUID, ComparesBytesOfTheText)
{
    ExpectTotalOrder(std::list<LCGUID>{LCString(), LCString("{A-1}"), LCString("A-10"), LCString("B"),
                                       LCString("a-1"), LCString("\xE4")});
    EXPECT_EQ((std::unordered_set<LCGUID>{LCGUID("{A}"), LCGUID("A"), LCGUID("a")}.size()), 2u);
}

TEST(GUID, ANewOneIsRandomAndCanonical)
{
    std::set<char> digits[36];
    for (int i = 0; i < 2000; ++i) {
        std::string const text = LCGUID().AsStr(false).str();
        ASSERT_EQ(text.size(), 36u);
        for (std::size_t at = 0; at < 36; ++at) digits[at].insert(text[at]);
    }
    for (std::size_t at = 0; at < 36; ++at) {
        bool const isDash = at == 8 || at == 13 || at == 18 || at == 23;
        EXPECT_EQ(std::string(digits[at].begin(), digits[at].end()),
                  isDash ? "-" : at == 14 ? "4" : at == 19 ? "89AB" : "0123456789ABCDEF") << at;
    }
}

TEST(GUID, WritesTheBytesInOrderAndIsEmptyWithoutThem)
{
    qrtcl::platform::ReplaceRandomBytes([](RandomBlock & block) noexcept {
        for (unsigned i = 0; i < block.size(); ++i) block[i] = static_cast<unsigned char>(0xF0 - 0x0F * i);
        return true;
    });
    EXPECT_EQ(LCGUID().AsStr(true), "{F0E1D2C3-B4A5-4687-B869-5A4B3C2D1E0F}");
    qrtcl::platform::ReplaceRandomBytes([](RandomBlock &) noexcept { return false; });
    EXPECT_EQ(LCGUID(), LCGUID::EmptyGUID());
    qrtcl::platform::ReplaceRandomBytes(nullptr);
}

// All write into one file; who fails or is missing leaves it too short.
TEST(GUID, NeitherThreadsNorForkedChildrenRepeatOne)
{
    constexpr std::size_t perMember = 300;
    TemporaryFolder const folder;
    int const file = ::open(folder.Write("drawn", "").c_str(), O_WRONLY | O_APPEND);
    auto const draw = [&] {
        std::string texts;
        for (std::size_t i = 0; i < perMember; ++i) texts += LCGUID().AsStr(false).str();
        return ::write(file, texts.data(), texts.size()) > 0;
    };
    std::string const before = LCGUID().AsStr(false).str();  // what was fetched ahead is there in the children
    if (::fork() == 0) {
        std::thread(draw).join();  // first: the thread that forked still holds what was fetched ahead
        bool const drawn = draw();
        if (::fork() == 0) ::_exit(draw() ? 0 : 1);
        ::_exit(drawn && ::wait(nullptr) > 0 ? 0 : 1);
    }
    ::wait(nullptr);
    draw();
    std::thread(draw).join();
    ::close(file);
    std::string const all = folder.Read("drawn");
    ASSERT_EQ(all.size(), 5 * 36 * perMember);
    std::set<std::string> seen{before};
    for (std::size_t at = 0; at < all.size(); at += 36) {
        EXPECT_TRUE(seen.insert(all.substr(at, 36)).second) << "member " << at / 36 / perMember;
    }
}

}  // namespace
