#include "concurrency/LCRWCriticalSection.h"

#include <cstring>
#include <future>
#include <sstream>

#include "concurrency/Concurrent.h"

namespace {

/// A thread that does one thing after the other.
struct Actor {
    ~Actor() { LHCMessageLoop::Post(thread.get_id(), LHCMessageLoop::Quit); }
    void Do(std::function<bool()> function)
    {
        auto const task = std::make_shared<std::packaged_task<bool()>>(std::move(function));
        Await([&] { return LHCMessageLoop::Post(thread.get_id(), [task] { (*task)(); }); });
        waiting = task->get_future();
    }
    std::future<bool> waiting;
    std::jthread thread{LHCMessageLoop::Run};
};

bool Sleeps(int thread)
{
    std::string number, name, state;
    std::ifstream("/proc/self/task/" + std::to_string(thread) + "/stat") >> number >> name >> state;
    return state == "S";
}

/// Plays a script of steps: who, and what. r and w ask for a reader or writer lock without waiting, and get it (+) or
/// not (-); R and W wait for one, t and T for 20 ms; = is what became of that wait, ~ says that it goes on; x and y
/// unlock; d waits to write, unlocks and destroys the lock. The sanitizers see whether the unlock that let it in still
/// touches it.
void Play(char const * rule, std::string const & script)
{
    auto lock = std::make_unique<LCRWCriticalSection>();
    std::map<char, Actor> actors;
    std::istringstream steps(script);
    for (std::string step; steps >> step;) {
        SCOPED_TRACE(rule + (": " + step));
        Actor & actor = actors[step[0]];
        char const what = step[1];
        LCULong const timeout = what == 'r' || what == 'w' ? 0 : std::strchr("RWd", what) != nullptr ? forever : 20;
        std::atomic<int> id{0};
        auto const act = [&lock, &id, what, timeout] {
            if (what == 'x') return lock->UnlockReader(), true;
            if (what == 'y') return lock->UnlockWriter(), true;
            auto const start = std::chrono::steady_clock::now();
            id = ::gettid();
            bool const reads = std::strchr("rRt", what) != nullptr;
            bool const got = reads ? lock->LockReader(timeout) : lock->LockWriter(timeout);
            if (what == 'd') lock->UnlockWriter(), lock.reset();
            EXPECT_TRUE(got || std::chrono::steady_clock::now() - start >= std::chrono::milliseconds(timeout));
            return got;
        };
        if (std::strchr("=~", what) == nullptr) actor.Do(act);
        if (std::strchr("RWtTd", what) != nullptr) Await([&] { return Sleeps(id); });
        bool const ended = std::strchr("rwxy=", what) != nullptr;
        EXPECT_TRUE(!ended || actor.waiting.get() != step.ends_with('-'));
        EXPECT_TRUE(what != '~' || actor.waiting.wait_for(std::chrono::seconds(0)) == std::future_status::timeout);
    }
}

TEST(RWCriticalSection, GoesByItsRules)
{
    struct { char const *rule, *script; } const rows[] = {
        {"readers share, and keep writers out", "Ar+ Br+ Cw- Cr+ Ar+ Ax Ax Cw- Cx Bx Cw+ Ar- Aw- Cy Ar+"},
        {"a reader lock belongs to no thread", "Ar+ Bx Cw+"},
        {"the writer may write again and read", "Aw+ Aw+ Ay Br- Ar+ Br- Ay Br+ Bx Bw- Ax Bw+"},
        {"a writer that reads would wait for itself", "Aw+ Ar+ Aw- AT A=- Br- Ay Br+ Cw- Ax Bx Cw+"},
        {"a waiting writer stops later readers", "Ar+ BW Cr- CR Dr- B~ C~ Ax B=+ C~ By C=+ Dr+"},
        {"who comes first is first", "Aw+ BR CW DR ER FW Ay B=+ C~ Bx C=+ D~ E~ F~ Cy D=+ E=+ F~ Dx F~ Ex F=+"},
        {"time-outs leave nothing behind", "Aw+ BT Ct DT B=- C=- D=- Ay Bw+ By Ar+ CT C=- Br+"},
        {"a writer that gives up lets those behind in", "Ar+ BT CR DW B=- C=+ D~ Ax Cx D=+"},
        {"one that waits behind it too", "Ar+ BW CT DR C=- D~ Ax B=+ D~ By D=+"},
        {"who holds it last may destroy it", "Aw+ Bd Ay B=+"}};
    for (auto const & row : rows) Play(row.rule, row.script);
}

// Everything at once: readers and writers, nested locks, and time-outs that are often over. That all come to their end
// shows that nobody starves.
TEST(RWCriticalSection, InvariantsHoldUnderManyThreads)
{
    LCRWCriticalSection lock;
    long first = 0, second = 0;  // equal whenever nobody writes
    std::atomic<long> faults{0};
    auto const work = [&](unsigned seed) {
        std::minstd_rand random(seed);
        for (int round = 0; round < Rounds(40'000); ++round) {
            auto const choice = random() % 100;
            LCULong const timeout = choice % 3 == 0 ? forever : choice % 3 == 1 ? 0 : 1;
            if (choice < 60) {
                if (!lock.LockReader(timeout)) continue;
                faults += first != second;
                lock.UnlockReader();
            } else if (lock.LockWriter(timeout)) {
                faults += first++ != second;
                if (choice > 97) std::this_thread::yield();
                faults += !lock.LockWriter(timeout) || !lock.LockReader(0);
                lock.UnlockReader();
                lock.UnlockWriter();
                faults += first != ++second;
                lock.UnlockWriter();
            }
        }
    };
    std::vector<std::jthread> users;
    for (unsigned i = 0; i < 6; ++i) users.emplace_back(work, i + 1);
    users.clear();
    EXPECT_EQ(std::tuple(faults.load(), first, lock.LockWriter(0)), std::tuple(0, second, true));
}

}  // namespace
