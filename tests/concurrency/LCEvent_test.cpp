#include "concurrency/LCEvent.h"

#include <functional>
#include <random>
#include <string>
#include <vector>

#include "support/Allocations.h"
#include "support/Support.h"

namespace {

/// The rules of an event taken word by word; receivers are numbers.
struct Model {
    struct Lists {
        std::vector<int> all, add, remove;
        bool firing = false;
    } now, kept;
    bool inside = false;

    static bool Holds(std::vector<int> const & list, int i)
    {
        return std::count(list.begin(), list.end(), i) != 0;
    }
    void Hook(int i)
    {
        if (now.firing || !Holds(now.all, i)) (now.firing ? now.add : now.all).push_back(i);
    }
    void Unhook(int i) { now.firing ? now.remove.push_back(i) : void(std::erase(now.all, i)); }
    void Fire(std::function<void(int)> const & call)
    {
        if (now.all.empty()) return;
        bool const outermost = !std::exchange(inside, true), failed = [&] {
            if (outermost) now = {now.all, {}, {}, true};
            try {
                for (int const i : now.all) {
                    if (!Holds(now.remove, i)) call(i);
                }
                return false;
            } catch (int) {
                return true;
            }
        }();
        if (outermost) {
            now.all.insert(now.all.end(), now.add.begin(), now.add.end());
            for (int const i : now.remove) std::erase(now.all, i);
            inside = now.firing = false;
        }
        if (failed) throw 0;
    }
};

struct Real {
    struct Receiver {
        void OnEvent() { (*real.call)(id); }
        Real & real;
        int id;
        LCEvent0Param::LCHandler handler{*this, &Receiver::OnEvent};
    } receivers[4] = {{*this, 0}, {*this, 1}, {*this, 2}, {*this, 3}};
    std::function<void(int)> const * call = nullptr;
    LCEvent0Param now, kept;

    void Hook(int i) { now << receivers[i].handler; }
    void Unhook(int i) { now >> receivers[i].handler; }
    void Fire(std::function<void(int)> const & called) { call = &called, now(); }
};

struct Action { char kind; int target; };

/// Does the `outer` actions one by one, and the `inner` ones, two at each call of a receiver; gives all
/// calls.
template <typename Subject>
std::string CallsOf(std::vector<Action> const & outer, std::vector<Action> const & inner)
{
    Subject subject;
    std::string log;
    std::size_t done = 0;
    int depth = 0;
    std::function<void(int)> call;
    auto const act = [&](Action const & action) {
        switch (action.kind) {
        case '<': return subject.Hook(action.target);
        case '>': return subject.Unhook(action.target);
        case 'c': subject.kept = subject.now; return;
        case 't':
            if (depth == 0) subject.now = subject.kept;
            return;
        case 'x':
            if (depth > 0) throw 0;
            return;
        }
        if (action.kind != '!' || depth > 2) return;
        log += '(';
        ++depth;
        try {
            subject.Fire(call);
        } catch (int) {
            log += 'x';
        }
        --depth;
        log += ')';
    };
    call = [&](int id) {
        log += std::to_string(id);
        for (int i = 0; i < 2 && done < 100; ++i)
            act(inner[done++ % inner.size()]);  // or lists grow without end
    };
    for (Action const & action : outer) act(action);
    return log;
}

TEST(Event, ListsThatChangeWhileFiringBehaveCallByCallAsTold)
{
    std::mt19937 random(20240229);
    auto const actions = [&](std::string const & kinds) {
        std::vector<Action> some(25);
        for (Action & action : some)
            action = {kinds[random() % kinds.size()], static_cast<int>(random() % 4)};
        return some;
    };
    for (int round = 0; round < 5000; ++round) {
        auto const outer = actions("<<<<>!!!!ct"), inner = actions("<<<>>>!cx---");
        ASSERT_EQ(CallsOf<Real>(outer, inner), CallsOf<Model>(outer, inner)) << "round " << round;
    }
}

struct Probe {
    void OnEvent(std::string text, char & key)
    {
        log += std::move(text) + key;
        ++key;
    }
    std::string log;
};
using TextEvent = LCEvent2Param<std::string, char &>;

TEST(Event, ReferencesAreSharedAndValuesAreEachReceiversOwn)
{
    Probe first, second;
    TextEvent event;
    TextEvent::LCHook const a(event, first, &Probe::OnEvent), b(event, &second, &Probe::OnEvent);
    event.push_back(nullptr);  // is passed over
    char key = '1';
    event("a text too long for a short string", key);
    EXPECT_EQ(first.log + second.log + key,
              "a text too long for a short string1a text too long for a short string23");
}

// What closes a window in a tick destroys the event that fires, also when firings are nested.
TEST(Event, AReceiverMayDestroyTheEventThatCallsIt)
{
    struct Receiver {
        void OnEvent(int & depth)
        {
            ++calls;
            if (--depth > 0) (*event)(depth);
            event.reset();
        }
        std::unique_ptr<LCEvent1Param<int &>> event = std::make_unique<LCEvent1Param<int &>>();
        int calls = 0;
    };
    for (int const depth : {1, 3}) {
        Receiver receiver;
        LCEvent1Param<int &>::LCHandler first(receiver, &Receiver::OnEvent),
            second(receiver, &Receiver::OnEvent);
        *receiver.event << first;
        *receiver.event << second;
        int left = depth;
        (*receiver.event)(left);
        EXPECT_EQ(receiver.calls, depth);
    }
}

TEST(Event, AHookIsHookedForAsLongAsItLivesAndCallsAreFreeOfAllocations)
{
    Probe probe;
    TextEvent event;
    char key = '1';
    {
        TextEvent::LCHook hook(event, probe, &Probe::OnEvent);
        EXPECT_EQ(AllocationsOf([&] { event("", key); }), 0u);
        hook.Disable();
        event("", key);
        EXPECT_FALSE(hook.IsEnabled());
        hook.Enable();
        event("", key);
    }
    event("", key);
    EXPECT_EQ(probe.log, "12");
}

struct DerivedProbe : Probe {};
static_assert(
    std::is_constructible_v<TextEvent::LCHandler, DerivedProbe &, void (Probe::*)(std::string, char &)>);
static_assert(!std::is_constructible_v<TextEvent::LCHandler, int *, void (Probe::*)(std::string, char &)>);
static_assert(!std::is_copy_constructible_v<TextEvent::LCHandler>);

}  // namespace
