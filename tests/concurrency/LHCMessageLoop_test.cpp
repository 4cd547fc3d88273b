#include "concurrency/LHCMessageLoop.h"

#include <poll.h>
#include <stdexcept>

#include "concurrency/Concurrent.h"

namespace {

void PostHere(std::function<void()> call) { ASSERT_TRUE(LHCMessageLoop::Post(std::this_thread::get_id(), call)); }

TEST(MessageLoop, CallsRunOnceInTheirOrderAndQuitLeavesTheRestDue)
{
    TestClock const clock;
    std::string order;
    auto const handled = [&](unsigned int timeout) {
        order.clear();
        return LHCMessageLoop::ProcessMessages(timeout) ? order : "nothing";
    };
    LHCMessageLoop::Quit();  // ends the next Run at once, and keeps nothing from being handled
    for (char const c : {'a', 'b', 'c'}) PostHere([&, c] { order += c; });
    PostHere([&] { PostHere([&] { order += 'e'; }), order += 'd'; });
    EXPECT_EQ(handled(0), "abcd");
    EXPECT_EQ(handled(forever), "e");
    EXPECT_EQ(handled(0) + handled(1), "nothingnothing");
    LHCMessageLoop::Run();

    Ticker ticker([&] { order += 't'; }, 1);
    ticker.Start();
    TestClock::Advance(1);
    PostHere([&] {
        order = '(';
        PostHere([&] { order += 'i', LHCMessageLoop::Quit(); });
        PostHere([&] { order += 'r'; });
        LHCMessageLoop::Run();  // nested
        order += ')';
        PostHere([&] { order += 'o', LHCMessageLoop::Quit(); });
    });
    LHCMessageLoop::Run();
    EXPECT_EQ(order, "(i)tro");  // the tick in the outer loop's turn, once
    ticker.Stop();

    PostHere([] { throw std::runtime_error("a receiver's own"); });
    PostHere([&] { order = "on"; });
    EXPECT_THROW(handled(0), std::runtime_error);
    EXPECT_EQ(handled(0), "on");

    auto const held = std::make_shared<int>();
    std::thread([held] {
        LHCMessageLoop::ProcessMessages(0);
        PostHere([held] { FAIL(); });  // never run, but given back
    }).join();
    EXPECT_TRUE(held.use_count() == 1 && !LHCMessageLoop::Post({}, [] {}));
}

TEST(MessageLoop, TheDescriptorIsReadableWhenSomethingIsDue)
{
    auto const isReadable = [&](int timeout) {
        struct pollfd waiting {LHCMessageLoop::GetDescriptor(), POLLIN, 0};
        return ::poll(&waiting, 1, timeout) == 1;
    };
    EXPECT_FALSE(isReadable(0));
    PostHere([] {});
    EXPECT_TRUE(isReadable(0) && LHCMessageLoop::ProcessMessages(0) && !isReadable(0));
    Ticker fast([] {}, 1), slow([] {}, 3'600'000);
    EXPECT_TRUE(slow.Start() && fast.Start() && isReadable(-1) && LHCMessageLoop::ProcessMessages(0) && isReadable(-1));
    fast.Stop();
    EXPECT_FALSE(isReadable(5));
}

}  // namespace
