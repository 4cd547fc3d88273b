#pragma once

#include <list>
#include <vector>

#include "foundation/LCString.h"

// Sorting by the upper-case forms as bytes. Allocates one block of 32 bytes an element, whatever the texts
// are, and for a vector as much as its elements take.
namespace qrtcl::lines {

/// Stable.
void SortCI(std::list<LCString> & elements);
void SortCI(std::vector<LCString> & elements);

}  // namespace qrtcl::lines
