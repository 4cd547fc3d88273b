// What the contract checks say to misuse, one line for each. That right use passes them, all other tests show where the
// library has the checks.

#include <cstdlib>

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

}  // namespace
