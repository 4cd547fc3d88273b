#include "concurrency/LHCMessageLoop.h"

#include <poll.h>
#include <stdexcept>

#include "concurrency/Concurrent.h"
#include "concurrency/LCTimer.h"
#include "concurrency/TestClock.h"
#include "support/Support.h"

namespace {

void PostHere(std::function<void()> call) { ASSERT_TRUE(LHCMessageLoop::Post(std::this_thread::get_id(), call)); }

TEST(MessageLoop, CallsRunOnceInTheirOrderAndQuitLeavesTheRestDue)
{
    TestClock const clock;
    std::string order;
    struct Receiver {
        void OnTick(LCTimer &) { order += 't'; }
        std::string & order;
    } receiver{order};
    LCTimer timer;
    LCEvent1Param<LCTimer &>::LCHook const hook(timer.OnTick, receiver, &Receiver::OnTick);

    LHCMessageLoop::Quit();  // ends the next Run at once, and keeps nothing from being handled
    for (char const c : {'a', 'b', 'c'}) PostHere([&, c] { order += c; });
    PostHere([&] { PostHere([&] { order += 'e'; }), order += 'd'; });
    EXPECT_TRUE(LHCMessageLoop::ProcessMessages(0));
    EXPECT_EQ(order, "abcd");
    EXPECT_TRUE(LHCMessageLoop::ProcessMessages(forever));
    EXPECT_EQ(order, "abcde");
    EXPECT_FALSE(LHCMessageLoop::ProcessMessages(0));
    EXPECT_FALSE(LHCMessageLoop::ProcessMessages(1));
    LHCMessageLoop::Run();

    order.clear();
    timer.SetInterval(1);
    timer.Start();
    TestClock::Advance(1);
    PostHere([&] {
        order += '(';
        PostHere([&] { order += 'i', LHCMessageLoop::Quit(); });
        PostHere([&] { order += 'r'; });
        LHCMessageLoop::Run();  // nested
        order += ')';
        PostHere([&] { order += 'o', LHCMessageLoop::Quit(); });
    });
    LHCMessageLoop::Run();
    EXPECT_EQ(order, "(i)tro");  // the tick in the outer loop's turn, once
    timer.Stop();

    PostHere([] { throw std::runtime_error("a receiver's own"); });
    PostHere([&] { order = "on"; });
    EXPECT_THROW(LHCMessageLoop::ProcessMessages(0), std::runtime_error);
    EXPECT_TRUE(LHCMessageLoop::ProcessMessages(0));
    EXPECT_EQ(order, "on");
}

TEST(MessageLoop, OtherThreadsWakeAndEndALoop)
{
    constexpr int each = 1000;
    std::vector<int> calls[3];
    std::atomic<std::thread::id> id{};
    EXPECT_FALSE(LHCMessageLoop::Post(id, [] {}));
    auto const held = std::make_shared<int>();
    std::thread loop([&] {
        LHCMessageLoop::GetDescriptor();
        id = std::this_thread::get_id();
        LHCMessageLoop::Run();
        PostHere([held] { FAIL(); });  // never run, but given back
    });
    Await([&] { return id.load() != std::thread::id(); });
    std::vector<std::jthread> posters;
    for (auto & mine : calls) {
        posters.emplace_back([&] {
            for (int i = 0; i < each; ++i) EXPECT_TRUE(LHCMessageLoop::Post(id, [&mine, i] { mine.push_back(i); }));
        });
    }
    posters.clear();
    EXPECT_TRUE(LHCMessageLoop::Post(id, [] { LHCMessageLoop::Quit(); }));
    loop.join();
    EXPECT_FALSE(LHCMessageLoop::Post(id, [] {}));
    EXPECT_EQ(held.use_count(), 1);
    for (auto const & mine : calls) EXPECT_TRUE(mine.size() == each && std::ranges::is_sorted(mine));
}

TEST(MessageLoop, TheDescriptorIsReadableWhenSomethingIsDue)
{
    int const descriptor = LHCMessageLoop::GetDescriptor();
    EXPECT_EQ(LHCMessageLoop::GetDescriptor(), descriptor);
    auto const isReadable = [&](int timeout) {
        struct pollfd waiting {descriptor, POLLIN, 0};
        return ::poll(&waiting, 1, timeout) == 1;
    };
    EXPECT_FALSE(isReadable(0));
    PostHere([] {});
    EXPECT_TRUE(isReadable(0));
    LHCMessageLoop::ProcessMessages(0);
    EXPECT_FALSE(isReadable(0));

    LCTimer fast, slow;
    fast.SetInterval(1);
    slow.SetInterval(3'600'000);
    slow.Start();
    fast.Start();
    for (int i = 0; i < 3; ++i) EXPECT_TRUE(isReadable(-1) && LHCMessageLoop::ProcessMessages(0));
    EXPECT_TRUE(isReadable(-1));
    fast.Stop();
    EXPECT_FALSE(isReadable(5));
    slow.Stop();
    EXPECT_FALSE(isReadable(0));
}

}  // namespace
