#pragma once

#include "foundation/Export.h"

/// The start and stop of the library, for hosts that call such a pair for every module they load. Both do
/// nothing: the library is ready once it is loaded.
class QRTCL_API LCQRTCL_DataTypesInit {
public:
    /// The pointer is neither read nor kept.
    static void Init(void * host);
    static void Terminate();
};
