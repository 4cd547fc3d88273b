#pragma once

#include <concepts>
#include <deque>
#include <list>
#include <set>
#include <vector>

#include "collections/ContainerLayers.h"
#include "foundation/Export.h"
#include "foundation/LCString.h"
#include "foundation/LCTypes.h"

// The collections of numbers: each has the interface of its standard container. `Contains` uses the order of
// a set and scans lists and vectors. LCBoolList and the collections of `LCLong` are moved like their
// container and empty then; all others are only copied.

class QRTCL_API LCBoolList : public qrtcl::Plain<std::list<bool>> {};

/// Real `bool` elements, which can be addressed.
class QRTCL_API LCBoolVector : public qrtcl::CopyOnly<std::deque<bool>> {
public:
    LCBoolVector() = default;
    /// `n` times false; `n` is not negative.
    explicit LCBoolVector(int n) : LCBoolVector(n, false) {}
    template <std::same_as<bool> Bool> explicit LCBoolVector(int n, Bool v)
    {
        assign(static_cast<size_type>(n), v);
    }
};

class QRTCL_API LCIntList : public qrtcl::Polymorphic<qrtcl::Exact<std::list<int>>> {};
class QRTCL_API LCIntSet : public qrtcl::Polymorphic<qrtcl::Exact<std::set<int>>> {};

/// `LCIntVector(n)` holds `n` zeros, `LCIntVector(n, v)` `n` times `v`.
class QRTCL_API LCIntVector : public qrtcl::Filled<qrtcl::CopyOnly<qrtcl::Exact<std::vector<int>>>> {
public:
    using Filled::Filled;

    /// Removes all elements equal to `value`; true if there was one.
    bool Remove(int value);
    /// Replaces the elements by the numbers between the separators; a field only needs to start with one
    /// ("12abc" is 12). With `strict`, the first field without a number ends the reading with false, and the
    /// numbers before it stay; otherwise it is passed over. Without text there is one such field.
    template <std::same_as<bool> Bool> bool DivideText(LCString const & text, char sep, Bool strict)
    {
        return Divide(text, sep, strict);
    }

private:
    bool Divide(LCString const & text, char sep, bool strict);
};

class QRTCL_API LCLongList : public qrtcl::Exact<std::list<LCLong>> {};
class QRTCL_API LCLongSet : public qrtcl::Exact<std::set<LCLong>> {};
/// `LCLongVector(n)` holds `n` zeros, `LCLongVector(n, v)` `n` times `v`.
class QRTCL_API LCLongVector : public qrtcl::Filled<qrtcl::Exact<std::vector<LCLong>>> {
public:
    using Filled::Filled;
};

class QRTCL_API LCDoubleList : public qrtcl::CopyOnly<std::list<double>> {
public:
    /// The first element at most `tol` away from `value`, not the nearest one; or the end.
    iterator FindAlmostEq(double value, double tol);
};

class QRTCL_API LCDoubleSet : public qrtcl::CopyOnly<std::set<double>> {
public:
    /// The first element at most 1e-5 away from `value`, not the nearest one; or the end. Walks the set.
    iterator FindAlmostEq(double value);
};

class QRTCL_API LCDoubleVector : public qrtcl::Polymorphic<std::vector<double>> {
public:
    LCDoubleVector() = default;
    /// `n` times `v`; `n` is not negative.
    explicit LCDoubleVector(int n, double v) { assign(static_cast<size_type>(n), v); }

    /// The first element at most 1e-5 away from `value`, not the nearest one; or the end.
    iterator FindAlmostEq(double value);
    /// As `LCIntVector::DivideText`.
    template <std::same_as<bool> Bool> bool DivideText(LCString const & text, char sep, Bool strict)
    {
        return Divide(text, sep, strict);
    }

private:
    bool Divide(LCString const & text, char sep, bool strict);
};
