#include "concurrency/LHCThread.h"

#include <cerrno>
#include <cstring>
#include <mutex>
#include <set>
#include <signal.h>

#include "concurrency/Concurrent.h"
#include "concurrency/LCThreadList.h"
#include "documents/LHCDocument.h"
#include "platform/Threads.h"

namespace {

static_assert(!std::is_constructible_v<LHCThread, char const *> && !std::is_convertible_v<bool, LHCThread>);

std::string Complaint(auto call)
{
    try {
        call();
    } catch (LHCThread::LCLocalThreadException const & failure) { return failure.GetMessageA().str(); }
    return "none";
}

/// From the first call on, one more thread is always there, and with it that of the thread sanitizer.
long CountThreads()
{
    [[maybe_unused]] static bool const started = (std::thread([] { for (;;) ::pause(); }).detach(), true);
    return std::distance(std::filesystem::directory_iterator("/proc/self/task"), {});
}

TEST(Thread, RunsItsReceiversOnAThreadOfItsOwnAndMayRunAgain)
{
    std::vector<bool> terminated;
    std::atomic<bool> hold{false};
    Runner thread([&](LCThread & self) {
        for (int twice = 0; twice < 2; ++twice, self.Terminate()) terminated.push_back(self.IsTerminated());
        EXPECT_NE(::gettid(), ::getpid());
        Await([&] { return !hold.load(); });
    });
    thread.Suspend();  // nothing to suspend
    for (std::size_t const run : {1u, 2u}) {
        hold = true;
        thread.Resume();
        thread.WaitFor(1);  // the end of the time is not reported
        hold = false;
        for (int twice = 0; twice < 2; ++twice) thread.WaitFor(forever);
        EXPECT_TRUE(terminated.size() == 2 * run && thread.IsTerminated());
    }
    EXPECT_EQ(terminated, (std::vector{false, true, true, true}));  // restarted, from the outset
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
    Runner thread([&](LCThread &) { for (id = ::gettid();;) ::pause(); });
    std::string const again = std::strerror(EAGAIN), notPermitted = std::strerror(EPERM);
    platform::ReplaceThreadServices({.start = [](platform::ThreadPtr &, void (*)(void *), void *) { return EAGAIN; }});
    EXPECT_EQ(Complaint([&] { thread.Resume(); }), again);
    EXPECT_EQ(Complaint([&] { LHCThread{false}; }), again);
    EXPECT_EQ(Complaint([&] { thread.WaitFor(0); }), "Thread not yet created, call the start() method.");
    platform::ReplaceThreadServices({});
    thread.Resume();  // what has failed to start can be started
    auto const fail = [](platform::Thread &, auto...) { return EPERM; };
    platform::ReplaceThreadServices({.wait = fail, .stop = fail, .resume = fail});
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
    Runner thread([&](LCThread &) { for (int i = 0; i < 20'000; ++i) ++count; });
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

// The forced end.

std::atomic<unsigned> ignored;
LCRWCriticalSection readLocked, writeLocked;
std::mutex heldMutex;
struct Endless { void OnEvent() { CountForEver(ignored); } } endless;
LCEvent0Param event;
LCEvent0Param::LCHook const onEvent(event, endless, &Endless::OnEvent);

/// What a receiver does for ever. Sanitizers keep locks of their own, inside the heap and elsewhere: a thread that is
/// always there can't be ended.
struct Kind { char const * name; void (*body)(); bool insideSanitizers = false; } const kinds[] = {
    {"asleep", [] { std::this_thread::sleep_for(std::chrono::hours(1)); }},
    {"waiting for a mutex", [] { heldMutex.lock(); }},
    {"waiting to read", [] { writeLocked.LockReader(forever); }},
    {"waiting to write behind a writer", [] { writeLocked.LockWriter(forever); }},
    {"waiting to write behind a reader", [] { readLocked.LockWriter(3'600'000); }},
    {"locking", [] { LCRWCriticalSection lock; lock.LockWriter(forever); lock.UnlockWriter(); }, true},
    {"allocating texts", [] { LCString text; while (text.size() < 500) text += "0123456789"; }, true},
    {"loading a document", [] { LHCDocument().LoadFromText("<a b='c'>d</a>"); }, true},
    {"firing", [] { event(); }},
    {"busy", [] { CountForEver(ignored); }}};

TEST(ForcedEnd, LeavesTheProcessHealthy)
{
    std::lock_guard const held(heldMutex);
    long const before = CountThreads();
    for (Kind const & kind : kinds) {
        if (QRTCL_TEST_SANITIZED && kind.insideSanitizers) continue;
        SCOPED_TRACE(kind.name);
        // The locks are as if the threads ended before had never come.
        ASSERT_TRUE(readLocked.LockReader(0) && writeLocked.LockWriter(0) && writeLocked.LockReader(0));
        for (int i = 0; i < Rounds(100); ++i) {
            std::atomic<bool> started{false};
            Runner thread([&](LCThread &) { for (started = true;;) kind.body(); });
            thread.Resume();
            if (i % 4 != 0) Await([&] { return started.load(); });
            if (i % 3 == 0) thread.Suspend();
            if (i % 6 == 0) thread.Resume();
        }
        Await([&] { return CountThreads() == before; });
        LCEvent0Param::LCHook const another(event, endless, &Endless::OnEvent);
        ASSERT_EQ(event.size(), 2u);  // at rest, one hooks to it at once
        for (LCRWCriticalSection * const lock : {&readLocked, &writeLocked}) lock->UnlockReader();
        writeLocked.UnlockWriter();
        EXPECT_TRUE(LHCDocument().LoadFromText("<a b='c'>d</a>"));
        std::jthread([] { for (std::size_t n = 1; n < 10'000; ++n) std::vector<char>(n % 5000 + 1).at(0) = 1; });
    }
}

TEST(ForcedEnd, ComesAtOnceOnTheThreadItselfAndLaterToOneOfAListThatBlocksSignals)
{
    long const before = CountThreads();
    static std::atomic<bool> survived{false}, blocks{false}, unblock{false};
    static Runner * volatile runner;  // its memory can't be given back any more
    runner = new Runner([](LCThread & self) {
        delete &self;
        survived = true;
    });
    runner->Resume();
    Await([&] { return CountThreads() == before; });
    EXPECT_FALSE(survived);

    auto list = Make<LCThreadList>({new LHCThread(false), nullptr, new Runner([](LCThread &) {
        sigset_t all, old;
        ::sigfillset(&all);
        ::pthread_sigmask(SIG_SETMASK, &all, &old);
        blocks = true;
        Await([] { return unblock.load(); });
        ::pthread_sigmask(SIG_SETMASK, &old, nullptr);
        CountForEver(ignored);
    })});
    list.back()->Resume();
    list.WaitFor(1);  // for each
    Await([] { return blocks.load(); });
    LCThreadList(list).clear();  // only one of the two owns
    list.ClearWithContents();
    EXPECT_EQ(CountThreads(), before + 1);
    unblock = true;
    Await([&] { return CountThreads() == before; });
}

}  // namespace
