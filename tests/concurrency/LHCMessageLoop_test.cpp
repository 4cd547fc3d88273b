#include "concurrency/LHCMessageLoop.h"

#include <future>
#include <poll.h>
#include <stdexcept>

#include "concurrency/Concurrent.h"
#include "concurrency/LCTimer.h"
#include "concurrency/TestClock.h"
#include "support/Support.h"

namespace {

constexpr unsigned int forever = 0xFFFFFFFF;

bool IsReadable(int descriptor, int timeout)
{
    struct pollfd waiting {
        descriptor, POLLIN, 0
    };
    return ::poll(&waiting, 1, timeout) == 1;
}

void PostHere(std::function<void()> call)
{
    ASSERT_TRUE(LHCMessageLoop::Post(std::this_thread::get_id(), call));
}

TEST(MessageLoop, CallsRunOnceAndInTheirOrder)
{
    LHCMessageLoop::GetDescriptor();  // now this thread has a loop
    std::string order;
    for (char const c : {'a', 'b', 'c'}) PostHere([&, c] { order += c; });
    PostHere([&] { PostHere([&] { order += 'e'; }), order += 'd'; });
    EXPECT_TRUE(LHCMessageLoop::ProcessMessages(0));
    EXPECT_EQ(order, "abcd");
    EXPECT_TRUE(LHCMessageLoop::ProcessMessages(forever));
    EXPECT_EQ(order, "abcde");
    EXPECT_FALSE(LHCMessageLoop::ProcessMessages(0));
    EXPECT_FALSE(LHCMessageLoop::ProcessMessages(1));
}

TEST(MessageLoop, QuitEndsTheInnermostRunAndLeavesTheRestDue)
{
    std::string order;
    LHCMessageLoop::Quit();
    LHCMessageLoop::Run();
    PostHere([&] {
        order += '(';
        PostHere([&] { order += 'i', LHCMessageLoop::Quit(); });
        PostHere([&] { order += 'r'; });
        LHCMessageLoop::Run();
        order += ')';
        PostHere([&] { order += 'o', LHCMessageLoop::Quit(); });
    });
    LHCMessageLoop::Run();
    EXPECT_EQ(order, "(i)ro");
}

TEST(MessageLoop, AnExceptionPassesThroughAndTheLoopGoesOn)
{
    LHCMessageLoop::GetDescriptor();
    int ran = 0;
    PostHere([] { throw std::runtime_error("a receiver's own"); });
    PostHere([&] { ++ran; });
    EXPECT_THROW(LHCMessageLoop::ProcessMessages(0), std::runtime_error);
    EXPECT_TRUE(LHCMessageLoop::ProcessMessages(0));
    EXPECT_EQ(ran, 1);
}

TEST(MessageLoop, OtherThreadsWakeAndEndALoop)
{
    EXPECT_FALSE(LHCMessageLoop::Post(std::thread::id(), [] {}));
    std::promise<std::thread::id> started;
    std::vector<int> calls;
    std::thread loop([&] {
        LHCMessageLoop::ProcessMessages(0);
        started.set_value(std::this_thread::get_id());
        LHCMessageLoop::Run();
    });
    auto const id = started.get_future().get();
    std::vector<std::thread> posters;
    constexpr int each = 1000;
    for (int i = 0; i < 3; ++i) {
        posters.emplace_back([&, i] {
            for (int k = 0; k < each; ++k) {
                while (!LHCMessageLoop::Post(id, [&, i, k] { calls.push_back(i * each + k); }))
                    ;
            }
        });
    }
    for (auto & poster : posters) poster.join();
    EXPECT_TRUE(LHCMessageLoop::Post(id, [] { LHCMessageLoop::Quit(); }));
    loop.join();
    EXPECT_FALSE(LHCMessageLoop::Post(id, [] {}));

    ASSERT_EQ(calls.size(), 3u * each);
    for (int i = 0; i < 3; ++i) {
        std::erase_if(calls,
                      [next = i * each, i](int call) mutable { return call / each == i && call == next++; });
    }
    EXPECT_TRUE(calls.empty());  // those of each thread came in their order
}

TEST(MessageLoop, WhatIsLeftWhenItsThreadEndsIsDropped)
{
    auto const held = std::make_shared<int>();
    std::thread([&] {
        LHCMessageLoop::GetDescriptor();
        PostHere([held] { FAIL(); });
        EXPECT_EQ(held.use_count(), 2);
    }).join();
    EXPECT_EQ(held.use_count(), 1);
}

TEST(MessageLoop, TheDescriptorIsReadableWhenSomethingIsDue)
{
    int const descriptor = LHCMessageLoop::GetDescriptor();
    EXPECT_EQ(LHCMessageLoop::GetDescriptor(), descriptor);
    EXPECT_FALSE(IsReadable(descriptor, 0));
    PostHere([] {});
    EXPECT_TRUE(IsReadable(descriptor, 0));
    LHCMessageLoop::ProcessMessages(0);
    EXPECT_FALSE(IsReadable(descriptor, 0));

    LCTimer fast, slow;
    fast.SetInterval(1);
    slow.SetInterval(3'600'000);
    slow.Start();
    fast.Start();
    for (int i = 0; i < 3; ++i) {
        EXPECT_TRUE(IsReadable(descriptor, -1));
        EXPECT_TRUE(LHCMessageLoop::ProcessMessages(0));
    }
    EXPECT_TRUE(IsReadable(descriptor, -1));
    fast.Stop();
    EXPECT_FALSE(IsReadable(descriptor, 0));
    slow.Stop();
    EXPECT_FALSE(IsReadable(descriptor, 5));
}

}  // namespace
