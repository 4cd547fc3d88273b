#include "identity/LCGUID.h"

#include <set>
#include <string>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <unordered_set>
#include <vector>

#include "platform/RandomBytes.h"
#include "support/Support.h"

namespace {

using qrtcl::platform::RandomBlock;

template <typename T>
concept HasLessEqual = requires(T const & a, T const & b)
{
    a <= b;
};
template <typename T>
concept HasGreaterEqual = requires(T const & a, T const & b)
{
    a >= b;
};
template <typename T>
concept TakesLiteralAsFlag = requires(T const & a)
{
    a.AsStr("braces");
};
static_assert(!HasLessEqual<LCGUID> && !HasGreaterEqual<LCGUID> && !TakesLiteralAsFlag<LCGUID>);
static_assert(std::is_nothrow_move_constructible_v<LCGUID> && std::is_nothrow_move_assignable_v<LCGUIDList>);

class WithoutRandomBytes {
public:
    explicit WithoutRandomBytes(bool (*source)(RandomBlock &) noexcept)
    {
        qrtcl::platform::ReplaceRandomBytes(source);
    }
    ~WithoutRandomBytes() { qrtcl::platform::ReplaceRandomBytes(nullptr); }
};

TEST(GUID, TakesOffOneBraceAtEachEnd)
{
    struct { char const * given; char const * text; } const rows[] = {
        {"", ""}, {"{}", ""},
        {"{", ""},
        {"}", ""},
        {"abc", "abc"},
        {"{abc}", "abc"},
        {"{abc", "abc"},
        {"abc}", "abc"},
        {"{{abc}}", "{abc}"},
        {"a{b}c", "a{b}c"},
        {"}{", "}{"},
        {"{{", "{"},
        {"}}", "}"},
        {"{00000000-0000-0000-0000-000000000000}", "00000000-0000-0000-0000-000000000000"},
    };
    for (auto const & row : rows) {
        LCGUID const guid(row.given);
        EXPECT_EQ(guid.AsStr(false), row.text) << row.given;
        EXPECT_EQ(guid.AsStr(true), LCString("{") + row.text + "}") << row.given;
        EXPECT_EQ(guid.IsValid(), row.text[0] != '\0') << row.given;
        EXPECT_EQ(guid == LCGUID::EmptyGUID(), row.text[0] == '\0') << row.given;
    }
}

TEST(GUID, ComparesBytesOfTheText)
{
    std::vector<LCGUID> const ascending{LCGUID(""),  LCGUID("{A-1}"), LCGUID("A-10"),
                                        LCGUID("B"), LCGUID("a-1"),   LCGUID("\xE4")};
    ExpectTotalOrder(ascending);
    EXPECT_EQ((std::unordered_set<LCGUID>{LCGUID("{A}"), LCGUID("A"), LCGUID("a")}.size()), 2u);
}

TEST(GUID, ANewOneIsRandomAndCanonical)
{
    std::set<std::string> digitsSeen[36];
    std::set<std::string> seen;
    for (int i = 0; i < 2000; ++i) {
        std::string const text = LCGUID().AsStr(false).str();
        ASSERT_EQ(text.size(), 36u);
        for (std::size_t at = 0; at < text.size(); ++at) digitsSeen[at].insert(text.substr(at, 1));
        seen.insert(text);
    }
    EXPECT_EQ(seen.size(), 2000u);
    for (std::size_t at = 0; at < 36; ++at) {
        std::string all;
        for (auto const & digit : digitsSeen[at]) all += digit;
        bool const isDash = at == 8 || at == 13 || at == 18 || at == 23;
        EXPECT_EQ(all, isDash ? "-" : at == 14 ? "4" : at == 19 ? "89AB" : "0123456789ABCDEF") << at;
    }
}

TEST(GUID, WritesTheBytesInOrder)
{
    WithoutRandomBytes const counting([](RandomBlock & block) noexcept {
        for (unsigned i = 0; i < block.size(); ++i) block[i] = static_cast<unsigned char>(0xF0 - 0x0F * i);
        return true;
    });
    EXPECT_EQ(LCGUID().AsStr(true), "{F0E1D2C3-B4A5-4687-B869-5A4B3C2D1E0F}");
}

TEST(GUID, IsEmptyWhenTheSystemGivesNoRandomBytes)
{
    WithoutRandomBytes const failing([](RandomBlock &) noexcept { return false; });
    EXPECT_EQ(LCGUID(), LCGUID::EmptyGUID());
}

/// What a forked child, a thread of it and its own child draw, in this order, as one run of texts.
std::string DrawInForkedFamily(int perMember)
{
    int ends[2];
    if (::pipe(ends) != 0) return "no pipe";
    auto const draw = [&] {
        std::string texts;
        for (int i = 0; i < perMember; ++i) texts += LCGUID().AsStr(false).str();
        return ::write(ends[1], texts.data(), texts.size()) == static_cast<::ssize_t>(texts.size());
    };
    ::pid_t const child = ::fork();
    if (child == 0) {
        bool done = true;
        std::thread([&] {
            done = draw();
        }).join();  // first: the thread that forked still holds what was fetched ahead
        done = draw() && done;
        ::pid_t const grandchild = ::fork();
        if (grandchild == 0) ::_exit(draw() ? 0 : 1);
        int status = 1;
        ::waitpid(grandchild, &status, 0);
        ::_exit(done && status == 0 ? 0 : 1);
    }
    ::close(ends[1]);
    std::string all;
    char buffer[4096];
    for (::ssize_t got; (got = ::read(ends[0], buffer, sizeof buffer)) > 0;) {
        all.append(buffer, static_cast<std::size_t>(got));
    }
    ::close(ends[0]);
    int status = 1;
    ::waitpid(child, &status, 0);
    return status == 0 ? all : "a member of the family failed";
}

TEST(GUID, NeitherThreadsNorForkedChildrenRepeatOne)
{
    constexpr int perMember = 300;
    LCGUID const before;
    std::string all = DrawInForkedFamily(perMember);
    ASSERT_EQ(all.size(), 3u * 36 * perMember) << all.substr(0, 40);
    for (int i = 0; i < perMember; ++i) all += LCGUID().AsStr(false).str();
    std::thread([&] {
        for (int i = 0; i < perMember; ++i) all += LCGUID().AsStr(false).str();
    }).join();

    std::set<std::string> seen;
    for (std::size_t at = 0; at < all.size(); at += 36) {
        EXPECT_TRUE(seen.insert(all.substr(at, 36)).second) << "member " << at / 36 / perMember;
    }
    EXPECT_FALSE(seen.contains(before.AsStr(false).str()));
}

TEST(GUID, AListCopiesAndMoves)
{
    LCGUIDList list;
    list.emplace_back();
    list.push_back(LCGUID("A"));
    LCGUIDList copy = list;
    LCGUIDList const moved = std::move(list);
    EXPECT_EQ(copy, moved);
    copy.front() = LCGUID("B");
    EXPECT_NE(copy, moved);
}

}  // namespace
