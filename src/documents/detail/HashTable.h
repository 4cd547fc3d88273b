#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace qrtcl::documents {

/// A set of pointers to items, by hashes that are kept beside them, so that a search touches no other item:
/// one block of slots, at most half of them taken. The caller says which of several items with one hash it
/// means.
template <typename Item> class HashTable {
public:
    /// The item that `matches`, or null.
    template <typename Matches> Item * Find(std::uint64_t hash, Matches matches) const
    {
        if (movSlots.empty()) return nullptr;
        std::size_t at = Home(hash);
        while (movSlots[at].item != nullptr && !(movSlots[at].hash == hash && matches(*movSlots[at].item)))
            at = Next(at);
        return movSlots[at].item;
    }

    /// Takes an item that is not in the table. Throws what the allocation throws, and is then as before.
    void Insert(std::uint64_t hash, Item & item)
    {
        if (2 * (mivCount + 1) > movSlots.size()) Grow();
        Put({hash, &item});
        ++mivCount;
    }

    /// Puts `successor`, of the same hash, in the place of `item`.
    void Replace(std::uint64_t hash, Item const & item, Item & successor) noexcept
    {
        movSlots[PlaceOf(hash, item)].item = &successor;
    }

    void Erase(std::uint64_t hash, Item const & item) noexcept
    {
        // What stands behind the hole moves up if its own place is not between the hole and it.
        std::size_t hole = PlaceOf(hash, item);
        for (std::size_t at = Next(hole); movSlots[at].item != nullptr; at = Next(at)) {
            std::size_t const home = Home(movSlots[at].hash);
            bool const reachable = hole <= at ? hole < home && home <= at : hole < home || home <= at;
            if (!reachable) movSlots[std::exchange(hole, at)] = movSlots[at];
        }
        movSlots[hole] = {};
        --mivCount;
    }

private:
    struct Slot {
        std::uint64_t hash = 0;
        Item * item = nullptr;
    };

    std::size_t Home(std::uint64_t hash) const { return hash & (movSlots.size() - 1); }
    std::size_t Next(std::size_t at) const { return (at + 1) & (movSlots.size() - 1); }
    std::size_t PlaceOf(std::uint64_t hash, Item const & item) const
    {
        std::size_t at = Home(hash);
        while (movSlots[at].item != &item) at = Next(at);
        return at;
    }
    void Put(Slot const & slot)
    {
        std::size_t at = Home(slot.hash);
        while (movSlots[at].item != nullptr) at = Next(at);
        movSlots[at] = slot;
    }
    void Grow()
    {
        std::vector<Slot> const old = std::exchange(
            movSlots, std::vector<Slot>(movSlots.empty() ? std::size_t{32} : 2 * movSlots.size()));
        for (Slot const & slot : old) {
            if (slot.item != nullptr) Put(slot);
        }
    }

    std::vector<Slot> movSlots;  ///< none, or a power of two
    std::size_t mivCount = 0;
};

}  // namespace qrtcl::documents
