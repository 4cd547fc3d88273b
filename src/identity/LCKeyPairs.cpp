#include "identity/LCKeyPairs.h"

namespace {

/// The order LCCompareCI of all three, with their own one on `second`.
template <typename Pair, typename LessSecond> bool LessCI(Pair const & a, Pair const & b, LessSecond less)
{
    if (LCKeyIDRev::LCCompareCI()(a.first, b.first)) return true;
    return a.first.EqCI(b.first) && less(a.second, b.second);
}

}  // namespace

bool LCKeyIDRevPair::LCCompareCI::operator()(LCKeyIDRevPair const & a, LCKeyIDRevPair const & b) const
{
    return LessCI(a, b, std::less<LCKeyIDRev>());
}
bool LCKeyIDRevPair::LCEqualCI::operator()(LCKeyIDRevPair const & a, LCKeyIDRevPair const & b) const
{
    return a.first.EqCI(b.first) && a.second == b.second;
}
bool LCKeyIDRevPair::EqCI(LCKeyIDRevPair const & other) const
{
    return first.EqCI(other.first) && second.EqCI(other.second);
}

bool LCKeyIDRevBoolPair::LCCompareCI::operator()(LCKeyIDRevBoolPair const & a,
                                                 LCKeyIDRevBoolPair const & b) const
{
    return LessCI(a, b, std::less<bool>());
}
bool LCKeyIDRevBoolPair::EqCI(LCKeyIDRevBoolPair const & other) const
{
    return first.EqCI(other.first) && second == other.second;
}

bool LCKeyIDRevStringPair::LCCompareCI::operator()(LCKeyIDRevStringPair const & a,
                                                   LCKeyIDRevStringPair const & b) const
{
    return LessCI(a, b, LCString::LCCompareCI());
}
bool LCKeyIDRevStringPair::EqCI(LCKeyIDRevStringPair const & other) const
{
    return first.EqCI(other.first) && second.EqCI(other.second);
}
