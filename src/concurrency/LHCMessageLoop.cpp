#include "concurrency/LHCMessageLoop.h"

#include <algorithm>
#include <deque>
#include <memory>
#include <mutex>
#include <utility>
#include <vector>

#include "concurrency/detail/LoopTimers.h"
#include "platform/Protection.h"
#include "platform/Ticking.h"

using namespace qrtcl::platform;
using qrtcl::TimerAccess;
using qrtcl::TimerStart;

namespace {

/// A tick to come. Later ones are less: the earliest is the front of the heap.
struct Tick {
    Moment due;
    TimerStart start;
    Moment interval;

    bool operator<(Tick const & other) const
    {
        return due != other.due ? due > other.due : start > other.start;
    }
};

class Loop {
public:
    /// The calling thread's, made if need be; null if that can't be done.
    static Loop * Current();
    /// Null if the thread has none.
    static Loop * Existing();

    Loop();
    Loop(Loop const &) = delete;
    Loop & operator=(Loop const &) = delete;
    ~Loop();

    void Run();
    void Quit() { mbvQuit = true; }
    bool Process(std::uint32_t timeout);
    int GetDescriptor();
    static bool Post(std::thread::id thread, std::function<void()> & call);

    void MakeRoom(TimerAccess const & access);
    void Start(TimerStart start, int interval) noexcept;
    /// For another event loop that waits.
    void ArmIfWatched()
    {
        if (mbvWatched) Arm(NextDue());
    }

private:
    bool Handle();
    bool RunCalls(bool quit);
    bool RunTicks(bool quit);
    LCTimer * NextTick(Moment now);
    Moment NextDue();
    void RemoveFront();
    void Arm(Moment moment);

    std::thread::id const mivThread = std::this_thread::get_id();
    /// Another event loop waits for the alarm: it is always set to what comes next, not only for a wait of
    /// our own.
    bool mbvWatched = false;
    bool mbvQuit = false;
    TimerAccess const * mopAccess = nullptr;
    std::vector<Tick> movTicks;  // a heap; those of stopped timers stay until they are due or too many

    // Under the lock of all loops.
    Moment mivArmed = never;
    std::deque<std::function<void()>> movCalls;
    Loop * mopNext = nullptr;

    /// Negative if the system gives none; nobody then sees the loop. The last member: what comes up before it
    /// may fail for want of memory.
    int const mivAlarm = OpenAlarm();
};

constinit std::mutex covLoopsLock;
constinit Loop * copLoops = nullptr;

/// The loop of this thread. It goes with the thread, and is not made again by what goes after it.
constinit thread_local Loop * cotLoop = nullptr;
constinit thread_local bool cotHadLoop = false;

Loop * Loop::Existing() { return cotLoop; }

Loop * Loop::Current()
{
    if (cotHadLoop) return cotLoop;
    Uninterrupted const uninterrupted;
    auto loop = std::make_unique<Loop>();
    if (loop->mivAlarm < 0) return nullptr;
    cotLoop = loop.release();
    cotHadLoop = true;
    AtThreadEnd([](void *) { delete std::exchange(cotLoop, nullptr); }, nullptr);
    return cotLoop;
}

Loop::Loop()
{
    if (mivAlarm < 0) return;
    std::lock_guard const guard(covLoopsLock);
    mopNext = std::exchange(copLoops, this);
}

Loop::~Loop()
{
    if (mivAlarm < 0) return;
    {
        Uninterrupted const uninterrupted;
        std::lock_guard const guard(covLoopsLock);
        Loop ** place = &copLoops;
        while (*place != this) place = &(*place)->mopNext;
        *place = mopNext;
    }
    CloseAlarm(mivAlarm);
}

void Loop::Run()
{
    while (!mbvQuit) Process(noLimit);
    mbvQuit = false;
}

bool Loop::Process(std::uint32_t timeout)
{
    Moment const until = timeout == noLimit ? never : TickNow() + Moment{timeout} * 1'000'000;
    bool ran = Handle();
    while (!ran && TickNow() < until) {
        Moment const due = NextDue();
        Arm(due);
        AwaitAlarm(mivAlarm, due, until);
        ran = Handle();
    }
    ArmIfWatched();
    return ran;
}

int Loop::GetDescriptor()
{
    mbvWatched = true;
    ArmIfWatched();
    return mivAlarm;
}

bool Loop::Handle()
{
    // A pending end is the business of `Run`; one that comes in here leaves the rest due.
    bool const quit = mbvQuit;
    bool const called = RunCalls(quit);
    return RunTicks(quit) || called;
}

/// Those that are there now: calls that post themselves again do not keep the ticks waiting.
bool Loop::RunCalls(bool quit)
{
    bool ran = false;
    std::size_t count = 1;
    for (std::size_t i = 0; i < count && mbvQuit == quit; ++i) {
        std::function<void()> call;
        {
            Uninterrupted const uninterrupted;
            std::lock_guard const guard(covLoopsLock);
            if (movCalls.empty()) break;
            if (i == 0) count = movCalls.size();
            call = std::move(movCalls.front());
            movCalls.pop_front();
        }
        ran = true;
        call();
    }
    return ran;
}

bool Loop::RunTicks(bool quit)
{
    bool ran = false;
    Moment const now = TickNow();
    while (mbvQuit == quit) {
        LCTimer * const timer = NextTick(now);
        if (timer == nullptr) break;
        ran = true;
        mopAccess->tick(*timer);
    }
    return ran;
}

/// The timer whose tick is the earliest due, or null. Its next tick is the first of its period that is not
/// over, so it has one at most in one round.
LCTimer * Loop::NextTick(Moment now)
{
    Uninterrupted const uninterrupted;
    while (!movTicks.empty() && movTicks.front().due <= now) {
        Tick tick = movTicks.front();
        RemoveFront();
        if (LCTimer * const timer = mopAccess->find(tick.start)) {
            tick.due += ((now - tick.due) / tick.interval + 1) * tick.interval;
            movTicks.push_back(tick);
            std::push_heap(movTicks.begin(), movTicks.end());
            return timer;
        }
    }
    return nullptr;
}

/// When the next running timer is due.
Moment Loop::NextDue()
{
    Uninterrupted const uninterrupted;
    while (!movTicks.empty() && mopAccess->find(movTicks.front().start) == nullptr) RemoveFront();
    return movTicks.empty() ? never : movTicks.front().due;
}

void Loop::RemoveFront()
{
    std::pop_heap(movTicks.begin(), movTicks.end());
    movTicks.pop_back();
}

void Loop::Arm(Moment moment)
{
    Uninterrupted const uninterrupted;
    std::lock_guard const guard(covLoopsLock);
    if (!movCalls.empty()) moment = 0;
    // One that has gone off must be set in any case: that makes it unreadable.
    if (moment == mivArmed && TickNow() < moment) return;
    mivArmed = moment;
    SetAlarm(mivAlarm, moment);
}

bool Loop::Post(std::thread::id thread, std::function<void()> & call)
{
    Uninterrupted const uninterrupted;
    std::lock_guard const guard(covLoopsLock);
    for (Loop * loop = copLoops; loop != nullptr; loop = loop->mopNext) {
        if (loop->mivThread != thread) continue;
        loop->movCalls.push_back(std::move(call));
        loop->mivArmed = 0;
        SetAlarm(loop->mivAlarm, 0);
        return true;
    }
    return false;
}

void Loop::MakeRoom(TimerAccess const & access)
{
    mopAccess = &access;
    if (movTicks.size() > 2 * access.count() + 64) {
        std::erase_if(movTicks, [&](Tick const & tick) { return access.find(tick.start) == nullptr; });
        std::make_heap(movTicks.begin(), movTicks.end());
    }
    if (movTicks.size() == movTicks.capacity()) movTicks.reserve(2 * movTicks.size() + 16);
}

void Loop::Start(TimerStart start, int interval) noexcept
{
    Moment const period = std::max(interval, 1) * Moment{1'000'000};
    movTicks.push_back({TickNow() + period, start, period});
    std::push_heap(movTicks.begin(), movTicks.end());
    ArmIfWatched();
}

}  // namespace

namespace qrtcl {

bool MakeRoomForTicks(TimerAccess const & access)
{
    Loop * const loop = Loop::Current();
    if (loop != nullptr) loop->MakeRoom(access);
    return loop != nullptr;
}

void StartTicks(TimerStart start, int interval) noexcept { Loop::Existing()->Start(start, interval); }

void ForgetStopped() noexcept
{
    if (Loop * const loop = Loop::Existing()) loop->ArmIfWatched();
}

}  // namespace qrtcl

void LHCMessageLoop::Run()
{
    if (Loop * const loop = Loop::Current()) loop->Run();
}

void LHCMessageLoop::Quit()
{
    if (Loop * const loop = Loop::Current()) loop->Quit();
}

bool LHCMessageLoop::ProcessMessages(unsigned int timeoutMilliseconds)
{
    Loop * const loop = Loop::Current();
    return loop != nullptr && loop->Process(timeoutMilliseconds);
}

int LHCMessageLoop::GetDescriptor()
{
    Loop * const loop = Loop::Current();
    return loop != nullptr ? loop->GetDescriptor() : -1;
}

bool LHCMessageLoop::Post(std::thread::id thread, std::function<void()> call)
{
    return Loop::Post(thread, call);
}
