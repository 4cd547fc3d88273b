#include "concurrency/LCTimer.h"

#include "concurrency/detail/LoopTimers.h"
#include "platform/Protection.h"

using qrtcl::platform::Uninterrupted;

namespace {

constexpr LCULong noLimit = 0xFFFFFFFF;

class WriterLock {
public:
    explicit WriterLock(LCRWCriticalSection & lock) : movLock(lock) { movLock.LockWriter(noLimit); }
    WriterLock(WriterLock const &) = delete;
    WriterLock & operator=(WriterLock const &) = delete;
    ~WriterLock() { movLock.UnlockWriter(); }

private:
    LCRWCriticalSection & movLock;
};

}  // namespace

/// What the message loop asks.
struct LCTimer::Access {
    static LCTimer * Find(qrtcl::TimerStart start)
    {
        movCS.LockReader(noLimit);
        LCTimer * const timer = movTimers.Find(start);
        movCS.UnlockReader();
        return timer;
    }
    static std::size_t Count() { return movTimers.GetCount(); }
    static void Tick(LCTimer & timer) { timer.DoTimer(); }

    static constexpr qrtcl::TimerAccess functions{Find, Count, Tick};
};

LCTimer & LCTimer::operator=(LCTimer const & other)
{
    if (mivID != other.mivID) Stop();
    OnTick = other.OnTick;
    mivID = other.mivID;
    mivInterval = other.mivInterval;
    return *this;
}

LCTimer::~LCTimer() { Stop(); }

void LCTimer::DoTimer() { OnTick(*this); }

bool LCTimer::Start()
{
    Uninterrupted const uninterrupted;
    Stop();
    if (!qrtcl::MakeRoomForTicks(Access::functions)) return false;
    qrtcl::TimerStart const start = [this] {
        WriterLock const lock(movCS);
        return movTimers.Insert(*this);
    }();
    mivID = qrtcl::TimerID(start);
    qrtcl::StartTicks(start, mivInterval);
    return true;
}

void LCTimer::Stop()
{
    if (mivID == 0) return;
    Uninterrupted const uninterrupted;
    movCS.LockWriter(noLimit);
    movTimers.Erase(mivID);
    movCS.UnlockWriter();
    mivID = 0;
    qrtcl::ForgetStopped();
}

void LCTimer::SetInterval(int interval)
{
    bool const running = IsRunning();
    Stop();
    mivInterval = interval;
    if (running) Start();
}
