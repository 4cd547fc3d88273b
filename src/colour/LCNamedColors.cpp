#include "colour/LCNamedColors.h"

// No row may get lost, and each group is one that others count on.
#define QRTCL_COLOUR(...) +1
static_assert(31 == 0
#include "colour/lists/System.inc"
);
static_assert(28 == 0
#include "colour/lists/Basic.inc"
);
static_assert(LCColor::WebColorsCount == 0
#include "colour/lists/Web.inc"
);
static_assert(54 == 0
#include "colour/lists/Machine.inc"
);
