// What the contract checks say to misuse, one line for each, and that right use passes them.

#include <cstdlib>
#include <functional>
#include <memory>
#include <thread>

#include <gtest/gtest.h>

#include "QRTCL_DataTypes.h"

namespace {

struct Receiver {
    void OnEvent() { inside(); }
    std::function<void()> inside = [] {};
    LCEvent0Param::LCHandler handler{*this, &Receiver::OnEvent};
};

/// Does something on another thread while an event fires.
void WhileFiring(void (*misuse)(LCEvent0Param &, Receiver &))
{
    LCEvent0Param event;
    Receiver receiver{[&] { std::thread([&] { misuse(event, receiver); }).join(); }};
    event << receiver.handler;
    event();
}

TEST(ContractDeathTest, MisuseIsReported)
{
    struct { char const * report; void (*misuse)(); } const rows[] = {
        {"operator\\(\\) of 0x.*another thread", [] { WhileFiring([](auto & event, auto &) { event(); }); }},
        {"operator<< of 0x.*another thread", [] { WhileFiring([](auto & event, auto & of) { event << of.handler; }); }},
        {"operator>> of 0x.*another thread", [] { WhileFiring([](auto & event, auto & of) { event >> of.handler; }); }},
        {"operator= of 0x.*is firing", [] { WhileFiring([](auto & event, auto &) { event = LCEvent0Param(); }); }},
        {"~LCHandler of 0x.*holds it", [] { LCEvent0Param event; event << std::make_unique<Receiver>()->handler; }},
        {"~LCHandler of 0x.*holds it", [] {
             LCEvent0Param event, copy;
             Receiver receiver;
             event << receiver.handler;
             copy = event;
             event >> receiver.handler;
             std::exit((receiver.~Receiver(), 0));
         }},
        {"UnlockReader of 0x.*no reader", [] { LCRWCriticalSection().UnlockReader(); }},
        {"UnlockWriter of 0x.*not hold", [] { LCRWCriticalSection lock; lock.LockReader(0), lock.UnlockWriter(); }},
        {"LCString::operator\\[\\] of 0x.*past the end", [] { LCString("abc")[4u] = 'd'; }},
        {"LCString::operator\\[\\] of 0x.*past the end", [] { std::exit(LCString("abc").GetAt(-1)); }},
        {"operator\\[\\].*Assertion", [] { LCStringVector()[0] = "a"; }}, {"operator\\[\\].*Assertion", [] { LCIntVector()[0] = 1; }},
    };
    for (auto const & row : rows) EXPECT_DEATH(row.misuse(), row.report);
}

TEST(Contract, RightUsePasses)
{
    LCEvent0Param event, copy;
    int calls = 0;
    auto first = std::make_unique<Receiver>(), second = std::make_unique<Receiver>();
    first->inside = [&] {
        if (++calls == 1) event();
        if (second) event >> second->handler;
        second.reset();
    };
    event << first->handler;
    event << second->handler;
    event();
    EXPECT_EQ(calls, 2);
    copy = event;
    event.clear();
    copy >> first->handler;
    first.reset();

    LCRWCriticalSection lock;
    EXPECT_TRUE(lock.LockWriter(0) && lock.LockWriter(0) && lock.LockReader(0));
    lock.UnlockReader();
    for (int i = 0; i < 2; ++i) lock.UnlockWriter();
    EXPECT_TRUE(lock.LockWriter(0));
    EXPECT_EQ(LCString("abc")[3u], '\0');
}

}  // namespace
