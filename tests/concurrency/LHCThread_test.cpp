#include "concurrency/LHCThread.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <mutex>
#include <optional>
#include <poll.h>
#include <set>
#include <signal.h>
#include <sys/resource.h>

#include "concurrency/Concurrent.h"
#include "concurrency/LCRWCriticalSection.h"
#include "concurrency/LCThreadList.h"
#include "platform/Threads.h"

namespace platform = qrtcl::platform;

namespace {

static_assert(!std::is_constructible_v<LHCThread, char const *> && !std::is_convertible_v<bool, LHCThread>);

constexpr char const * notCreated = "Thread not yet created, call the start() method.";

std::string Complaint(auto call)
{
    try {
        call();
    } catch (LHCThread::LCLocalThreadException const & failure) { return failure.GetMessageA().str(); }
    return "none";
}

long CountThreads()
{
    std::filesystem::directory_iterator const tasks("/proc/self/task");
    return std::distance(begin(tasks), end(tasks));
}

void Sleep(std::atomic<int> & id)
{
    for (id = ::gettid();;) ::pause();
}

TEST(Thread, RunsItsReceiversOnAThreadOfItsOwnAndMayRunAgain)
{
    std::vector<bool> terminated;
    std::atomic<bool> hold{false};
    Runner thread([&](LCThread & self) {
        terminated.push_back(self.IsTerminated());
        EXPECT_NE(::gettid(), ::getpid());
        Await([&] { return !hold.load(); });
    });
    LCEvent1Param<LCThread &>::LCHook const second(thread.OnExecute, thread, &Runner::Run);
    thread.Suspend();  // nothing to suspend, nothing to wait for
    EXPECT_EQ(Complaint([&] { thread.WaitFor(0); }), notCreated);
    EXPECT_FALSE(thread.IsTerminated());
    for (std::size_t run = 1; run <= 2; ++run) {
        hold = true;
        thread.Resume();
        thread.WaitFor(1);  // the end of the time is not reported
        hold = false;
        thread.WaitFor(forever);
        EXPECT_EQ(terminated.size(), 2 * run);
        EXPECT_TRUE(thread.IsTerminated());
    }
    EXPECT_EQ(terminated, (std::vector{false, false, true, true}));  // restarted, from the outset
    thread.WaitFor(forever);

    LHCThread asked(true), atOnce(false);
    asked.Terminate();
    atOnce.WaitFor(forever);
    EXPECT_TRUE(asked.IsTerminated() && atOnce.IsTerminated());
}

TEST(Thread, SuspensionsCountAndResumingARunningThreadDoesNothing)
{
    std::atomic<unsigned> other{0}, count{0};
    std::atomic<int> passed{0};
    Runner measure([&](LCThread &) { CountForEver(other); }), thread([&](LCThread &) { CountForEver(count); });
    for (Runner * const each : {&measure, &thread, &thread}) each->Resume();  // one too many: no debt
    for (int i = 0; i < Rounds(20); ++i) {
        Await([&, before = count.load()] { return count != before; });
        thread.Suspend();
        thread.Suspend();
        thread.Resume();
        unsigned const stopped = count;
        Await([&, before = other.load()] { return other - before > 1000; });
        ASSERT_EQ(count, stopped) << i;
        thread.Resume();
    }
    Runner itself([&](LCThread & self) {
        for (; passed < 100; ++passed) self.Suspend();
        CountForEver(count);
    });
    Await([&] { return itself.Resume(), passed == 100; });
}

TEST(Thread, FailuresOfTheSystemAreThrownWithItsTextAndLowPrioritiesAreTheSystems)
{
    std::atomic<int> id{0};
    Runner thread([&](LCThread &) { Sleep(id); });
    auto const control = [](platform::Thread &) { return EPERM; };
    std::string const again = std::strerror(EAGAIN), notPermitted = std::strerror(EPERM);
    platform::ReplaceThreadServices({.start = [](platform::ThreadPtr &, void (*)(void *), void *) { return EAGAIN; }});
    EXPECT_EQ(Complaint([&] { thread.Resume(); }), again);
    EXPECT_EQ(Complaint([&] { LHCThread{false}; }), again);
    EXPECT_EQ(Complaint([&] { thread.WaitFor(0); }), notCreated);
    platform::ReplaceThreadServices({});
    thread.Resume();  // what has failed to start can be started
    auto const wait = [](platform::Thread &, std::uint32_t) { return EPERM; };
    platform::ReplaceThreadServices({.wait = wait, .stop = control, .resume = control});
    EXPECT_EQ(Complaint([&] { thread.Suspend(); }), notPermitted);
    EXPECT_EQ(Complaint([&] { thread.Resume(); }), notPermitted);
    EXPECT_EQ(Complaint([&] { thread.WaitFor(0); }), notPermitted);
    platform::ReplaceThreadServices({});

    Await([&] { return id != 0; });
    auto const nice = [](int of) { return ::getpriority(PRIO_PROCESS, static_cast<id_t>(of)); };
    thread.SetPriorityLower();
    EXPECT_EQ(nice(id), std::min(nice(::getpid()) + 5, 19));
    thread.SetPriorityLowest();
    EXPECT_EQ(nice(id), std::min(nice(::getpid()) + 10, 19));
}

// Any thread may ask anything of a thread at any time; it may end or be started again between two steps.
TEST(Thread, ControllersMayWorkOnOneThreadTogether)
{
    std::atomic<unsigned> count{0};
    Runner thread([&](LCThread &) {
        for (int i = 0; i < 20'000; ++i) count.store(count.load(std::memory_order_relaxed) + 1);
    });
    thread.Resume();
    std::set<std::string> const expected = {"none", "No Thread alive.", "Thread already started."};
    auto const control = [&] {
        for (int round = 0; round < Rounds(300); ++round) {
            EXPECT_TRUE(expected.contains(Complaint([&] { thread.Suspend(), thread.Resume(); })));
            thread.WaitFor(0);
        }
    };
    std::jthread const first(control), second(control), third(control);
}

TEST(ThreadList, OwnsItsThreadsAndSkipsNullPointers)
{
    long const before = CountThreads();
    std::atomic<int> started{0}, id{0};
    LCThreadList list;
    list.push_back(new Runner([&](LCThread &) { ++started; }));
    list.push_back(new Runner([&](LCThread &) { Sleep(id); }));
    for (LCThread * const each : list) each->Resume();
    list.insert(++list.begin(), nullptr);
    list.WaitFor(1);  // for each
    Await([&] { return started == 1 && id != 0; });
    LCThreadList(list).clear();  // only one of the two owns
    list.ClearWithContents();
    EXPECT_TRUE(list.empty());
    Await([&] { return CountThreads() == before; });
}

// The forced end.

std::atomic<unsigned> ignored;
LCRWCriticalSection readLocked, writeLocked;
std::mutex heldMutex;
int emptyPipe[2];

/// What a receiver does for ever.
struct Kind {
    char const * name;
    void (*body)();
    bool busy = false, insideSanitizers = false;
} const kinds[] = {
    {"busy", [] { CountForEver(ignored); }, true},
    {"asleep", [] { std::this_thread::sleep_for(std::chrono::hours(1)); }},
    {"polling", [] { ::poll(nullptr, 0, -1); }},
    {"reading", [] { char c; if (::read(emptyPipe[0], &c, 1) > 0) ignored = 1; }},
    {"waiting for a mutex", [] { heldMutex.lock(); }},
    {"waiting to read", [] { writeLocked.LockReader(forever); }},
    {"waiting to write behind a writer", [] { writeLocked.LockWriter(forever); }},
    {"waiting to write behind a reader", [] { readLocked.LockWriter(3'600'000); }},
    {"locking", [] { LCRWCriticalSection lock; lock.LockWriter(forever); lock.UnlockWriter(); }, true, true},
    {"allocating", [] { std::vector<char>(ignored++ % 5000 + 1).at(0) = 1; }, true, true},
    {"allocating texts", [] { LCString text; while (text.size() < 500) text += "0123456789"; }, true, true},
};

TEST(ForcedEnd, LeavesTheProcessHealthy)
{
    ASSERT_EQ(::pipe(emptyPipe), 0);
    heldMutex.lock();
    for (Kind const & kind : kinds) {
        if (sanitized && kind.insideSanitizers) continue;
        SCOPED_TRACE(kind.name);
        ASSERT_TRUE(readLocked.LockReader(0) && writeLocked.LockWriter(0));
        long const before = CountThreads();
        for (int i = 0; i < Rounds(kind.busy ? 50 : 200); ++i) {
            std::atomic<bool> started{false};
            Runner thread([&](LCThread &) {
                for (started = true;;) kind.body();
            });
            thread.Resume();
            if (i % 4 != 0) Await([&] { return started.load(); });
            if (i % 3 == 0) thread.Suspend();
            if (i % 6 == 0) thread.Resume();
        }
        Await([&] { return CountThreads() == before; });

        // The locks are as if the ended threads had never come, and the heap works for new threads.
        readLocked.UnlockReader();
        writeLocked.UnlockWriter();
        for (LCRWCriticalSection * const lock : {&readLocked, &writeLocked}) {
            ASSERT_TRUE(lock->LockWriter(0) && lock->LockReader(0));
            lock->UnlockReader();
            lock->UnlockWriter();
        }
        std::jthread([] {
            for (std::size_t n = 1; n < 10'000; ++n) std::vector<char>(n % 5000 + 1).at(0) = 1;
        });
    }
    heldMutex.unlock();
    for (int const end : emptyPipe) ::close(end);
}

TEST(ForcedEnd, LeavesAnEventThatWasFiringAtRest)
{
    struct Receiver {
        void OnEvent() { ++calls == 1 ? CountForEver(ignored) : void(); }
        std::atomic<int> calls{0};
    } receiver;
    LCEvent0Param event;
    LCEvent0Param::LCHook const first(event, receiver, &Receiver::OnEvent);
    std::optional<Runner> thread(std::in_place, [&](LCThread &) { event(); });
    thread->Resume();
    Await([&] { return receiver.calls == 1; });
    thread.reset();
    LCEvent0Param::LCHook const second(event, receiver, &Receiver::OnEvent);
    event();
    EXPECT_EQ(receiver.calls, 3);
}

/// Says when a thread has really gone: its own objects are destroyed also when it ends by force.
struct Farewell {
    static void Promise() { thread_local Farewell const farewell; }
    ~Farewell() { gone = true; }
    static inline std::atomic<bool> gone;
};

TEST(ForcedEnd, ComesAtOnceOnTheThreadItselfAndLaterToOneThatBlocksSignals)
{
    std::atomic<bool> survived{false}, unblock{false};
    static Runner * volatile remains;  // its memory can't be given back any more
    remains = new Runner([&](LCThread & self) {
        Farewell::Promise();
        delete &self;
        survived = true;
    });
    remains->Resume();
    Await([] { return Farewell::gone.exchange(false); });
    EXPECT_FALSE(survived);

    Work work{[&](LCThread &) {
        Farewell::Promise();
        sigset_t all, old;
        ::sigfillset(&all);
        ::pthread_sigmask(SIG_SETMASK, &all, &old);
        survived = true;
        Await([&] { return unblock.load(); });
        ::pthread_sigmask(SIG_SETMASK, &old, nullptr);
        CountForEver(ignored);
    }};
    auto blocked = std::make_unique<LHCThread>(true);
    blocked->OnExecute << work.handler;
    blocked->Resume();
    Await([&] { return survived.load(); });
    blocked.reset();
    EXPECT_FALSE(Farewell::gone);
    unblock = true;
    Await([] { return Farewell::gone.load(); });
}

}  // namespace
