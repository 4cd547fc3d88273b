#pragma once

#include <algorithm>
#include <concepts>
#include <list>
#include <set>
#include <utility>
#include <vector>

#include "collections/ContainerLayers.h"
#include "foundation/Export.h"
#include "foundation/LCString.h"
#include "identity/LCKey.h"
#include "identity/LCKeyPairs.h"

// The lists, vectors and ordered sets of keys and of pairs with keys; each has the interface of its standard
// container. What ignores case (`CI`) walks from the front, in a set too, since the order of a set is exact.
// Containers of keys are only copied; those of pairs are moved like their standard container.
//
// The layers that are theirs alone are made in the manner of ContainerLayers.h.
namespace qrtcl {

/// Calls `change` for the key that is the element, or for those that are in the pair.
template <typename Element, typename Change> void ChangeKeys(Element & element, Change change)
{
    if constexpr (std::derived_from<Element, LCKey>) {
        change(element);
    } else {
        change(element.first);
        if constexpr (std::derived_from<typename Element::second_type, LCKey>) change(element.second);
    }
}

/// Turns the keys into upper or lower case; the text of a pair keeps its case. Elements of a set that become
/// equal merge, so it can shrink; they are built anew by `UpperCase` or `LowerCase`, and so normalised.
template <typename Base> class QRTCL_API ChangeCase : public Base {
public:
    ChangeCase() = default;

    void ToUpperCase()
    {
        if constexpr (OrderedSet<Base>) {
            Rebuild([](auto & key) { key = key.UpperCase(); });
        } else {
            for (auto & element : *this) ChangeKeys(element, [](auto & key) { key.ToUpperCase(); });
        }
    }
    void ToLowerCase()
    {
        if constexpr (OrderedSet<Base>) {
            Rebuild([](auto & key) { key = key.LowerCase(); });
        } else {
            for (auto & element : *this) ChangeKeys(element, [](auto & key) { key.ToLowerCase(); });
        }
    }

private:
    template <typename Change> void Rebuild(Change change)
    {
        Base changed;
        for (auto element : *this) {
            ChangeKeys(element, change);
            changed.insert(changed.end(), std::move(element));
        }
        this->swap(changed);
    }
};

/// A list that is sorted, and cleared of equal neighbours, without regard to case.
template <typename Base> class QRTCL_API ListCI : public Base {
public:
    ListCI() = default;

    /// Stable, by the LCCompareCI of the elements, which looks past the revisions of keys.
    void SortCI() { this->sort(typename Base::value_type::LCCompareCI()); }
    /// Removes what equals its predecessor by the LCEqualCI of the elements, which does look at revisions.
    /// Only neighbours count, and sorting does not bring all equal ones together.
    void UniqueCI() { this->unique(typename Base::value_type::LCEqualCI()); }
};

/// What all have whose elements compare without case.
template <typename Container> using KeysCI = ChangeCase<SearchCI<Exact<Container>>>;

}  // namespace qrtcl

class QRTCL_API LCKeyIDRevList
    : public qrtcl::Polymorphic<qrtcl::ListCI<qrtcl::KeysCI<std::list<LCKeyIDRev>>>> {};
class QRTCL_API LCKeyIDRevVector : public qrtcl::Polymorphic<qrtcl::KeysCI<std::vector<LCKeyIDRev>>> {};
class QRTCL_API LCKeyIDRevSet : public qrtcl::Polymorphic<qrtcl::KeysCI<std::set<LCKeyIDRev>>> {};

class QRTCL_API LCKey2IDRevSet : public qrtcl::Polymorphic<qrtcl::ChangeCase<std::set<LCKey2IDRev>>> {
public:
    // Only here are the two not const.
    bool Contains(LCKey2IDRev const & key) { return contains(key); }
    bool ContainsCI(LCKey2IDRev const & key);
};

class QRTCL_API LCKeyKindIDList
    : public qrtcl::Polymorphic<qrtcl::ListCI<qrtcl::KeysCI<std::list<LCKeyKindID>>>> {};
class QRTCL_API LCKeyKindIDSet : public qrtcl::Polymorphic<qrtcl::KeysCI<std::set<LCKeyKindID>>> {};

class QRTCL_API LCKeyGUIDList : public qrtcl::Polymorphic<qrtcl::Exact<std::list<LCKeyGUID>>> {};
class QRTCL_API LCKeyGUIDVector : public qrtcl::Polymorphic<qrtcl::Exact<std::vector<LCKeyGUID>>> {};
class QRTCL_API LCKeyGUIDSet : public qrtcl::Polymorphic<qrtcl::Exact<std::set<LCKeyGUID>>> {};

class QRTCL_API LCKeyIDRevPairList : public qrtcl::ListCI<qrtcl::KeysCI<std::list<LCKeyIDRevPair>>> {};
class QRTCL_API LCKeyIDRevPairVector : public qrtcl::KeysCI<std::vector<LCKeyIDRevPair>> {};
class QRTCL_API LCKeyIDRevPairSet : public qrtcl::KeysCI<std::set<LCKeyIDRevPair>> {};

namespace qrtcl {

/// A flag is a bool, and nothing that turns into one.
template <typename Value, typename Second>
concept StandsFor = std::same_as<Value, Second> ||
    (std::same_as<Second, LCString> && std::convertible_to<Value const &, LCString>);

/// Pairs of a key and a flag or a text, built from keys and turned back into keys. `Keys` is the container of
/// keys of the same kind.
template <typename Base, typename Keys> class QRTCL_API KeysWith : public Base {
    using Pair = typename Base::value_type;
    using Second = typename Pair::second_type;

public:
    KeysWith() = default;
    /// With texts, each key and the empty text; with flags, two pairs for each key: false, then true.
    KeysWith(Keys const & keys)
    {
        for (LCKeyIDRev const & key : keys) {
            this->insert(this->end(), Pair(key, Second()));
            if constexpr (std::same_as<Second, bool>) this->insert(this->end(), Pair(key, true));
        }
    }
    template <StandsFor<Second> Value> KeysWith(Keys const & keys, Value const & second)
    {
        Second const & each = second;  // converted once
        for (LCKeyIDRev const & key : keys) this->insert(this->end(), Pair(key, each));
    }

    // These add to what `keys` holds, and no key that is there already. With `second`, only the keys of the
    // pairs that have it.

    void ToKeyIDRevList(LCKeyIDRevList & keys) const { Collect(keys, anyPair); }
    void ToKeyIDRevSet(LCKeyIDRevSet & keys) const { Collect(keys, anyPair); }
    template <StandsFor<Second> Value> void ToKeyIDRevList(LCKeyIDRevList & keys, Value const & second) const
    {
        Collect(keys, With(second));
    }
    template <StandsFor<Second> Value> void ToKeyIDRevSet(LCKeyIDRevSet & keys, Value const & second) const
    {
        Collect(keys, With(second));
    }

private:
    static constexpr auto anyPair = [](Pair const &) { return true; };
    static auto With(Second const & second)
    {
        return [&second](Pair const & pair) { return pair.second == second; };
    }

    template <typename Predicate> void Collect(LCKeyIDRevSet & keys, Predicate take) const
    {
        for (Pair const & pair : *this) {
            if (take(pair)) keys.insert(pair.first);
        }
    }
    template <typename Predicate> void Collect(LCKeyIDRevList & keys, Predicate take) const
    {
        auto const less = [](LCKeyIDRev const * a, LCKeyIDRev const * b) { return *a < *b; };
        std::set<LCKeyIDRev const *, decltype(less)> known(less);
        for (LCKeyIDRev const & key : keys) known.insert(&key);
        for (Pair const & pair : *this) {
            if (take(pair) && known.insert(&pair.first).second) keys.push_back(pair.first);
        }
    }
};

/// Pairs of a key and a text that are searched by their key: the first such pair, or the end.
template <typename Base> class QRTCL_API SearchKeys : public Base {
public:
    SearchKeys() = default;

    bool ContainsKey(LCKeyIDRev const & key) const { return First(*this, key) != this->end(); }
    bool ContainsKeyCI(LCKeyIDRev const & key) const { return FirstCI(*this, key) != this->end(); }
    typename Base::iterator FindKey(LCKeyIDRev const & key) { return First(*this, key); }
    typename Base::iterator FindKeyCI(LCKeyIDRev const & key) { return FirstCI(*this, key); }

private:
    static auto First(auto & pairs, LCKeyIDRev const & key)
    {
        if constexpr (OrderedSet<Base>) {
            auto const at = pairs.lower_bound({key, LCString()});  // no text stands before the empty one
            return at != pairs.end() && at->first == key ? at : pairs.end();
        } else {
            return std::find_if(pairs.begin(), pairs.end(),
                                [&](auto const & pair) { return pair.first == key; });
        }
    }
    static auto FirstCI(auto & pairs, LCKeyIDRev const & key)
    {
        return std::find_if(pairs.begin(), pairs.end(),
                            [&](auto const & pair) { return pair.first.EqCI(key); });
    }
};

}  // namespace qrtcl

class QRTCL_API LCKeyIDRevBoolPairList
    : public qrtcl::KeysWith<qrtcl::ListCI<qrtcl::KeysCI<std::list<LCKeyIDRevBoolPair>>>, LCKeyIDRevList> {
public:
    using KeysWith::KeysWith;
};
class QRTCL_API LCKeyIDRevBoolPairVector
    : public qrtcl::KeysWith<qrtcl::KeysCI<std::vector<LCKeyIDRevBoolPair>>, LCKeyIDRevVector> {
public:
    using KeysWith::KeysWith;
};
class QRTCL_API LCKeyIDRevBoolPairSet
    : public qrtcl::KeysWith<qrtcl::KeysCI<std::set<LCKeyIDRevBoolPair>>, LCKeyIDRevSet> {
public:
    using KeysWith::KeysWith;
};

class QRTCL_API LCKeyIDRevStringPairList
    : public qrtcl::KeysWith<qrtcl::SearchKeys<qrtcl::ListCI<qrtcl::KeysCI<std::list<LCKeyIDRevStringPair>>>>,
                             LCKeyIDRevList> {
public:
    using KeysWith::KeysWith;
};
class QRTCL_API LCKeyIDRevStringPairVector
    : public qrtcl::KeysWith<qrtcl::SearchKeys<qrtcl::KeysCI<std::vector<LCKeyIDRevStringPair>>>,
                             LCKeyIDRevVector> {
public:
    using KeysWith::KeysWith;
};
class QRTCL_API LCKeyIDRevStringPairSet
    : public qrtcl::KeysWith<qrtcl::SearchKeys<qrtcl::KeysCI<std::set<LCKeyIDRevStringPair>>>,
                             LCKeyIDRevSet> {
public:
    using KeysWith::KeysWith;
};
