// Eight threads under load for some seconds: each with texts, lists, dates and documents of its own, in its own
// message loop, and all with one reader-writer lock. Fails if anything is not as it must be, or if memory grows.
// Usage: load SECONDS

#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <thread>
#include <unistd.h>
#include <vector>

#include "QRTCL_DataTypes.h"
#include "documents/LHCDocument.h"

// The C library guards its zone by a lock that the thread sanitizer does not see.
extern "C" char const * __tsan_default_suppressions();
extern "C" char const * __tsan_default_suppressions() { return "race:tzset_internal\n"; }

namespace {

constexpr double largestGrowth = 4.0;  // MiB; not held against the sanitizers, which keep what is freed

void Require(bool holds, LCString const & what)
{
    if (holds) return;
    std::fprintf(stderr, "broken: %s\n", what.c_str());
    std::_Exit(1);
}

/// MiB that the process holds in memory.
double Resident()
{
    long pages = 0, resident = 0;
    std::ifstream("/proc/self/statm") >> pages >> resident;
    return static_cast<double>(resident) * static_cast<double>(::sysconf(_SC_PAGESIZE)) / 1048576.0;
}

/// Two numbers whose sum is 0 for everybody who holds the lock.
struct Balance {
    void Move(int amount)
    {
        Require(lock.LockWriter(0xFFFFFFFF), "a writer without time-out gets the lock");
        left += amount;
        right -= amount;
        lock.UnlockWriter();
    }
    void Check()
    {
        if (!lock.LockReader(1)) return;  // in time or not at all
        Require(left + right == 0, "nobody reads while somebody writes");
        lock.UnlockReader();
    }
    LCRWCriticalSection lock;
    long left = 0, right = 0;
};

struct Worker {
    Worker(Balance & shared, LCString const & file) : balance(shared), path(file) { thread.OnExecute << run; }
    void Run(LCThread &)
    {
        LCEvent1Param<LCTimer &>::LCHook const onQuick(quick.OnTick, this, &Worker::UseValues);
        LCEvent1Param<LCTimer &>::LCHook const onSlow(slow.OnTick, this, &Worker::UseDocument);
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
        balance.Move(n % 7);
        for (int i = 0; i < 4; ++i) balance.Check();
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

    Balance & balance;
    LCString const path;
    Worker * next = nullptr;
    std::atomic<std::thread::id> loop;
    unsigned long values = 0, documents = 0, received = 0;
    LCTimer quick, slow;
    LCEvent1Param<LCThread &>::LCHandler run{*this, &Worker::Run};
    LHCThread thread{true};
};

}  // namespace

int main(int, char ** arguments)
{
    LCQRTCL_DataTypesInit::Init(nullptr);
    std::chrono::duration<double> const time(std::atof(arguments[1]));
    std::string folder = (std::filesystem::temp_directory_path() / "qrtcl-load-XXXXXX").string();
    Require(::mkdtemp(folder.data()) != nullptr, "a temporary folder");
    Balance balance;
    std::vector<std::unique_ptr<Worker>> workers;
    for (char const c : {'a', 'b', 'c', 'd', 'e', 'f', 'g', 'h'})
        workers.push_back(std::make_unique<Worker>(balance, LCString(folder + "/" + c)));
    for (std::size_t i = 0; i < 8; ++i) workers[i]->next = workers[(i + 1) % 8].get();
    for (auto const & worker : workers) worker->thread.Resume();

    std::this_thread::sleep_for(time / 10);
    double const first = Resident();
    std::this_thread::sleep_for(time * 0.9);
    double const last = Resident();

    for (auto const & worker : workers) {
        Require(LHCMessageLoop::Post(worker->loop, [] { LHCMessageLoop::Quit(); }), "each thread has its loop");
        worker->thread.WaitFor(0xFFFFFFFF);
    }
    std::filesystem::remove_all(folder);
    unsigned long values = 0, documents = 0, received = 0;
    for (auto const & worker : workers) {
        Require(worker->values > 0 && worker->documents > 0 && worker->received > 0, "no thread starves");
        values += worker->values;
        documents += worker->documents;
        received += worker->received;
    }
    std::printf("%lu rounds of values, %lu documents, %lu calls between threads; %.1f MiB, at the end %.1f\n", values,
                documents, received, first, last);
    Require(QRTCL_TEST_SANITIZED || last - first <= largestGrowth, "memory does not grow");
    LCQRTCL_DataTypesInit::Terminate();
}
