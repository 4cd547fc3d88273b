#include "identity/LCGUID.h"

#include <fcntl.h>
#include <set>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <unordered_set>

#include "platform/RandomBytes.h"

namespace {

using qrtcl::platform::RandomBlock;

template <typename T> concept TakesLiteralAsFlag = requires(T const & a) { a.AsStr("braces"); };
static_assert(!TakesLiteralAsFlag<LCGUID>);
static_assert(std::is_nothrow_move_constructible_v<LCGUID> && std::is_nothrow_move_assignable_v<LCGUIDList>);

TEST(GUID, ComparesBytesOfTheText)
{
    ExpectTotalOrder(std::list<LCGUID>{LCString(), LCString("{A-1}"), LCString("A-10"), LCString("B"),
                                       LCString("a-1"), LCString("\xE4")});
    EXPECT_EQ((std::unordered_set<LCGUID>{LCGUID("{A}"), LCGUID("A"), LCGUID("a")}.size()), 2u);
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

// All write into one file; who is missing or repeats another leaves too few.
TEST(GUID, IsCanonicalAndRandomAndNeitherThreadsNorForkedChildrenRepeatOne)
{
    TemporaryFolder const folder;
    int const file = ::open(folder.Write("drawn", "").c_str(), O_WRONLY | O_APPEND);
    auto const draw = [file] {
        std::string texts;
        for (int i = 0; i < 300; ++i) texts += LCGUID().AsStr(false).str();
        return ::write(file, texts.data(), texts.size());
    };
    draw();  // and fetches ahead what the children have then
    if (::fork() == 0) {
        std::thread(draw).join();  // first: the thread that forked still holds what was fetched ahead
        draw();
        if (::fork() == 0) ::_exit(draw() < 0);
        ::wait(nullptr);
        ::_exit(0);
    }
    ::wait(nullptr);
    draw();
    std::thread(draw).join();
    ::close(file);
    std::string const all = folder.Read("drawn");
    std::set<std::string> seen;
    std::set<char> digits[36];
    for (std::size_t at = 0; at < all.size(); ++at) digits[at % 36].insert(all[at]);
    for (std::size_t at = 0; at < all.size(); at += 36) seen.insert(all.substr(at, 36));
    EXPECT_EQ(seen.size(), 6u * 300);
    std::string const form = "FFFFFFFF-FFFF-4FFF-BFFF-FFFFFFFFFFFF";
    for (std::size_t at = 0; at < form.size(); ++at)
        EXPECT_EQ(std::string(digits[at].begin(), digits[at].end()),
                  form[at] == 'F' ? "0123456789ABCDEF" : form[at] == 'B' ? "89AB" : form.substr(at, 1)) << at;
}

}  // namespace
