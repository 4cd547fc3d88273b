#include "concurrency/LHCThread.h"

#include <cstring>
#include <mutex>
#include <poll.h>
#include <signal.h>
#include <sys/resource.h>
#include <unistd.h>

#include "concurrency/Concurrent.h"
#include "concurrency/LCRWCriticalSection.h"
#include "concurrency/LCThreadList.h"
#include "platform/Threads.h"
#include "support/Support.h"

namespace platform = qrtcl::platform;

namespace {

constexpr LCULong forever = 0xFFFFFFFF;

static_assert(!std::is_copy_constructible_v<LHCThread> && !std::is_copy_assignable_v<LHCThread>);
static_assert(!std::is_constructible_v<LHCThread, char const *> && !std::is_convertible_v<bool, LHCThread>);

template <typename Call> std::string Complaint(Call call)
{
    try {
        call();
    } catch (LHCThread::LCLocalThreadException const & failure) {
        return LHCThread::LCLocalThreadException(failure).GetMessageA().str();
    }
    return "none";
}

TEST(Thread, BeforeItsFirstStartThereIsNothingToWaitFor)
{
    bool ran = false;
    Runner thread([&](LCThread &) { ran = true; });
    EXPECT_FALSE(thread->IsTerminated());
    thread->Suspend();
    thread->SetPriorityLowest();
    EXPECT_EQ(Complaint([&] { thread->WaitFor(0); }), "Thread not yet created, call the start() method.");

    // Asking for the end is noted, and does not keep it from starting.
    thread->Terminate();
    EXPECT_TRUE(thread->IsTerminated());
    thread->Resume();
    thread->WaitFor(forever);
    EXPECT_TRUE(ran);
}

TEST(Thread, RunsItsReceiversInOrderOnAThreadOfItsOwnAndMayRunAgain)
{
    std::string order;
    std::thread::id id;
    LCThread * argument = nullptr;
    std::atomic<bool> hold{false}, terminatedAtStart{false};
    Runner thread([&](LCThread & self) {
        order += 'a';
        id = std::this_thread::get_id();
        argument = &self;
        terminatedAtStart = self.IsTerminated();
        Await([&] { return !hold.load(); });
    });
    struct {
        void Run(LCThread &) { order += 'b'; }
        std::string & order;
    } second{order};
    LCEvent1Param<LCThread &>::LCHandler handler(second, &decltype(second)::Run);
    thread->OnExecute << handler;
    for (char const * const expected : {"ab", "abab"}) {
        thread->Resume();
        thread->WaitFor(forever);
        EXPECT_EQ(order, expected);
        EXPECT_TRUE(thread->IsTerminated());
        EXPECT_NE(id, std::this_thread::get_id());
        EXPECT_EQ(argument, &*thread);
    }
    thread->WaitFor(forever);  // of an ended one: at once
    EXPECT_TRUE(terminatedAtStart);

    hold = true;
    thread->Resume();
    thread->WaitFor(1);  // the end of the time is not reported
    hold = false;
    thread->WaitFor(forever);
    EXPECT_EQ(order, "ababab");

    LHCThread atOnce(false);
    atOnce.WaitFor(forever);
    EXPECT_TRUE(atOnce.IsTerminated());
}

TEST(Thread, SuspensionsCountAndResumingARunningThreadDoesNothing)
{
    std::atomic<unsigned> other{0}, count{0};
    Runner measure([&](LCThread &) { CountForEver(other); });
    Runner thread([&](LCThread &) { CountForEver(count); });
    measure->Resume();
    thread->Resume();
    thread->Resume();  // one too many: not a debt of the next Suspend
    for (int i = 0; i < Rounds(20); ++i) {
        Await([&, before = count.load()] { return count != before; });
        thread->Suspend();
        thread->Suspend();
        thread->Resume();
        unsigned const stopped = count;
        Await([&, before = other.load()] { return other - before > 1000; });
        ASSERT_EQ(count, stopped) << i;
        thread->Resume();
    }
}

TEST(Thread, MaySuspendItselfUntilAnotherThreadResumesIt)
{
    std::atomic<int> passed{0};
    std::atomic<bool> leave{false};
    Runner thread([&](LCThread & self) {
        for (; passed < 100; ++passed) self.Suspend();
        Await([&] { return leave.load(); });
    });
    thread->Resume();
    for (int before = 0; before < 100; before = passed) {
        Await([&] {
            thread->Resume();  // in vain if it comes too early
            return passed > before;
        });
    }
    leave = true;
    thread->WaitFor(forever);
}

// The forced end.

/// Something a receiver does for ever.
struct Kind {
    char const * name;
    std::function<void(std::atomic<bool> & started)> body;
    bool busy = false;
    bool notUnderSanitizers = false;
};

std::atomic<unsigned> ignored;
LCRWCriticalSection heldForReading, heldForWriting;
std::mutex heldMutex;
int emptyPipe[2];

std::vector<Kind> const kinds = {
    {"busy",
     [](auto & started) {
         started = true;
         CountForEver(ignored);
     },
     true},
    {"asleep",
     [](auto & started) {
         started = true;
         for (;;) std::this_thread::sleep_for(std::chrono::hours(1));
     }},
    {"polling",
     [](auto & started) {
         started = true;
         for (;;) ::poll(nullptr, 0, -1);
     }},
    {"reading",
     [](auto & started) {
         started = true;
         char c;
         while (::read(emptyPipe[0], &c, 1) <= 0)
             ;
     }},
    {"waiting for a mutex",
     [](auto & started) {
         started = true;
         heldMutex.lock();
     }},
    {"waiting to read",
     [](auto & started) {
         started = true;
         heldForWriting.LockReader(forever);
     }},
    {"waiting to write behind a writer",
     [](auto & started) {
         started = true;
         heldForWriting.LockWriter(forever);
     }},
    {"waiting to write behind a reader, with a limit",
     [](auto & started) {
         started = true;
         heldForReading.LockWriter(3'600'000);
     }},
    {"taking and releasing a lock",
     [](auto & started) {
         started = true;
         LCRWCriticalSection lock;
         for (;;) {
             lock.LockWriter(forever);
             lock.UnlockWriter();
         }
     },
     true, true},
    {"allocating",
     [](auto & started) {
         started = true;
         for (std::size_t i = 1;; i = i % 5000 + 1) std::vector<char>(i).at(0) = 1;
     },
     true, true},
    {"allocating texts",
     [](auto & started) {
         started = true;
         for (LCString text;; text += "0123456789") {
             if (text.size() > 1000) text = LCString();
         }
     },
     true, true},
};

class ForcedEnd : public testing::TestWithParam<Kind> {};

TEST_P(ForcedEnd, LeavesTheProcessHealthy)
{
    if (sanitized && GetParam().notUnderSanitizers) return;
    ASSERT_EQ(::pipe(emptyPipe), 0);
    std::lock_guard const guard(heldMutex);
    ASSERT_TRUE(heldForReading.LockReader(0));
    ASSERT_TRUE(heldForWriting.LockWriter(0));
    long const before = CountThreads();
    int const rounds = Rounds(GetParam().busy || sanitized ? 100 : 500);
    for (int i = 0; i < rounds; ++i) {
        std::atomic<bool> started{false};
        Runner thread([&](LCThread &) { GetParam().body(started); });
        thread->Resume();
        if (i % 4 != 0) Await([&] { return started.load(); });
        if (i % 3 == 0) thread->Suspend();
        if (i % 6 == 0) thread->Resume();
    }
    Await([&] { return CountThreads() == before; });

    // Both locks are as if the ended threads had never come.
    heldForReading.UnlockReader();
    heldForWriting.UnlockWriter();
    for (LCRWCriticalSection * const lock : {&heldForReading, &heldForWriting}) {
        ASSERT_TRUE(lock->LockReader(0));
        lock->UnlockReader();
        ASSERT_TRUE(lock->LockWriter(0));
        lock->UnlockWriter();
    }
    std::vector<std::thread> users;
    for (int i = 0; i < 4; ++i) {
        users.emplace_back([] {
            for (std::size_t n = 1; n < 20'000; ++n) std::vector<char>(n % 5000 + 1).at(0) = 1;
        });
    }
    for (auto & user : users) user.join();
    ::close(emptyPipe[0]);
    ::close(emptyPipe[1]);
}

INSTANTIATE_TEST_SUITE_P(Kinds, ForcedEnd, testing::ValuesIn(kinds), [](auto const & kind) {
    std::string name = kind.param.name;
    std::erase_if(name, [](char c) { return c == ' ' || c == ','; });
    return name;
});

/// Says when a thread has really gone: its own objects are destroyed also when it ends by force.
class Farewell {
public:
    static void Promise() { thread_local Farewell const farewell; }
    static void Await()
    {
        ::Await([] { return gone.load(); });
        gone = false;
    }
    ~Farewell() { gone = true; }
    static inline std::atomic<bool> gone{false};
};

TEST(ForcedEnd, OnTheThreadItselfEndsItThereAndThen)
{
    static LHCThread * volatile remains;  // its memory can't be given back any more
    std::atomic<bool> survived{false};
    Runner thread([&](LCThread & self) {
        Farewell::Promise();
        delete &self;
        survived = true;
    });
    remains = thread.Release();
    remains->Resume();
    Farewell::Await();
    EXPECT_FALSE(survived);
}

TEST(ForcedEnd, OfAThreadThatBlocksAllSignalsIsMadeUpForLater)
{
    std::atomic<bool> blocked{false}, unblock{false};
    Runner thread([&](LCThread &) {
        Farewell::Promise();
        sigset_t all, old;
        ::sigfillset(&all);
        ::pthread_sigmask(SIG_SETMASK, &all, &old);
        blocked = true;
        Await([&] { return unblock.load(); });
        ::pthread_sigmask(SIG_SETMASK, &old, nullptr);
        CountForEver(ignored);
    });
    thread->Resume();
    Await([&] { return blocked.load(); });
    thread.Destroy();
    EXPECT_FALSE(Farewell::gone);
    unblock = true;
    Farewell::Await();
}

TEST(Thread, FailuresOfTheSystemAreThrownWithItsText)
{
    struct Replaced {
        explicit Replaced(platform::ThreadServices const & services)
        {
            platform::ReplaceThreadServices(services);
        }
        ~Replaced() { platform::ReplaceThreadServices({}); }
    };
    std::atomic<bool> leave{false};
    Runner thread([&](LCThread &) { Await([&] { return leave.load(); }); });
    constexpr auto fail = [](platform::Thread &) { return EPERM; };
    std::string const notPermitted = std::strerror(EPERM);
    {
        platform::ThreadServices services;
        services.start = [](platform::ThreadPtr &, void (*)(void *), void *) { return EAGAIN; };
        Replaced const replaced(services);
        EXPECT_EQ(Complaint([&] { thread->Resume(); }), std::strerror(EAGAIN));
        EXPECT_EQ(Complaint([&] { LHCThread{false}; }), std::strerror(EAGAIN));
        EXPECT_EQ(Complaint([&] { thread->WaitFor(0); }), "Thread not yet created, call the start() method.");
        EXPECT_FALSE(thread->IsTerminated());
    }
    thread->Resume();  // what has failed to start can be started
    {
        platform::ThreadServices services;
        services.stop = services.resume = fail;
        services.wait = [](platform::Thread &, std::uint32_t) { return EPERM; };
        Replaced const replaced(services);
        EXPECT_EQ(Complaint([&] { thread->Suspend(); }), notPermitted);
        EXPECT_EQ(Complaint([&] { thread->Resume(); }), notPermitted);
        EXPECT_EQ(Complaint([&] { thread->WaitFor(0); }), notPermitted);
    }
    leave = true;
    thread->WaitFor(forever);
}

TEST(Thread, PrioritiesAreThoseOfTheSystem)
{
    std::atomic<int> id{0};
    Runner thread([&](LCThread &) {
        id = ::gettid();
        for (;;) ::pause();
    });
    thread->Resume();
    Await([&] { return id != 0; });
    auto const nice = [](int of) { return ::getpriority(PRIO_PROCESS, static_cast<id_t>(of)); };
    int const normal = nice(::getpid());
    struct {
        void (LCThread::*set)();
        int below;
    } const rows[] = {
        {&LCThread::SetPriorityNormal, 0},    {&LCThread::SetPriorityLower, 5},
        {&LCThread::SetPriorityLowest, 10},   {&LCThread::SetPriorityHigher, -5},
        {&LCThread::SetPriorityHighest, -10},
    };
    for (auto const & row : rows) {
        int const before = nice(id);
        ((*thread).*row.set)();
        int const expected = std::clamp(normal + row.below, -20, 19);
        // Up only with the right to it.
        EXPECT_TRUE(nice(id) == expected || (expected < before && nice(id) == before)) << row.below;
    }
}

// A sanitizer reports the end of a process in its own way.
TEST(Thread, AnExceptionThatLeavesAReceiverEndsTheProcess)
{
    if (sanitized) return;
    testing::GTEST_FLAG(death_test_style) = "threadsafe";
    EXPECT_DEATH(
        {
            Runner thread([](LCThread &) { throw 1; });
            thread->Resume();
            thread->WaitFor(forever);
        },
        "terminate called");
}

TEST(ThreadList, OwnsItsThreadsAndSkipsNullPointers)
{
    long const before = CountThreads();
    std::atomic<int> started{0};
    Runner first([&](LCThread &) { ++started; }), second([&](LCThread &) {
        ++started;
        for (;;) ::pause();
    });
    LCThreadList list;
    list.push_back(first.Release());
    list.push_back(nullptr);
    list.push_back(second.Release());
    for (LCThread * const thread : list) {
        if (thread != nullptr) thread->Resume();
    }
    list.WaitFor(1);  // for each
    Await([&] { return started == 2; });

    LCThreadList other;
    other = list;
    EXPECT_EQ(other, list);
    other.clear();  // only one of them owns
    list.ClearWithContents();
    EXPECT_TRUE(list.empty());
    EXPECT_EQ(CountThreads(), before);
}

// Any thread may ask anything of a thread at any time; only the answers that a caller can expect come.
TEST(Thread, ControllersMayWorkOnOneThreadTogether)
{
    std::atomic<unsigned> count{0};
    Runner thread([&](LCThread &) {
        for (unsigned i = 0; i < 20'000; ++i) Count(count);
    });
    thread->Resume();
    std::vector<std::thread> controllers;
    std::atomic<int> oddities{0};
    for (int i = 0; i < 3; ++i) {
        controllers.emplace_back([&, i] {
            for (int round = 0; round < Rounds(300); ++round) {
                std::string const complaint = Complaint([&] {
                    thread->Suspend();
                    if (round % 3 == i) thread->SetPriorityNormal();
                    thread->Resume();
                });
                if (complaint != "none" && complaint != "No Thread alive." &&
                    complaint != "Thread already started.")
                    ++oddities;
                thread->WaitFor(0);
            }
        });
    }
    for (auto & controller : controllers) controller.join();
    EXPECT_EQ(oddities, 0);
}

}  // namespace
