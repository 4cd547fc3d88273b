#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace qrtcl::documents {

/// A set of pointers to items that know their hash: one block of slots, at most half of them taken.
///
/// `HashOf(item)` gives the hash of an item; the caller says which of several items with one hash it means.
template <typename Item, std::uint64_t (*HashOf)(Item const &)> class HashTable {
public:
    /// The item that `matches`, or null.
    template <typename Matches> Item * Find(std::uint64_t hash, Matches matches) const
    {
        if (movSlots.empty()) return nullptr;
        std::size_t slot = Home(hash);
        while (movSlots[slot] != nullptr && !matches(*movSlots[slot])) slot = Next(slot);
        return movSlots[slot];
    }

    /// Takes an item that is not in the table. Throws what the allocation throws, and is then as before.
    void Insert(Item & item)
    {
        if (2 * (mivCount + 1) > movSlots.size()) Grow();
        Put(item);
        ++mivCount;
    }

    /// Puts `successor`, of the same hash, in the place of `item`.
    void Replace(Item const & item, Item & successor) noexcept { movSlots[SlotOf(item)] = &successor; }

    void Erase(Item const & item) noexcept
    {
        // What stands behind the hole moves up if its own place is not between the hole and it.
        std::size_t hole = SlotOf(item);
        for (std::size_t slot = Next(hole); movSlots[slot] != nullptr; slot = Next(slot)) {
            std::size_t const home = Home(HashOf(*movSlots[slot]));
            bool const reachable = hole <= slot ? hole < home && home <= slot : hole < home || home <= slot;
            if (!reachable) movSlots[std::exchange(hole, slot)] = movSlots[slot];
        }
        movSlots[hole] = nullptr;
        --mivCount;
    }

private:
    std::size_t Home(std::uint64_t hash) const { return hash & (movSlots.size() - 1); }
    std::size_t Next(std::size_t slot) const { return (slot + 1) & (movSlots.size() - 1); }
    std::size_t SlotOf(Item const & item) const
    {
        std::size_t slot = Home(HashOf(item));
        while (movSlots[slot] != &item) slot = Next(slot);
        return slot;
    }
    void Put(Item & item)
    {
        std::size_t slot = Home(HashOf(item));
        while (movSlots[slot] != nullptr) slot = Next(slot);
        movSlots[slot] = &item;
    }
    void Grow()
    {
        std::vector<Item *> const old = std::exchange(
            movSlots, std::vector<Item *>(movSlots.empty() ? std::size_t{32} : 2 * movSlots.size()));
        for (Item * item : old) {
            if (item != nullptr) Put(*item);
        }
    }

    std::vector<Item *> movSlots;  ///< none, or a power of two
    std::size_t mivCount = 0;
};

}  // namespace qrtcl::documents
