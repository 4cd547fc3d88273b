#include "collections/LCNumberLists.h"

#include "collections/detail/Lines.h"
#include "foundation/LCMath.h"
#include "foundation/detail/NumberText.h"

namespace number = qrtcl::number;

namespace {

template <typename Vector, typename Read>
bool DivideNumbers(Vector & numbers, std::string_view text, char sep, bool strict, Read read)
{
    numbers.clear();
    bool allRead = !text.empty();
    qrtcl::lines::Split(text, sep, sep, true, [&](std::string_view field) {
        if (strict && !allRead) return;
        typename Vector::value_type value{};
        if (read(field, value)) {
            numbers.push_back(value);
        } else {
            allRead = false;
        }
    });
    return allRead || !strict;
}

template <typename Collection>
typename Collection::iterator FindAlmostEqual(Collection & numbers, double value, double tol)
{
    return std::find_if(numbers.begin(), numbers.end(),
                        [=](double element) { return LCMath::AlmostEq(element, value, tol); });
}

constexpr double fixedTolerance = 1e-5;

}  // namespace

bool LCIntVector::Remove(int value) { return std::erase(*this, value) > 0; }

bool LCIntVector::Divide(LCString const & text, char sep, bool strict)
{
    return DivideNumbers(*this, text.str(), sep, strict, [](std::string_view field, int & value) {
        return number::ReadInt(field, false, value);
    });
}

bool LCDoubleVector::Divide(LCString const & text, char sep, bool strict)
{
    return DivideNumbers(*this, text.str(), sep, strict, [](std::string_view field, double & value) {
        return number::ReadDouble(field, value);
    });
}

LCDoubleList::iterator LCDoubleList::FindAlmostEq(double value, double tol)
{
    return FindAlmostEqual(*this, value, tol);
}
LCDoubleSet::iterator LCDoubleSet::FindAlmostEq(double value)
{
    return FindAlmostEqual(*this, value, fixedTolerance);
}
LCDoubleVector::iterator LCDoubleVector::FindAlmostEq(double value)
{
    return FindAlmostEqual(*this, value, fixedTolerance);
}
