#pragma once

#include <algorithm>

#include "foundation/Export.h"

// What the named collections are made of. Each layer stands on a standard container, or on another layer over
// one, and adds operations but no data. A collection is one line: `class LCIntSet : public
// Polymorphic<Exact<std::set<int>>>` is a class of its own, to be declared ahead, derived from and overloaded
// on.
//
// No layer takes over the constructors from below: with them, `{3, 4}` would be two elements in one
// collection and three times four or an error in another.
namespace qrtcl {

template <typename Container>
concept OrderedSet = requires
{
    typename Container::key_type;
};

/// The standard container, and nothing else.
template <typename Container> class QRTCL_API Plain : public Container {
public:
    Plain() = default;
};

/// Copied, never moved: what is moved from keeps its elements.
template <typename Base> class QRTCL_API CopyOnly : public Base {
public:
    CopyOnly() = default;
    CopyOnly(CopyOnly const &) = default;
    CopyOnly & operator=(CopyOnly const &) = default;
};

/// With a virtual destructor; copied, never moved.
template <typename Base> class QRTCL_API Polymorphic : public Base {
public:
    Polymorphic() = default;
    Polymorphic(Polymorphic const &) = default;
    Polymorphic & operator=(Polymorphic const &) = default;
    virtual ~Polymorphic() = default;
};

/// Built with a count, which is not negative.
template <typename Base> class QRTCL_API Filled : public Base {
public:
    Filled() = default;
    explicit Filled(int n) : Filled(n, {}) {}
    explicit Filled(int n, typename Base::value_type v)
    {
        this->assign(static_cast<typename Base::size_type>(n), v);
    }
};

/// Search by `==`: through the order of a set, from the front in a list or a vector.
template <typename Base> class QRTCL_API Exact : public Base {
public:
    Exact() = default;

    bool Contains(typename Base::value_type const & value) const
    {
        if constexpr (OrderedSet<Base>) {
            return this->contains(value);
        } else {
            return std::find(this->begin(), this->end(), value) != this->end();
        }
    }
};

/// Search by the element's `EqCI`, from the front, in a set too.
template <typename Base> class QRTCL_API SearchCI : public Base {
    using Element = typename Base::value_type;

public:
    SearchCI() = default;

    bool ContainsCI(Element const & value) const
    {
        return std::any_of(this->begin(), this->end(), Equals(value));
    }
    /// The first such element, or the end.
    typename Base::iterator FindCI(Element const & value)
    {
        return std::find_if(this->begin(), this->end(), Equals(value));
    }

private:
    /// All elements are of the class itself, so theirs is the EqCI to call.
    static auto Equals(Element const & value)
    {
        return [&value](Element const & element) { return element.Element::EqCI(value); };
    }
};

/// Search for pairs, and by their `first`: from the front, in a set too. The first such pair, or the end.
template <typename Base> class QRTCL_API SearchPairs : public SearchCI<Base> {
public:
    SearchPairs() = default;

    typename Base::iterator FindFirst(typename Base::value_type::first_type const & first)
    {
        return std::find_if(this->begin(), this->end(),
                            [&](auto const & pair) { return pair.first == first; });
    }
    typename Base::iterator FindCIFirst(typename Base::value_type::first_type const & first)
    {
        return std::find_if(this->begin(), this->end(),
                            [&](auto const & pair) { return pair.first.EqCI(first); });
    }
};

}  // namespace qrtcl
