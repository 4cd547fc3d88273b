#include "concurrency/LCEvent.h"

#include "concurrency/Concurrent.h"
#include "support/Allocations.h"

namespace {

/// The rules of an event taken word by word.
struct Model {
    struct LCHandler {
        template <typename T> LCHandler(T & receiver, void (T::*f)()) : call([&receiver, f] { (receiver.*f)(); }) {}
        std::function<void()> call;
    };
    std::vector<LCHandler *> all{}, add{}, remove{};
    bool firing = false;
    static inline bool inside = false;  // one, that is

    void operator<<(LCHandler & handler)
    {
        if (firing || !std::ranges::count(all, &handler)) (firing ? add : all).push_back(&handler);
    }
    void operator>>(LCHandler & handler) { firing ? remove.push_back(&handler) : void(std::erase(all, &handler)); }
    void operator()()
    {
        if (all.empty()) return;
        bool const outermost = !std::exchange(inside, true);
        if (outermost) *this = {all, {}, {}, true};
        std::exception_ptr failure;
        try {
            for (LCHandler * const each : all)
                if (!std::ranges::count(remove, each)) each->call();
        } catch (int) { failure = std::current_exception(); }
        if (outermost) {
            all.insert(all.end(), add.begin(), add.end());
            for (LCHandler * const each : remove) std::erase(all, each);
            inside = firing = false;
        }
        if (failure) std::rethrow_exception(failure);
    }
};

template <typename Event = LCEvent0Param> struct Receiver {
    void OnEvent() { call(); }
    std::function<void()> call{};
    typename Event::LCHandler handler{*this, &Receiver::OnEvent};
};

using Actions = std::vector<std::pair<char, int>>;

/// Does the `outer` actions one by one, and the `inner` ones, two at each call of a receiver; gives all calls.
template <typename Event> std::string CallsOf(Actions const & outer, Actions const & inner)
{
    Receiver<Event> receivers[4];
    Event now, kept;
    std::string log;
    std::size_t done = 0;
    int depth = 0;
    auto const act = [&](std::pair<char, int> const & action) {
        auto const [kind, receiver] = action;
        if (kind == '<') now << receivers[receiver].handler;
        if (kind == '>') now >> receivers[receiver].handler;
        if (kind == 'c') kept = now;
        if (kind == 't' && depth == 0) now = kept;
        if (kind == 'x' && depth > 0) throw 0;
        if (kind != '!' || depth > 2) return;
        log += '(';
        ++depth;
        try {
            now();
        } catch (int) { log += 'x'; }
        --depth;
        log += ')';
    };
    for (auto & each : receivers)
        each.call = [&] {
            log += static_cast<char>('0' + (&each - receivers));
            for (int i = 0; i < 2 && done < 100; ++i) act(inner[done++ % inner.size()]);  // or lists grow without end
        };
    for (auto const & action : outer) act(action);
    return log;
}

TEST(Event, ListsThatChangeWhileFiringBehaveCallByCallAsTold)
{
    std::mt19937 random(20240229);
    auto const actions = [&](std::string const & kinds) {
        Actions some(25);
        for (auto & action : some) action = {kinds[random() % kinds.size()], static_cast<int>(random() % 4)};
        return some;
    };
    for (int round = 0; round < 5000; ++round) {
        auto const outer = actions("<<<<>!!!!ct"), inner = actions("<<<>>>!cx---");
        ASSERT_EQ(CallsOf<LCEvent0Param>(outer, inner), CallsOf<Model>(outer, inner)) << "round " << round;
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
    TextEvent::LCHook b(event, &second, &Probe::OnEvent);
    event.push_back(nullptr);  // is passed over
    event("a text too long for a short string", key);
    EXPECT_EQ(AllocationsOf([&] { event("", key); }), 0u);
    b.Disable();
    event("", key);
    b.Enable();
    event("", key);
    EXPECT_EQ(first.log + second.log + key, "a text too long for a short string1356a text too long for a short string2478");
    static_assert(!std::is_constructible_v<TextEvent::LCHandler, int *, decltype(&Probe::OnEvent)>);
}

// What closes a window in a tick destroys the event that fires, also when firings are nested, and another receiver; or a
// hook to it, and the next one comes to stand in its place.
TEST(Event, AReceiverMayDestroyTheEventThatCallsItAndItsHook)
{
    for (int const depth : {1, 3}) {
        auto closing = std::make_unique<LCEvent0Param>();
        LCEvent0Param reopening;
        std::optional<LCEvent0Param::LCHook> hook;
        int closed = 0, reopened = 0;
        auto other = std::make_unique<Receiver<>>();
        Receiver<> first{[&] {
            if (++closed < depth) (*closing)();
            if (other) *closing >> other->handler;
            other.reset(), closing.reset();
        }};
        Receiver<> second{[&] {
            if (++reopened % depth != 0) reopening();
            hook.emplace(reopening, second, &Receiver<>::OnEvent);
        }};
        *closing << first.handler;
        *closing << other->handler;
        (*closing)();
        hook.emplace(reopening, second, &Receiver<>::OnEvent);
        for (int i = 0; i < 2; ++i) reopening();
        EXPECT_EQ(std::tuple(closed, reopened, reopening.size()), std::tuple(depth, 2 * depth, 1u));
        reopening << second.handler;
        reopening.clear();  // by the list's own operation: no longer held
    }
}

}  // namespace
