#include "concurrency/LCRWCriticalSection.h"

#include <chrono>
#include <future>
#include <random>

#include "concurrency/Concurrent.h"
#include "support/Support.h"

namespace {

constexpr LCULong forever = 0xFFFFFFFF;

static_assert(!std::is_copy_constructible_v<LCRWCriticalSection> &&
              !std::is_copy_assignable_v<LCRWCriticalSection>);

/// What another thread gets, at once.
template <typename Call> bool Elsewhere(Call call) { return std::async(std::launch::async, call).get(); }

bool MayRead(LCRWCriticalSection & lock)
{
    return Elsewhere([&] {
        bool const may = lock.LockReader(0);
        if (may) lock.UnlockReader();
        return may;
    });
}

bool MayWrite(LCRWCriticalSection & lock)
{
    return Elsewhere([&] {
        bool const may = lock.LockWriter(0);
        if (may) lock.UnlockWriter();
        return may;
    });
}

TEST(RWCriticalSection, ReadersShareAndAWriterIsAlone)
{
    LCRWCriticalSection lock;
    ASSERT_TRUE(lock.LockReader(0));
    EXPECT_TRUE(MayRead(lock));
    EXPECT_FALSE(MayWrite(lock));
    EXPECT_TRUE(MayRead(lock));  // the writer that could not has left nothing behind
    ASSERT_TRUE(lock.LockReader(0));
    lock.UnlockReader();
    EXPECT_FALSE(MayWrite(lock));
    EXPECT_TRUE(Elsewhere([&] {  // a reader lock belongs to no thread
        lock.UnlockReader();
        return true;
    }));
    EXPECT_TRUE(MayWrite(lock));

    ASSERT_TRUE(lock.LockWriter(forever));
    EXPECT_FALSE(MayRead(lock));
    EXPECT_FALSE(MayWrite(lock));
    lock.UnlockWriter();
    EXPECT_TRUE(MayRead(lock));
    EXPECT_TRUE(MayWrite(lock));
}

TEST(RWCriticalSection, TheWriterMayWriteAgainAndRead)
{
    LCRWCriticalSection lock;
    ASSERT_TRUE(lock.LockWriter(0));
    ASSERT_TRUE(lock.LockWriter(0));
    lock.UnlockWriter();
    EXPECT_FALSE(MayRead(lock));

    ASSERT_TRUE(lock.LockReader(0));
    EXPECT_FALSE(lock.LockWriter(1));  // it would wait for itself
    EXPECT_FALSE(MayRead(lock));       // and still holds what it held
    lock.UnlockWriter();
    EXPECT_TRUE(MayRead(lock));  // the reader lock is left
    EXPECT_FALSE(MayWrite(lock));
    lock.UnlockReader();
    EXPECT_TRUE(MayWrite(lock));
}

TEST(RWCriticalSection, TimeOutsLastAsLongAsTheySay)
{
    LCRWCriticalSection read, written;
    read.LockReader(0);
    written.LockWriter(0);
    struct { char const * name; std::function<bool()> wait; } const rows[] = {
        {"a reader behind a writer", [&] { return written.LockReader(20); }},
        {"a writer behind a writer", [&] { return written.LockWriter(20); }},
        {"a writer behind a reader", [&] { return read.LockWriter(20); }},
    };
    for (auto const & row : rows) {
        SCOPED_TRACE(row.name);
        auto const start = std::chrono::steady_clock::now();
        EXPECT_FALSE(Elsewhere(row.wait));
        EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(20));
    }
    EXPECT_TRUE(MayRead(read));
    written.UnlockWriter();
    EXPECT_TRUE(MayWrite(written));
}

/// A thread that asks for a lock, and writes its name into the order once it has it.
class Asking {
public:
    Asking(LCRWCriticalSection & lock, bool asWriter, LCULong timeout, std::string & order, char name)
        : movThread([=, this, &lock, &order] {
              mivNumber = ::gettid();
              if (!(asWriter ? lock.LockWriter(timeout) : lock.LockReader(timeout))) return;
              static std::mutex orderLock;
              {
                  std::lock_guard const guard(orderLock);
                  order += name;
              }
              asWriter ? lock.UnlockWriter() : lock.UnlockReader();
          })
    {
        AwaitAsleep(mivNumber);
    }
    ~Asking() { movThread.join(); }

private:
    std::atomic<int> mivNumber{0};
    std::thread movThread;
};

TEST(RWCriticalSection, WhoComesFirstIsFirstAndAWaitingWriterStopsLaterReaders)
{
    LCRWCriticalSection lock;
    std::string order;
    {
        lock.LockWriter(0);
        Asking const r(lock, false, forever, order, 'r');
        Asking const a(lock, true, forever, order, 'A');
        Asking const s(lock, false, forever, order, 's');
        Asking const t(lock, false, forever, order, 's');
        Asking const b(lock, true, forever, order, 'B');
        lock.UnlockWriter();
    }
    EXPECT_EQ(order, "rAssB");
    order.clear();
    {
        lock.LockReader(0);
        Asking const a(lock, true, forever, order, 'A');
        EXPECT_FALSE(MayRead(lock));
        Asking const r(lock, false, forever, order, 'r');
        lock.UnlockReader();
    }
    EXPECT_EQ(order, "Ar");
}

TEST(RWCriticalSection, AWriterThatGivesUpLetsThoseBehindItIn)
{
    LCRWCriticalSection lock;
    std::string order;
    lock.LockReader(0);
    {
        Asking const a(lock, true, 100, order, 'A');
        Asking const r(lock, false, forever, order, 'r');
        Asking const s(lock, false, forever, order, 'r');
    }
    EXPECT_EQ(order, "rr");
    EXPECT_TRUE(MayRead(lock));
    lock.UnlockReader();
    EXPECT_TRUE(MayWrite(lock));
}

TEST(RWCriticalSection, NeitherReadersNorWritersStarve)
{
    for (bool const othersWrite : {false, true}) {
        LCRWCriticalSection lock;
        std::atomic<bool> over{false};
        std::vector<std::thread> others;
        for (int i = 0; i < 4; ++i) {
            others.emplace_back([&] {
                while (!over) {
                    if (othersWrite) {
                        lock.LockWriter(forever);
                        lock.UnlockWriter();
                    } else {
                        lock.LockReader(forever);
                        std::this_thread::yield();
                        lock.UnlockReader();
                    }
                }
            });
        }
        for (int i = 0; i < Rounds(100); ++i) {
            if (othersWrite) {
                lock.LockReader(forever);
                lock.UnlockReader();
            } else {
                lock.LockWriter(forever);
                lock.UnlockWriter();
            }
        }
        over = true;
        for (auto & other : others) other.join();
    }
}

// Everything at once: readers and writers, nested locks, and time-outs that are often over.
TEST(RWCriticalSection, InvariantsHoldUnderManyThreads)
{
    for (unsigned const threads : {2u, 4u, 8u}) {
        LCRWCriticalSection lock;
        long first = 0, second = 0;  // equal whenever nobody writes
        long written = 0;
        std::atomic<long> expected{0};
        std::atomic<int> faults{0};
        auto const read = [&](LCULong timeout) {
            if (!lock.LockReader(timeout)) return;
            if (first != second) ++faults;
            lock.UnlockReader();
        };
        auto const write = [&](LCULong timeout, bool nested, bool yield) {
            if (!lock.LockWriter(timeout)) return;
            ++first;
            if (yield) std::this_thread::yield();
            if (nested) {
                if (!lock.LockWriter(timeout)) ++faults;
                ++written;
                lock.UnlockWriter();
                if (!lock.LockReader(0)) ++faults;
                lock.UnlockReader();
            } else {
                ++written;
            }
            ++second;
            ++expected;
            lock.UnlockWriter();
        };
        std::vector<std::thread> users;
        for (unsigned i = 0; i < threads; ++i) {
            users.emplace_back([&, i] {
                std::minstd_rand random(i + 1);
                for (int round = 0; round < Rounds(20'000); ++round) {
                    auto const choice = random() % 100;
                    LCULong const timeout = choice % 3 == 0 ? forever : choice % 3 == 1 ? 0 : 1;
                    if (choice < 60) {
                        read(timeout);
                    } else {
                        write(timeout, choice % 2 == 0, choice > 97);
                    }
                }
            });
        }
        for (auto & user : users) user.join();
        EXPECT_EQ(faults, 0) << threads;
        EXPECT_EQ(first, second) << threads;
        EXPECT_EQ(written, expected) << threads;
        EXPECT_TRUE(MayWrite(lock)) << threads;
    }
}

}  // namespace
