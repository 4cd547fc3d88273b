// Eight threads under load for some seconds: each with texts, lists, dates and documents of its own, in its own
// message loop, and all with one reader-writer lock. Fails if anything is not as it must be, or if memory grows.
// Usage: load SECONDS

#include <cstdio>
#include <unistd.h>

#include "QRTCL_DataTypes.h"
#include "documents/LHCDocument.h"
#include "support/Support.h"

// The C library guards its zone by a lock that the thread sanitizer does not see.
extern "C" __attribute__((visibility("default"))) char const * __tsan_default_suppressions();
extern "C" char const * __tsan_default_suppressions() { return "race:tzset_internal\n"; }

namespace {

void Require(bool holds, char const * what)
{
    if (holds) return;
    std::fprintf(stderr, "broken: %s\n", what);
    std::_Exit(1);
}

/// MiB that the process holds in memory.
double Resident()
{
    long pages = 0, resident = 0;
    std::ifstream("/proc/self/statm") >> pages >> resident;
    return static_cast<double>(resident) * static_cast<double>(::sysconf(_SC_PAGESIZE)) / 1048576.0;
}

struct Worker {
    void Run(LCThread &)
    {
        quick.SetInterval(1);
        slow.SetInterval(10);
        Require(quick.Start() && slow.Start(), "timers start");
        loop = std::this_thread::get_id();
        LHCMessageLoop::Run();
    }
    void UseValues(LCTimer &)
    {
        int const n = static_cast<int>(++values % 1000000);
        LCString text;
        for (int i = 0; i < 40; ++i) text += LCString(n + i) + (i % 2 == 0 ? "=even;" : "=odd;");
        LCStringList list;
        list.DivideTextInLines(text, ';', false);
        Require(list.GetValue(LCString(n + 39)) == "odd" && list.Str(';') + ";" == text, "lists");
        list.AppendList(LCStringList(list));
        list.SortCI();
        list.UniqueCI();
        Require(list.size() == 40 && text.Replace("even;", "").Contains(LCString(n) + "="), "texts");
        LCDateTime const date(2024, 2, 28, n % 24, 0, 0, 0, 60);
        LCTimeSpan const span(n / 8.0);
        Require((date + span) - span == date && date.GetTimeSpanHighPrecision(date + span) == span, "dates");
        Require(lock.LockWriter(0xFFFFFFFF), "a writer without time-out gets the lock");
        left += n;
        right -= n;
        lock.UnlockWriter();
        for (int i = 0; i < 4 && lock.LockReader(1); ++i) {  // in time or not at all
            Require(left + right == 0, "nobody reads while somebody writes");
            lock.UnlockReader();
        }
        LHCMessageLoop::Post(next->loop, [other = next] { ++other->received; });
    }
    void UseDocument(LCTimer &)
    {
        LHCDocument document, loaded;
        for (int i = 0; i < 50; ++i) {
            LCParagraph & part = *document.GetRootParagraph().CreateParagraph("part");
            part.SetParameterAsDateTime("date", LCDateTime::GetCurrentDateTime());
            part.SetParameterAsString("text", LCString("<&\x01\xE4>") + LCString(i), false);
        }
        Require(document.SaveToFile(path) && loaded.LoadFromFile(path), "files are saved and loaded");
        LCString saved, read;
        Require(document.SaveToText(saved) && loaded.SaveToText(read) && saved == read, "documents come back");
        ++documents;
    }

    static inline LCRWCriticalSection lock;
    static inline long left = 0, right = 0;  // their sum is 0 for everybody who holds the lock
    LCString path;
    Worker * next = nullptr;
    std::atomic<std::thread::id> loop;
    unsigned long values = 0, documents = 0, received = 0;
    LCTimer quick, slow;
    LCEvent1Param<LCTimer &>::LCHook onQuick{quick.OnTick, this, &Worker::UseValues};
    LCEvent1Param<LCTimer &>::LCHook onSlow{slow.OnTick, this, &Worker::UseDocument};
    LHCThread thread{true};
    LCEvent1Param<LCThread &>::LCHook onExecute{thread.OnExecute, this, &Worker::Run};
};

}  // namespace

int main(int, char ** arguments)
{
    LCQRTCL_DataTypesInit::Init(nullptr);
    std::chrono::duration<double> const time(std::atof(arguments[1]));
    TemporaryFolder const folder;
    Worker workers[8];
    for (std::size_t i = 0; i < 8; ++i) {
        workers[i].path = folder.Path(std::to_string(i));
        workers[i].next = &workers[(i + 1) % 8];
    }
    for (Worker & worker : workers) worker.thread.Resume();

    std::this_thread::sleep_for(time / 10);
    double const first = Resident();
    std::this_thread::sleep_for(time * 0.9);
    double const last = Resident();

    unsigned long values = 0, documents = 0, received = 0;
    for (Worker & worker : workers) {
        Require(LHCMessageLoop::Post(worker.loop, [] { LHCMessageLoop::Quit(); }), "each thread has its loop");
        worker.thread.WaitFor(0xFFFFFFFF);
        Require(worker.values > 0 && worker.documents > 0 && worker.received > 0, "no thread starves");
        values += worker.values;
        documents += worker.documents;
        received += worker.received;
    }
    std::printf("%lu rounds of values, %lu documents, %lu calls between threads; %.1f MiB, at the end %.1f\n", values,
                documents, received, first, last);
    // The sanitizers keep what is freed.
    Require(QRTCL_TEST_SANITIZED || last - first <= 4, "memory does not grow by more than 4 MiB");
    LCQRTCL_DataTypesInit::Terminate();
}
