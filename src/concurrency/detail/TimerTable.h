#pragma once

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <vector>

class LCTimer;

namespace qrtcl {

/// One start of a timer; never given twice. The lower half is the id that the timer shows; it comes round
/// after 4,294,967,295 starts.
using TimerStart = std::uint64_t;

constexpr std::uint32_t TimerID(TimerStart start) { return static_cast<std::uint32_t>(start); }

/// The running timers in the order of their ids, which mostly is that of their coming: new ones go to the
/// end, and places of those that have gone stay empty until there are too many.
class TimerTable {
public:
    explicit TimerTable(TimerStart last = 0) : mivLast(last) {}

    /// Gives the timer an id that is not 0 and that no running timer has.
    TimerStart Insert(LCTimer & timer)
    {
        for (;;) {
            TimerStart const start = ++mivLast;
            if (TimerID(start) == 0) continue;
            auto const place = Place(TimerID(start));
            if (place == movEntries.end() || TimerID(place->start) != TimerID(start)) {
                movEntries.insert(place, {start, &timer});
            } else if (place->timer == nullptr) {
                *place = {start, &timer};
            } else {
                continue;
            }
            SetCount(GetCount() + 1);
            return start;
        }
    }

    void Erase(std::uint32_t id)
    {
        auto const place = Place(id);
        if (place == movEntries.end() || TimerID(place->start) != id || place->timer == nullptr) return;
        place->timer = nullptr;
        SetCount(GetCount() - 1);
        while (!movEntries.empty() && movEntries.back().timer == nullptr) movEntries.pop_back();
        if (movEntries.size() > 2 * GetCount() + 64) {
            std::erase_if(movEntries, [](Entry const & entry) { return entry.timer == nullptr; });
        }
    }

    /// The timer of this start, or null if it no longer runs.
    LCTimer * Find(TimerStart start)
    {
        auto const place = Place(TimerID(start));
        return place != movEntries.end() && place->start == start ? place->timer : nullptr;
    }

    /// May be asked without a lock.
    std::size_t GetCount() const { return mivCount.load(std::memory_order_relaxed); }

private:
    struct Entry {
        TimerStart start;
        LCTimer * timer;
    };
    using Iterator = std::vector<Entry>::iterator;

    void SetCount(std::size_t count) { mivCount.store(count, std::memory_order_relaxed); }

    /// The first entry whose id is not less.
    Iterator Place(std::uint32_t id)
    {
        if (movEntries.empty() || TimerID(movEntries.back().start) < id) return movEntries.end();
        // Where it is if no place before the end was given up.
        std::size_t const back = TimerID(movEntries.back().start) - id;
        if (back < movEntries.size()) {
            auto const guess = movEntries.end() - 1 - static_cast<std::ptrdiff_t>(back);
            if (TimerID(guess->start) == id) return guess;
        }
        return std::partition_point(movEntries.begin(), movEntries.end(),
                                    [id](Entry const & entry) { return TimerID(entry.start) < id; });
    }

    TimerStart mivLast;
    std::vector<Entry> movEntries;
    std::atomic<std::size_t> mivCount{0};
};

}  // namespace qrtcl
