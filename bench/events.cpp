// Firing of events with few and many receivers, and hooking them.

#include <cstdint>
#include <list>
#include <memory>

#include "Bench.h"
#include "concurrency/LCEvent.h"

#ifdef PEER_SIGC
#include <sigc++/sigc++.h>
#endif
#ifdef PEER_BOOST
#include <boost/signals2.hpp>
#endif
#ifdef PEER_POCO
#include <Poco/BasicEvent.h>
#include <Poco/Delegate.h>
#endif

namespace {

struct Receiver {
    void OnValue(int & value) { sum += value; }
    std::int64_t sum = 0;
};

/// All that live for the whole run, in the order of their making.
template <typename Thing> Thing & Kept(auto &&... arguments)
{
    static std::list<Thing> things;
    return things.emplace_back(std::forward<decltype(arguments)>(arguments)...);
}

using Event = LCEvent1Param<int &>;
using Receivers = std::vector<Receiver>;
using Handlers = std::vector<std::unique_ptr<Event::LCHandler>>;

Handlers & HandlersOf(Receivers & receivers)
{
    Handlers & handlers = Kept<Handlers>();
    for (Receiver & receiver : receivers)
        handlers.push_back(std::make_unique<Event::LCHandler>(receiver, &Receiver::OnValue));
    return handlers;
}

/// A receiver behind a virtual call, and nothing else of an event.
struct Slot {
    virtual ~Slot() = default;
    virtual void Call(int & value) = 0;
};
struct ReceiverSlot : Slot {
    explicit ReceiverSlot(Receiver & of) : receiver(&of) {}
    void Call(int & value) override { receiver->OnValue(value); }
    Receiver * receiver;
};

/// Fires once, where each receiver must be called once, and registers the firing.
void RegisterFiring(std::string const & workload, std::string const & implementation, Receivers & receivers,
                    auto fire)
{
    fire(1);
    for (Receiver const & receiver : receivers) bench::Require(receiver.sum == 1, implementation.c_str());
    bench::Register(workload, implementation, 1, [fire] { fire(1); });
}

void Firing(std::size_t count)
{
    std::string const workload = "W12.fire-" + std::to_string(count);
    {
        Receivers & receivers = Kept<Receivers>(count);
        Event & event = Kept<Event>();
        for (auto & handler : HandlersOf(receivers)) event << *handler;
        RegisterFiring(workload, "ours", receivers, [&event](int value) { event(value); });
    }
    {
        Receivers & receivers = Kept<Receivers>(count);
        auto & slots = Kept<std::list<std::unique_ptr<Slot>>>();
        for (Receiver & receiver : receivers) slots.push_back(std::make_unique<ReceiverSlot>(receiver));
        RegisterFiring(bench::Bound(workload), "a list of virtual calls", receivers, [&slots](int value) {
            for (auto const & slot : slots) slot->Call(value);
        });
    }
#ifdef PEER_SIGC
    {
        Receivers & receivers = Kept<Receivers>(count);
        auto & signal = Kept<sigc::signal<void, int &>>();
        for (Receiver & receiver : receivers) signal.connect(sigc::mem_fun(receiver, &Receiver::OnValue));
        RegisterFiring(workload, "sigc", receivers, [&signal](int value) { signal.emit(value); });
    }
#endif
#ifdef PEER_BOOST
    {
        Receivers & receivers = Kept<Receivers>(count);
        auto & signal = Kept<boost::signals2::signal<void(int &)>>();
        for (Receiver & receiver : receivers)
            signal.connect([&receiver](int & value) { receiver.OnValue(value); });
        RegisterFiring(workload, "boost", receivers, [&signal](int value) { signal(value); });
    }
#endif
#ifdef PEER_POCO
    {
        Receivers & receivers = Kept<Receivers>(count);
        auto & event = Kept<Poco::BasicEvent<int>>();
        for (Receiver & receiver : receivers) event += Poco::delegate(&receiver, &Receiver::OnValue);
        RegisterFiring(workload, "poco", receivers, [&event](int value) { event.notify(nullptr, value); });
    }
#endif
}

/// Registers `pass`, which hooks all receivers, does what it is given, and unhooks them: fired between, each
/// must be called once, and none afterwards.
void RegisterHooking(std::string const & implementation, Receivers & receivers, auto pass, auto fire)
{
    std::string const workload = "W12.subscribe-unsubscribe-100";
    std::string const row = workload + "/" + implementation;
    for (Receiver & receiver : receivers) receiver.sum = 0;
    pass(fire);
    fire();
    for (Receiver const & receiver : receivers) bench::Require(receiver.sum == 1, row.c_str());
    bench::Register(workload, implementation, receivers.size(), [pass] { pass([] {}); });
}

void Hooking()
{
    Receivers & receivers = Kept<Receivers>(100);
    Handlers & handlers = HandlersOf(receivers);
    static int one = 1;
    Event & event = Kept<Event>();
    RegisterHooking(
        "ours", receivers,
        [&](auto between) {
            for (auto & handler : handlers) event << *handler;
            between();
            for (auto & handler : handlers) event >> *handler;
        },
        [&] { event(one); });
#ifdef PEER_SIGC
    auto & signal = Kept<sigc::signal<void, int &>>();
    RegisterHooking(
        "sigc", receivers,
        [&](auto between) {
            std::vector<sigc::connection> connections;
            for (Receiver & receiver : receivers)
                connections.push_back(signal.connect(sigc::mem_fun(receiver, &Receiver::OnValue)));
            between();
            for (auto & connection : connections) connection.disconnect();
        },
        [&] { signal.emit(one); });
#endif
#ifdef PEER_POCO
    auto & poco = Kept<Poco::BasicEvent<int>>();
    RegisterHooking(
        "poco", receivers,
        [&](auto between) {
            for (Receiver & receiver : receivers) poco += Poco::delegate(&receiver, &Receiver::OnValue);
            between();
            for (Receiver & receiver : receivers) poco -= Poco::delegate(&receiver, &Receiver::OnValue);
        },
        [&] { poco.notify(nullptr, one); });
#endif
}

}  // namespace

int main(int count, char * arguments[])
{
    for (std::size_t const receivers : {1, 10, 100}) Firing(receivers);
    Hooking();
    benchmark::Initialize(&count, arguments);
    benchmark::RunSpecifiedBenchmarks();
}
