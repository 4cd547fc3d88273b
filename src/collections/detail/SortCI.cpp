#include "collections/detail/SortCI.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include "foundation/detail/Text.h"

namespace qrtcl::lines {

namespace {

/// What is compared of an element, nearly always without looking at the element itself.
template <typename Iterator> struct SortKey {
    SortKey(Iterator element, std::size_t index) : place(index), at(element)
    {
        std::string const & text = element->str();
        for (std::size_t i = 0; i < 16 && i < text.size(); ++i) {
            std::uint64_t const byte = static_cast<unsigned char>(text::ToUpper(text[i]));
            (i < 8 ? first : second) |= byte << (56 - 8 * (i % 8));
        }
    }
    bool operator<(SortKey const & other) const noexcept
    {
        if (first != other.first) return first < other.first;
        if (second != other.second) return second < other.second;
        int const order = text::CompareUpper(at->str(), other.at->str());
        return order != 0 ? order < 0 : place < other.place;
    }

    std::uint64_t first = 0;   ///< the first eight bytes in upper case, as a number in their order
    std::uint64_t second = 0;  ///< the next eight; what the text does not have is zero
    std::size_t place;
    Iterator at;
};

template <typename Collection> auto SortedKeys(Collection & elements)
{
    std::vector<SortKey<typename Collection::iterator>> keys;
    keys.reserve(elements.size());
    for (auto i = elements.begin(); i != elements.end(); ++i) keys.emplace_back(i, keys.size());
    std::sort(keys.begin(), keys.end());
    return keys;
}

}  // namespace

void SortCI(std::list<LCString> & elements)
{
    for (auto const & key : SortedKeys(elements)) elements.splice(elements.end(), elements, key.at);
}

void SortCI(std::vector<LCString> & elements)
{
    // Through a second vector and back, so that positions stay. Moving along the cycles of the permutation
    // would take no memory but wait for each element.
    std::vector<LCString> sorted;
    sorted.reserve(elements.size());
    for (auto const & key : SortedKeys(elements)) sorted.push_back(std::move(*key.at));
    std::move(sorted.begin(), sorted.end(), elements.begin());
}

}  // namespace qrtcl::lines
