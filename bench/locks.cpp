// The reader-writer lock without contention, and between two threads that mostly read.

#include <atomic>
#include <mutex>
#include <shared_mutex>
#include <thread>

#include "Bench.h"
#include "concurrency/LCRWCriticalSection.h"

#ifdef PEER_POCO
#include <Poco/RWLock.h>
#endif
#ifdef PEER_QT
#include <QReadWriteLock>
#endif

namespace {

/// One of the locks, under the names of the standard library.
struct Ours {
    void lock_shared() { lock_.LockReader(0xFFFFFFFF); }
    void unlock_shared() { lock_.UnlockReader(); }
    void lock() { lock_.LockWriter(0xFFFFFFFF); }
    void unlock() { lock_.UnlockWriter(); }
    LCRWCriticalSection lock_;
};
#ifdef PEER_POCO
struct Poco_ {
    void lock_shared() { lock_.readLock(); }
    void unlock_shared() { lock_.unlock(); }
    void lock() { lock_.writeLock(); }
    void unlock() { lock_.unlock(); }
    Poco::RWLock lock_;
};
#endif
#ifdef PEER_QT
struct Qt_ {
    void lock_shared() { lock_.lockForRead(); }
    void unlock_shared() { lock_.unlock(); }
    void lock() { lock_.lockForWrite(); }
    void unlock() { lock_.unlock(); }
    QReadWriteLock lock_;
};
#endif

constexpr int operations = 200'000;

template <typename Lock> void RegisterAll(std::string const & implementation)
{
    bench::Register("W13.read-uncontended", implementation, operations, [] {
        Lock lock;
        for (int i = 0; i < operations; ++i) std::shared_lock<Lock> const guard(lock);
    });
    bench::Register("W13.write-uncontended", implementation, operations, [] {
        Lock lock;
        for (int i = 0; i < operations; ++i) std::lock_guard<Lock> const guard(lock);
    });
    bench::Register("W13.two-threads-95-percent-reads", implementation, 2 * operations, [] {
        Lock lock;
        long value = 0, written[2] = {};
        auto const work = [&](int self) {
            long read = 0;
            for (int i = 0; i < operations; ++i) {
                if (i % 20 == 0) {
                    std::lock_guard<Lock> const guard(lock);
                    ++value;
                    ++written[self];
                } else {
                    std::shared_lock<Lock> const guard(lock);
                    read += value;
                }
            }
            benchmark::DoNotOptimize(read);
        };
        std::thread other(work, 1);
        work(0);
        other.join();
        bench::Require(value == written[0] + written[1], "what two threads have written");
    })->UseRealTime();
}

/// What no lock does without: a word is exchanged when it is taken and when it is left.
void RegisterExchanges()
{
    static constexpr auto exchange = [](std::atomic<unsigned> & word) {
        for (unsigned i = 0; i < operations; ++i) {
            benchmark::DoNotOptimize(word.exchange(i, std::memory_order_acquire));
            benchmark::DoNotOptimize(word.exchange(0, std::memory_order_release));
        }
    };
    std::string const what = "two atomic exchanges";
    for (char const * const workload : {"W13.read-uncontended", "W13.write-uncontended"})
        bench::RegisterBound(workload, what, operations, [] {
            std::atomic<unsigned> word{0};
            exchange(word);
        });
    bench::RegisterBound("W13.two-threads-95-percent-reads", what, 2 * operations, [] {
        std::atomic<unsigned> word{0};
        std::jthread const other([&] { exchange(word); });
        exchange(word);
    })->UseRealTime();
}

}  // namespace

int main(int count, char * arguments[])
{
    RegisterAll<Ours>("ours");
    RegisterExchanges();
    RegisterAll<std::shared_timed_mutex>("std");
#ifdef PEER_POCO
    RegisterAll<Poco_>("poco");
#endif
#ifdef PEER_QT
    RegisterAll<Qt_>("qt");
#endif
    benchmark::Initialize(&count, arguments);
    benchmark::RunSpecifiedBenchmarks();
}
