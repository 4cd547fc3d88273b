#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <new>
#include <vector>

namespace qrtcl::documents {

/// Room for objects of one type, cut from pages. Room that is given back is used again; the pages go when
/// nothing is in use, and at the end.
template <typename Object> class Pages {
public:
    /// Room for one object, not built. Throws what the allocation throws.
    void * Take()
    {
        if (mopFree == nullptr && mopFresh == mopEnd) AddPage();
        ++mivInUse;
        if (mopFree == nullptr) return mopFresh++;
        Slot * const slot = mopFree;
        mopFree = slot->next;
        return slot;
    }

    /// Takes the room of a destroyed object back.
    void Give(void * room) noexcept
    {
        mopFree = ::new (room) Slot{mopFree};
        if (--mivInUse == 0 && movPages.size() > 1) {
            movPages.clear();
            mopFree = mopFresh = mopEnd = nullptr;
        }
    }

    std::size_t InUse() const { return mivInUse; }

private:
    union Slot {
        Slot * next;
        alignas(Object) std::byte room[sizeof(Object)];
    };

    void AddPage()
    {
        // A small tree takes little, and pages of a large one are of a size that the heap keeps at hand.
        constexpr std::size_t largest = 65536;
        std::size_t const size =
            std::min(largest, std::size_t{1024} << std::min<std::size_t>(movPages.size(), 6));
        std::size_t const count = size / sizeof(Slot);
        movPages.push_back(std::make_unique_for_overwrite<Slot[]>(count));
        mopFresh = movPages.back().get();
        mopEnd = mopFresh + count;
    }

    std::vector<std::unique_ptr<Slot[]>> movPages;
    Slot * mopFree = nullptr;
    Slot * mopFresh = nullptr;
    Slot * mopEnd = nullptr;
    std::size_t mivInUse = 0;
};

}  // namespace qrtcl::documents
