#include "identity/LCKeyContainers.h"

bool LCKey2IDRevSet::ContainsCI(LCKey2IDRev const & key)
{
    return std::any_of(begin(), end(), [&](LCKey2IDRev const & element) { return element.EqCI(key); });
}
