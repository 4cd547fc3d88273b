#include "concurrency/LCEvent.h"

#include <functional>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/Allocations.h"

namespace {

/// What a receiver does when it is called: hook or unhook one of the receivers, switch one, fire, copy or
/// throw.
struct Action {
    char kind;
    int target;
};
using Script = std::vector<Action>;

/// The event of the library with six receivers; `called` is told of each call.
class Real {
public:
    explicit Real(std::function<void(int)> called) : movCalled(std::move(called)) {}
    void Hook(int i) { movEvent << movReceivers[i].handler; }
    void Unhook(int i) { movEvent >> movReceivers[i].handler; }
    void Switch(int i)
    {
        LCEvent0Param::LCHandler & handler = movReceivers[i].handler;
        handler.IsEnabled() ? handler.Disable() : handler.Enable();
    }
    void Fire() { movEvent(); }
    void KeepCopy() { movCopy = movEvent; }
    void TakeCopy() { movEvent = movCopy; }

private:
    struct Receiver {
        void OnEvent() { owner.movCalled(id); }
        Real & owner;
        int id;
        LCEvent0Param::LCHandler handler{*this, &Receiver::OnEvent};
    };

    std::function<void(int)> movCalled;
    Receiver movReceivers[6] = {{*this, 0}, {*this, 1}, {*this, 2}, {*this, 3}, {*this, 4}, {*this, 5}};
    LCEvent0Param movEvent;
    LCEvent0Param movCopy;
};

/// The same by the plain words of the rules, slowly.
class Model {
public:
    explicit Model(std::function<void(int)> called) : movCalled(std::move(called)) {}
    void Hook(int i)
    {
        if (movLists.firing) {
            movLists.add.push_back(i);
        } else if (std::count(movLists.all.begin(), movLists.all.end(), i) == 0) {
            movLists.all.push_back(i);
        }
    }
    void Unhook(int i)
    {
        if (movLists.firing) {
            movLists.remove.push_back(i);
        } else {
            std::erase(movLists.all, i);
        }
    }
    void Switch(int i) { mbaEnabled[i] = !mbaEnabled[i]; }
    void Fire()
    {
        if (movLists.all.empty()) return;
        bool const outermost = !mbvInside;
        mbvInside = movLists.firing = true;
        if (outermost) movLists.add = movLists.remove = {};
        std::exception_ptr failure;
        for (int const i : std::vector<int>(movLists.all)) {
            if (std::count(movLists.remove.begin(), movLists.remove.end(), i) != 0 || !mbaEnabled[i])
                continue;
            try {
                movCalled(i);
            } catch (...) {
                failure = std::current_exception();
                break;
            }
        }
        if (outermost) {
            for (int const i : movLists.add) movLists.all.push_back(i);
            for (int const i : movLists.remove) std::erase(movLists.all, i);
            mbvInside = movLists.firing = false;
        }
        if (failure) std::rethrow_exception(failure);
    }
    void KeepCopy() { movCopy = movLists; }
    void TakeCopy() { movLists = movCopy; }

private:
    struct Lists {
        std::vector<int> all, add, remove;
        bool firing = false;
    };

    std::function<void(int)> movCalled;
    Lists movLists, movCopy;
    bool mbvInside = false;
    bool mbaEnabled[6] = {true, true, true, true, true, true};
};

/// Runs `outer` from the top, where each call of a receiver does the next of the `inner` scripts, and gives
/// what was called, firing by firing. Only so many calls change anything, or the lists would grow without
/// end.
template <typename Subject> std::string LogOf(Script const & outer, std::vector<Script> const & inner)
{
    std::string log;
    std::size_t calls = 0;
    int depth = 0;
    Subject * self = nullptr;
    auto const act = [&](Action const & action) {
        switch (action.kind) {
        case '<': self->Hook(action.target); break;
        case '>': self->Unhook(action.target); break;
        case '~': self->Switch(action.target); break;
        case 'c': self->KeepCopy(); break;
        case 't':
            if (depth == 0) self->TakeCopy();
            break;
        case '!':
            if (depth > 2) break;
            log += '(';
            ++depth;
            try {
                self->Fire();
            } catch (std::runtime_error const &) {
                log += '!';
            }
            --depth;
            log += ')';
            break;
        case 'x':
            if (depth > 0) throw std::runtime_error("from a receiver");
            break;
        }
    };
    Subject subject([&](int id) {
        log += std::to_string(id);
        if (++calls > 60) return;
        for (Action const & action : inner[calls % inner.size()]) act(action);
    });
    self = &subject;
    for (Action const & action : outer) act(action);
    for (int i = 0; i < 3; ++i) act({'!', 0});
    return log;
}

// Every mixture of changes at rest and while firing, nested firings, copies and exceptions included, must
// call the same receivers in the same order as the rules taken word by word.
TEST(Event, ListsThatChangeWhileFiringBehaveCallByCallAsTold)
{
    std::mt19937 random(20240229);
    auto const script = [&](std::size_t length, char const * kinds, std::size_t count) {
        Script actions(random() % (length + 1));
        for (Action & action : actions) action = {kinds[random() % count], static_cast<int>(random() % 6)};
        return actions;
    };
    for (int round = 0; round < 20000; ++round) {
        Script const outer = script(24, "<<<<>~!!!!ct", 12);
        std::vector<Script> inner(7);
        for (Script & actions : inner) actions = script(3, "<<<>>>~!cx", 10);
        ASSERT_EQ(LogOf<Real>(outer, inner), LogOf<Model>(outer, inner)) << "round " << round;
    }
}

/// A receiver that notes its calls.
struct Probe {
    void OnNothing() { log += "."; }
    void OnKey(char & key, bool & handled)
    {
        log += key;
        key = static_cast<char>(key + 1);
        handled = true;
    }
    void OnText(std::string text, bool a, bool b, bool c, bool & answer)
    {
        log += std::move(text);
        answer = a && b && !c;
    }
    std::string log;
};

TEST(Event, ReferencesAreSharedAndValuesAreEachReceiversOwn)
{
    Probe first, second;
    LCEvent2Param<char &, bool &> key;
    LCEvent2Param<char &, bool &>::LCHandler a(first, &Probe::OnKey), b(&second, &Probe::OnKey);
    key << a;
    key << b;
    char c = 'K';
    bool handled = false;
    key(c, handled);
    EXPECT_EQ(first.log + second.log, "KL");
    EXPECT_TRUE(handled && c == 'M');

    LCEvent5Param<std::string, bool, bool, bool, bool &> text;
    LCEvent5Param<std::string, bool, bool, bool, bool &>::LCHook const one(text, first, &Probe::OnText),
        two(text, &second, &Probe::OnText);
    text("text", true, true, false, handled = false);
    EXPECT_EQ(first.log + second.log, "KtextLtext");
    EXPECT_TRUE(handled);
}

TEST(Event, AHookIsHookedForAsLongAsItLives)
{
    Probe probe;
    LCEvent0Param event;
    {
        LCEvent0Param::LCHook hook(event, probe, &Probe::OnNothing);
        event();
        hook.Disable();
        event();
        EXPECT_FALSE(hook.IsEnabled());
    }
    event();
    EXPECT_EQ(probe.log, ".");
    EXPECT_TRUE(event.empty());
}

TEST(Event, CallersMayPutNullAmongTheDelegates)
{
    Probe probe;
    LCEvent0Param event;
    event.push_back(nullptr);
    LCEvent0Param::LCHook const hook(event, probe, &Probe::OnNothing);
    event();
    EXPECT_EQ(probe.log, ".");
}

TEST(Event, FiringAllocatesNothing)
{
    struct Counter {
        void OnEvent(std::string const & text) { sum += text.size(); }
        std::size_t sum = 0;
    } counter;
    LCEvent1Param<std::string const &> event;
    std::list<LCEvent1Param<std::string const &>::LCHook> hooks;
    for (int i = 0; i < 100; ++i) hooks.emplace_back(event, counter, &Counter::OnEvent);
    std::string const text(100, 'x');
    EXPECT_EQ(AllocationsOf([&] { event(text); }), 0u);
    EXPECT_EQ(counter.sum, 10000u);
}

struct DerivedProbe : Probe {};
static_assert(std::is_constructible_v<LCEvent0Param::LCHandler, DerivedProbe &, void (Probe::*)()>);
static_assert(!std::is_copy_constructible_v<LCEvent0Param::LCHandler>);
static_assert(!std::is_constructible_v<LCEvent0Param::LCHandler, Probe &, void (Probe::*)(char &, bool &)>);
static_assert(!std::is_constructible_v<LCEvent0Param::LCHandler, int *, void (Probe::*)()>);

}  // namespace
