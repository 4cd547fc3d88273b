#include "concurrency/LCEvent.h"

#include <functional>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include "support/Allocations.h"
#include "support/Support.h"

namespace {

/// The rules of an event taken word by word; receivers are numbers.
struct Model {
    struct {
        std::vector<int> all, add, remove;
        bool firing = false;
    } now, kept;
    bool inside = false;

    static bool Holds(std::vector<int> const & list, int i) { return std::count(list.begin(), list.end(), i) != 0; }
    void Hook(int i)
    {
        if (now.firing || !Holds(now.all, i)) (now.firing ? now.add : now.all).push_back(i);
    }
    void Unhook(int i) { now.firing ? now.remove.push_back(i) : void(std::erase(now.all, i)); }
    void Fire(std::function<void(int)> const & call)
    {
        if (now.all.empty()) return;
        bool const outermost = !std::exchange(inside, true);
        if (outermost) now = {now.all, {}, {}, true};
        std::exception_ptr failure;
        try {
            for (int const i : now.all)
                if (!Holds(now.remove, i)) call(i);
        } catch (int) { failure = std::current_exception(); }
        if (outermost) {
            now.all.insert(now.all.end(), now.add.begin(), now.add.end());
            for (int const i : now.remove) std::erase(now.all, i);
            inside = now.firing = false;
        }
        if (failure) std::rethrow_exception(failure);
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

/// Does the `outer` actions one by one, and the `inner` ones, two at each call of a receiver; gives all calls.
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
        case 't': depth == 0 ? void(subject.now = subject.kept) : void(); return;
        case 'x': depth > 0 ? throw 0 : void(); return;
        }
        if (action.kind != '!' || depth > 2) return;
        log += '(';
        ++depth;
        try {
            subject.Fire(call);
        } catch (int) { log += 'x'; }
        --depth;
        log += ')';
    };
    call = [&](int id) {
        log += std::to_string(id);
        for (int i = 0; i < 2 && done < 100; ++i) act(inner[done++ % inner.size()]);  // or lists grow without end
    };
    for (Action const & action : outer) act(action);
    return log;
}

TEST(Event, ListsThatChangeWhileFiringBehaveCallByCallAsTold)
{
    std::mt19937 random(20240229);
    auto const actions = [&](std::string const & kinds) {
        std::vector<Action> some(25);
        for (Action & action : some) action = {kinds[random() % kinds.size()], static_cast<int>(random() % 4)};
        return some;
    };
    for (int round = 0; round < 5000; ++round) {
        auto const outer = actions("<<<<>!!!!ct"), inner = actions("<<<>>>!cx---");
        ASSERT_EQ(CallsOf<Real>(outer, inner), CallsOf<Model>(outer, inner)) << "round " << round;
    }
}

TEST(Event, ReferencesAreSharedValuesAreEachReceiversOwnAndCallsAreFreeOfAllocations)
{
    using TextEvent = LCEvent2Param<std::string, char &>;
    struct Base {
        Base() { log.reserve(99); }
        void OnEvent(std::string text, char & key) { log += std::move(text) + key++; }
        std::string log;
    };
    struct Probe : Base {} first, second;
    TextEvent event;
    TextEvent::LCHook const a(event, first, &Probe::OnEvent);
    char key = '1';
    {
        TextEvent::LCHook b(event, &second, &Probe::OnEvent);
        event.push_back(nullptr);  // is passed over
        event("a text too long for a short string", key);
        EXPECT_EQ(AllocationsOf([&] { event("", key); }), 0u);
        b.Disable();
        event("", key);
        EXPECT_FALSE(b.IsEnabled());
        b.Enable();
    }
    event("", key);
    EXPECT_EQ(first.log + second.log + key, "a text too long for a short string1356a text too long for a short string247");
    static_assert(!std::is_constructible_v<TextEvent::LCHandler, int *, decltype(&Probe::OnEvent)>);
    static_assert(!std::is_copy_constructible_v<TextEvent::LCHandler>);
}

// What closes a window in a tick destroys the event that fires, also when firings are nested; or a hook to it, and the
// next one comes to stand in its place.
TEST(Event, AReceiverMayDestroyTheEventThatCallsItAndItsHook)
{
    using CountEvent = LCEvent1Param<int &>;
    struct Receiver {
        void OnEvent(int & depth)
        {
            ++calls;
            if (--depth > 0) (*event)(depth);
            closes ? event.reset() : void(hook.emplace(*event, this, &Receiver::OnEvent));
        }
        bool closes = true;
        int calls = 0;
        std::unique_ptr<CountEvent> event = std::make_unique<CountEvent>();
        std::optional<CountEvent::LCHook> hook{};
    };
    for (int const depth : {1, 3}) {
        Receiver closing, reopening{false};
        CountEvent::LCHandler first(closing, &Receiver::OnEvent), second(closing, &Receiver::OnEvent);
        *closing.event << first;
        *closing.event << second;
        reopening.hook.emplace(*reopening.event, reopening, &Receiver::OnEvent);
        for (Receiver * const each : {&closing, &reopening, &reopening}) {
            int left = depth;
            if (each->event) (*each->event)(left);
        }
        EXPECT_EQ(std::tuple(closing.calls, reopening.calls, reopening.event->size()), std::tuple(depth, 2 * depth, 1u));
    }
}

}  // namespace
