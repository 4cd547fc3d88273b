#include "platform/Threads.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <dlfcn.h>
#include <link.h>
#include <mutex>
#include <new>
#include <pthread.h>
#include <sched.h>
#include <setjmp.h>
#include <signal.h>
#include <string_view>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <time.h>
#include <ucontext.h>
#include <unistd.h>
#include <utility>

#include "foundation/FiringMark.h"
#include "platform/Protection.h"
#include "platform/Waiting.h"

// A thread is stopped and ended by a signal, whose handler does on the thread itself what its controller asks
// for: it sleeps, or it jumps back to the first function of the thread, which then returns as usual. So the
// system's and the sanitizers' books stay right, and the thread can be joined. Jumping over frames that have
// destructors is outside of what C++ defines; no destructor runs, and nothing else happens with the compilers
// in use.
//
// The jump must not leave a lock of the process behind, above all that of the heap. So the handler looks
// where the thread was interrupted, and answers "not now" inside the libraries that have such locks; the
// controller then asks again. A call in which the thread sleeps in the system is taken as safe. In a program
// that is linked with the C library statically, none of this can be told apart.

namespace qrtcl::platform {

namespace {

/// Nothing in the signal handler may enter the thread sanitizer, which it may have interrupted.
#define QRTCL_IN_HANDLER __attribute__((no_sanitize("thread")))

constexpr std::uint32_t patience = 250;  // milliseconds, then a thread that can't be ended is left alone

enum Request : std::uint32_t { goOn, stop, end };
enum Answer : std::uint32_t { none, stopped, notNow, gone };
enum Phase : std::uint32_t { starting, running, abandoned, finished };

}  // namespace

class Thread {
public:
    Thread(void (*function)(void *), void * argument) : mopFunction(function), mopArgument(argument) {}

    void (*mopFunction)(void *);
    void * mopArgument;
    ThreadPtr movSelf;  // until the thread leaves
    pthread_t mivHandle{};
    pid_t mivId = 0;
    sigjmp_buf moaLanding;

    std::atomic<std::uint32_t> mivRequest{goOn};
    std::atomic<std::uint32_t> mivAnswer{none};
    std::atomic<std::uint32_t> mivPhase{starting};

    std::mutex movControl;  // one controller at a time
    int mivStops = 0;
    bool mbvClosed = false;
    timer_t mopReminder{};  // of an abandoned thread

    // Where it slept when it was last asked to end.
    std::uintptr_t mivSleepsAt = 0;
    std::uintptr_t mivSleepsOn = 0;
};

namespace {

// Read in the handler, as the protection is.
__attribute__((tls_model("initial-exec"))) constinit thread_local Thread * copCurrent = nullptr;

// Where the thread was interrupted.

/// Code of a library that has locks of the whole process.
struct CodeRange {
    std::uintptr_t begin;
    std::uintptr_t end;
    bool loader;
};
constinit std::array<CodeRange, 32> coaSystemCode{};
constinit std::size_t civSystemCodeCount = 0;

/// The parser of the documents is one: each load takes locks in it.
bool IsSystemLibrary(std::string_view path)
{
    static constexpr std::string_view names[] = {
        "ld-",        "libc.",    "libpthread.", "libdl.",    "libstdc++.", "libc++",  "libgcc_s.",
        "libunwind.", "libasan.", "libtsan.",    "libubsan.", "liblsan.",   "libxml2."};
    std::string_view const file = path.substr(path.rfind('/') + 1);
    return std::any_of(std::begin(names), std::end(names), [&](auto name) { return file.starts_with(name); });
}

/// Notes the libraries of the system and the one that gives out memory, unless that is the program itself.
int NoteSystemCode(dl_phdr_info * info, std::size_t, void * heapFunction)
{
    std::string_view const path = info->dlpi_name;
    auto const heap = reinterpret_cast<std::uintptr_t>(heapFunction);
    for (int i = 0; i < info->dlpi_phnum; ++i) {
        auto const & part = info->dlpi_phdr[i];
        if (part.p_type != PT_LOAD || (part.p_flags & PF_X) == 0) continue;
        std::uintptr_t const begin = info->dlpi_addr + part.p_vaddr;
        std::uintptr_t const end = begin + part.p_memsz;
        bool const hasHeap = begin <= heap && heap < end;
        if (path.empty() || !(hasHeap || IsSystemLibrary(path)) || civSystemCodeCount == coaSystemCode.size())
            continue;
        bool const loader = path.substr(path.rfind('/') + 1).starts_with("ld-");
        coaSystemCode[civSystemCodeCount++] = {begin, end, loader};
    }
    return 0;
}

#if defined(__x86_64__)

/// System calls that sleep for long and are begun anew after a signal: the thread then stands in front of
/// them. Writing is not among them: what the C library writes, it writes under the lock of a stream.
QRTCL_IN_HANDLER bool IsSleepingCall(long number)
{
    switch (number) {
    case SYS_futex:
    case SYS_read:
    case SYS_readv:
    case SYS_pread64:
    case SYS_recvfrom:
    case SYS_recvmsg:
    case SYS_sendto:
    case SYS_sendmsg:
    case SYS_accept:
    case SYS_accept4:
    case SYS_connect:
    case SYS_wait4:
    case SYS_waitid:
    case SYS_flock:
    case SYS_fcntl:
    case SYS_ioctl:
    case SYS_restart_syscall: return true;
    default: return false;
    }
}

/// Whether the thread, interrupted in library code, slept in a system call. One that stands in front of a
/// call is believed when it does so twice, in the same frame.
QRTCL_IN_HANDLER bool Slept(Thread & thread, ucontext_t const & context, CodeRange const & range)
{
    auto const & registers = context.uc_mcontext.gregs;
    auto const counter = static_cast<std::uintptr_t>(registers[REG_RIP]);
    auto const * const code = reinterpret_cast<unsigned char const *>(counter);
    auto const isCall = [](unsigned char const * at)
                            QRTCL_IN_HANDLER { return at[0] == 0x0F && at[1] == 0x05; };

    if (counter - range.begin >= 2 && isCall(code - 2) && registers[REG_RAX] == -EINTR) return true;
    if (range.end - counter < 2 || !isCall(code) || !IsSleepingCall(registers[REG_RAX])) return false;
    auto const stack = static_cast<std::uintptr_t>(registers[REG_RSP]);
    bool const again = thread.mivSleepsAt == counter && thread.mivSleepsOn == stack;
    thread.mivSleepsAt = counter;
    thread.mivSleepsOn = stack;
    return again;
}

QRTCL_IN_HANDLER bool MayEnd(Thread & thread, ucontext_t const & context)
{
    auto const counter = static_cast<std::uintptr_t>(context.uc_mcontext.gregs[REG_RIP]);
    for (std::size_t i = 0; i < civSystemCodeCount; ++i) {
        CodeRange const & range = coaSystemCode[i];
        if (range.begin <= counter && counter < range.end)
            return !range.loader && Slept(thread, context, range);
    }
    return cotProtection.undo == nullptr;
}

#else

/// Not known for this processor: no thread is ended by force, all are abandoned.
bool MayEnd(Thread &, ucontext_t const &) { return false; }

#endif

// The handler.

QRTCL_IN_HANDLER void Reply(Thread & thread, Answer answer)
{
    thread.mivAnswer.store(answer, std::memory_order_release);
    WakeAll(thread.mivAnswer);
}

QRTCL_IN_HANDLER void Sleep(Thread & thread)
{
    while (thread.mivRequest.load(std::memory_order_acquire) == stop) {
        Reply(thread, stopped);  // again when woken: resumed and stopped anew, perhaps
        SleepWhile(thread.mivRequest, stop, never);
    }
}

/// Does what is asked for, as it stands when the signal comes.
QRTCL_IN_HANDLER void Serve(Thread & thread, ucontext_t const & context)
{
    cotProtection.putOff = cotProtection.IsUninterrupted();
    if (cotProtection.putOff) return Reply(thread, notNow);
    Sleep(thread);
    if (thread.mivRequest.load(std::memory_order_acquire) != end) return;
    if (!MayEnd(thread, context)) return Reply(thread, notNow);
    thread.mivRequest.store(goOn, std::memory_order_relaxed);
    for (Undo const * undo = cotProtection.undo; undo != nullptr; undo = undo->Outer()) (*undo)();
    ForsakeFirings();
    ::siglongjmp(thread.moaLanding, 1);
}

QRTCL_IN_HANDLER void OnSignal(int, siginfo_t *, void * context)
{
    int const error = errno;
    if (copCurrent != nullptr) Serve(*copCurrent, *static_cast<ucontext_t const *>(context));
    errno = error;
}

/// Past the C library and a sanitizer in front of it, which would hold the signal back until a moment that a
/// busy thread never reaches. What the C library had set up, the way back from the handler, stays.
void SetHandlerInKernel(int number)
{
    struct {
        void (*handler)(int, siginfo_t *, void *);
        unsigned long flags;
        void (*restorer)();
        std::uint64_t mask;
    } action{};
    ::syscall(SYS_rt_sigaction, number, nullptr, &action, sizeof action.mask);
    action.handler = OnSignal;
    ::syscall(SYS_rt_sigaction, number, &action, nullptr, sizeof action.mask);
}

/// Takes the last real-time signal that nobody uses. 0 if there is none.
int PrepareSignal()
{
    ::dl_iterate_phdr(NoteSystemCode, ::dlsym(RTLD_DEFAULT, "malloc"));
    for (int number = SIGRTMAX; number >= SIGRTMIN; --number) {
        struct sigaction action {};
        if (::sigaction(number, nullptr, &action) != 0 || action.sa_handler != SIG_DFL) continue;
        action.sa_sigaction = OnSignal;
        action.sa_flags = SA_SIGINFO | SA_RESTART;
        ::sigfillset(&action.sa_mask);
        if (::sigaction(number, &action, nullptr) != 0) continue;
        SetHandlerInKernel(number);
        return number;
    }
    return 0;
}

int Signal()
{
    static int const number = PrepareSignal();
    return number;
}

// The thread itself.

void Leave(Thread & thread)
{
    copCurrent = nullptr;
    std::atomic_signal_fence(std::memory_order_seq_cst);  // from here on the handler does nothing
    cotProtection.uninterrupted = 0;
    cotProtection.undo = nullptr;
    ThreadPtr const self = std::move(thread.movSelf);
    if (self->mivPhase.exchange(finished) == abandoned) ::timer_delete(self->mopReminder);
    WakeAll(self->mivPhase);
    self->mivAnswer.store(gone);
    WakeAll(self->mivAnswer);
}

void * Run(void * argument)
{
    Thread & thread = *static_cast<Thread *>(argument);
    thread.mivId = ::gettid();
    sigset_t ours;
    ::sigemptyset(&ours);
    ::sigaddset(&ours, Signal());
    ::pthread_sigmask(SIG_UNBLOCK, &ours, nullptr);
    if (sigsetjmp(thread.moaLanding, 1) == 0) {
        copCurrent = &thread;
        thread.mivPhase.store(running, std::memory_order_release);
        WakeAll(thread.mivPhase);
        thread.mopFunction(thread.mopArgument);
    }
    Leave(thread);
    return nullptr;
}

// The controller.

bool IsFinished(Thread const & thread) { return thread.mivPhase.load(std::memory_order_acquire) == finished; }

void AwaitRunning(Thread const & thread)
{
    while (thread.mivPhase.load(std::memory_order_acquire) == starting) {
        SleepWhile(thread.mivPhase, starting, never);
    }
}

/// Asks until the thread has stopped, or until it has ended. False if it has not in due time.
bool Demand(Thread & thread, Request request)
{
    AwaitRunning(thread);
    Moment const until = After(patience);
    thread.mivRequest.store(request, std::memory_order_release);
    for (;;) {
        thread.mivAnswer.store(none);
        if (thread.mivPhase.load() == finished) return true;
        WakeAll(thread.mivRequest);
        ::pthread_kill(thread.mivHandle, Signal());
        SleepWhile(thread.mivAnswer, none, After(5));
        std::uint32_t const answer = thread.mivAnswer.load(std::memory_order_acquire);
        if (request == stop && answer == stopped) return true;
        if (Now() > until) return false;
        if (answer == notNow) ::sched_yield();
    }
}

/// Has the signal sent again and again, until it comes at the right moment. False if the thread has just
/// ended.
bool Abandon(Thread & thread)
{
    struct sigevent event {};
    event.sigev_notify = SIGEV_THREAD_ID;
    event.sigev_signo = Signal();
    event._sigev_un._tid = thread.mivId;
    if (::timer_create(CLOCK_MONOTONIC, &event, &thread.mopReminder) != 0) return !IsFinished(thread);

    struct itimerspec const often{{0, 1'000'000}, {0, 1'000'000}};
    ::timer_settime(thread.mopReminder, 0, &often, nullptr);
    std::uint32_t phase = running;
    if (thread.mivPhase.compare_exchange_strong(phase, abandoned)) return true;
    ::timer_delete(thread.mopReminder);
    return false;
}

// The services.

int Start(ThreadPtr & out, void (*function)(void *), void * argument)
try {
    Signal();
    auto const thread = std::make_shared<Thread>(function, argument);
    thread->movSelf = thread;
    int const error = ::pthread_create(&thread->mivHandle, nullptr, Run, thread.get());
    if (error != 0) thread->movSelf = nullptr;
    if (error == 0) out = thread;
    return error;
} catch (std::bad_alloc const &) {
    return ENOMEM;
}

int Wait(Thread & thread, std::uint32_t milliseconds)
{
    Moment const until = After(milliseconds);
    for (;;) {
        std::uint32_t const phase = thread.mivPhase.load(std::memory_order_acquire);
        if (phase == finished || !SleepWhile(thread.mivPhase, phase, until)) return 0;
    }
}

int Stop(Thread & thread)
{
    if (Signal() == 0) return ENOTSUP;
    Uninterrupted const uninterrupted;
    std::lock_guard const control(thread.movControl);
    if (thread.mbvClosed || thread.mivStops++ != 0) return 0;
    if (&thread != copCurrent) {
        Demand(thread, stop);
    } else {
        thread.mivRequest.store(stop);
        cotProtection.putOff = true;  // until the lock is free
    }
    return 0;
}

int Resume(Thread & thread)
{
    Uninterrupted const uninterrupted;
    std::lock_guard const control(thread.movControl);
    if (thread.mivStops == 0 || --thread.mivStops != 0) return 0;
    thread.mivRequest.store(goOn, std::memory_order_release);
    WakeAll(thread.mivRequest);
    return 0;
}

constinit std::atomic<decltype(StartThread) *> cpvStart{Start};
constinit std::atomic<decltype(WaitForThread) *> cpvWait{Wait};
constinit std::atomic<decltype(StopThread) *> cpvStop{Stop};
constinit std::atomic<decltype(ResumeThread) *> cpvResume{Resume};

}  // namespace

int StartThread(ThreadPtr & thread, void (*function)(void *), void * argument)
{
    return cpvStart.load()(thread, function, argument);
}

int WaitForThread(Thread & thread, std::uint32_t milliseconds)
{
    return cpvWait.load()(thread, milliseconds);
}
int StopThread(Thread & thread) { return cpvStop.load()(thread); }
int ResumeThread(Thread & thread) { return cpvResume.load()(thread); }

void CatchUp() noexcept
{
    cotProtection.putOff = false;
    if (copCurrent != nullptr) ::pthread_kill(::pthread_self(), Signal());
}

void FinishUninterrupted() noexcept
{
    ++cotProtection.uninterrupted;
    std::atomic_signal_fence(std::memory_order_seq_cst);
}

void ReplaceThreadServices(ThreadServices const & services) noexcept
{
    cpvStart = services.start != nullptr ? services.start : Start;
    cpvWait = services.wait != nullptr ? services.wait : Wait;
    cpvStop = services.stop != nullptr ? services.stop : Stop;
    cpvResume = services.resume != nullptr ? services.resume : Resume;
}

bool EndThread(Thread & thread)
{
    if (&thread == copCurrent) {
        ::pthread_detach(::pthread_self());
        ForsakeFirings();
        ::siglongjmp(thread.moaLanding, 1);
    }
    Uninterrupted const uninterrupted;
    std::lock_guard const control(thread.movControl);
    return Demand(thread, end) || !Abandon(thread);
}

void CloseThread(Thread & thread)
{
    Uninterrupted const uninterrupted;
    std::lock_guard const control(thread.movControl);
    thread.mbvClosed = true;
    // Objects of the thread's own may still be on their way out, and may take their time.
    struct timespec const moment{0, 20'000};
    for (Moment const until = After(patience); thread.mivPhase != abandoned && Now() < until;) {
        if (::pthread_tryjoin_np(thread.mivHandle, nullptr) == 0) return;
        ::nanosleep(&moment, nullptr);
    }
    ::pthread_detach(thread.mivHandle);
}

void SetThreadPriority(Thread & thread, int level)
{
    AwaitRunning(thread);
    if (IsFinished(thread)) return;
    int const normal = ::getpriority(PRIO_PROCESS, static_cast<id_t>(::getpid()));
    ::setpriority(PRIO_PROCESS, static_cast<id_t>(thread.mivId), normal - 5 * level);
}

}  // namespace qrtcl::platform
