#include "concurrency/LHCThread.h"

#include <atomic>
#include <mutex>
#include <system_error>
#include <thread>

#include "platform/Protection.h"
#include "platform/Threads.h"

using namespace qrtcl::platform;
using Failure = LHCThread::LCLocalThreadException;

/// What the thread and its owner share.
class LHCThreadState {
public:
    LHCThreadState(LHCThread & thread) : mopEvent(&thread.OnExecute), mopThread(&thread) {}

    bool IsRunning() const { return (mivFlags.load(std::memory_order_acquire) & running) != 0; }
    bool IsTerminated() const { return (mivFlags.load(std::memory_order_acquire) & terminated) != 0; }
    void Terminate() { mivFlags.fetch_or(terminated); }

    void Start();
    void Control(int (*service)(Thread &));
    void WaitFor(LCULong timeout);
    void SetPriority(int level);
    bool End();
    void LeaveToThread();

private:
    static constexpr std::uint32_t running = 1;     // a thread function is under way
    static constexpr std::uint32_t terminated = 2;  // the end has been asked for or reached

    static void Execute(void * state);
    ThreadPtr Handle();

    std::atomic<std::uint32_t> mivFlags{0};
    std::mutex movLock;  // around the handle
    ThreadPtr mopHandle;
    LCEvent1Param<LCThread &> * mopEvent;
    LHCThread * mopThread;
    LHCThreadState * mopNextLeft = nullptr;
};

namespace {

/// The states of threads that could not be ended. They are never freed; from here they can be found.
constinit std::atomic<LHCThreadState *> copLeft{nullptr};

void Check(int error)
{
    if (error != 0) throw Failure(static_cast<LCULong>(error));
}

[[noreturn]] void ThrowNotCreated() { throw Failure("Thread not yet created, call the start() method."); }

}  // namespace

ThreadPtr LHCThreadState::Handle()
{
    Uninterrupted const uninterrupted;
    std::lock_guard const guard(movLock);
    return mopHandle;
}

void LHCThreadState::Start()
{
    {
        Uninterrupted const uninterrupted;
        std::lock_guard const guard(movLock);
        if ((mivFlags.fetch_or(running) & running) != 0) throw Failure("Thread already started.");
        if (mopHandle) CloseThread(*mopHandle);
        mopHandle = nullptr;
        if (int const error = StartThread(mopHandle, Execute, this)) {
            mivFlags.fetch_and(~running);
            Check(error);
        }
    }
    std::this_thread::yield();
}

void LHCThreadState::Execute(void * argument)
{
    auto & self = *static_cast<LHCThreadState *>(argument);
    (*self.mopEvent)(*self.mopThread);
    // Stopped behind the store, it would sleep for ever: nobody resumes a thread that is not running.
    FinishUninterrupted();
    // The owner may delete the state from here on.
    self.mivFlags.store(terminated, std::memory_order_release);
}

void LHCThreadState::Control(int (*service)(Thread &))
{
    if (!IsRunning()) throw Failure("No Thread alive.");
    ThreadPtr const handle = Handle();
    if (!handle) ThrowNotCreated();
    Check(service(*handle));
}

void LHCThreadState::WaitFor(LCULong timeout)
{
    ThreadPtr const handle = Handle();
    if (!handle) ThrowNotCreated();
    if (IsRunning()) Check(WaitForThread(*handle, timeout));
}

void LHCThreadState::SetPriority(int level)
{
    if (ThreadPtr const handle = Handle()) SetThreadPriority(*handle, level);
}

/// False if the thread still needs this state.
bool LHCThreadState::End()
{
    ThreadPtr const handle = Handle();
    if (!handle) return true;
    bool const ended = !IsRunning() || EndThread(*handle);
    CloseThread(*handle);
    return ended;
}

void LHCThreadState::LeaveToThread() { mopNextLeft = copLeft.exchange(this); }

LHCThread::LCLocalThreadException::LCLocalThreadException(LCULong error)
    : movText(std::system_category().message(static_cast<int>(error)))
{}

LHCThread::LHCThread(Beginning beginning)
    : LCThread(beginning == Beginning::later), mopState(std::make_unique<LHCThreadState>(*this))
{
    if (beginning == Beginning::now) mopState->Start();
}

LHCThread::~LHCThread()
{
    if (!mopState->End()) mopState.release()->LeaveToThread();
}

void LHCThread::Resume()
{
    if (mopState->IsRunning()) {
        mopState->Control(ResumeThread);
    } else {
        mopState->Start();
    }
}

void LHCThread::Suspend()
{
    if (mopState->IsRunning()) mopState->Control(StopThread);
}

void LHCThread::Terminate() { mopState->Terminate(); }
bool LHCThread::IsTerminated() { return !mopState || mopState->IsTerminated(); }
void LHCThread::WaitFor(LCULong timeout) { mopState->WaitFor(timeout); }

void LHCThread::SetPriorityHighest() { mopState->SetPriority(2); }
void LHCThread::SetPriorityHigher() { mopState->SetPriority(1); }
void LHCThread::SetPriorityNormal() { mopState->SetPriority(0); }
void LHCThread::SetPriorityLower() { mopState->SetPriority(-1); }
void LHCThread::SetPriorityLowest() { mopState->SetPriority(-2); }
