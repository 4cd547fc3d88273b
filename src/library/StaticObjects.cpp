// Every object of the library that is built at load stands here, in the order in which they come up; they go
// down in reverse. The priority puts them before the objects of an application that links the library
// statically.

#include "colour/LCDXFColor.h"
#include "concurrency/LCTimer.h"
#include "concurrency/detail/TimerTable.h"
#include "foundation/LCDebugMessage.h"
#include "input/LCBarCode.h"
#include "input/LCKeyboardDispatcher.h"
#include "time/LCDateTime.h"

#if defined(__GNUC__)
#define QRTCL_AT_LOAD __attribute__((init_priority(200)))
#else
#define QRTCL_AT_LOAD
#endif

// 1. The names of the bar code types.
#define BAR_CODE_TYPE(name) LCString const LCBarCode::BCT_##name QRTCL_AT_LOAD(#name)
BAR_CODE_TYPE(C2_5_interleaved);
BAR_CODE_TYPE(C2_5_industrial);
BAR_CODE_TYPE(C2_5_matrix);
BAR_CODE_TYPE(C39);
BAR_CODE_TYPE(C39Extended);
BAR_CODE_TYPE(C128A);
BAR_CODE_TYPE(C128B);
BAR_CODE_TYPE(C128C);
BAR_CODE_TYPE(C93);
BAR_CODE_TYPE(C93Extended);
BAR_CODE_TYPE(MSI);
BAR_CODE_TYPE(PostNet);
BAR_CODE_TYPE(Codabar);
BAR_CODE_TYPE(EAN8);
BAR_CODE_TYPE(EAN13);
BAR_CODE_TYPE(UPC_A);
BAR_CODE_TYPE(UPC_E0);
BAR_CODE_TYPE(UPC_E1);
BAR_CODE_TYPE(UPC_Supp2);
BAR_CODE_TYPE(UPC_Supp5);
BAR_CODE_TYPE(EAN128A);
BAR_CODE_TYPE(EAN128B);
BAR_CODE_TYPE(EAN128C);
BAR_CODE_TYPE(QR);
#undef BAR_CODE_TYPE

// 2. The colour index table of the drawing format.
std::vector<LCColor> const LCDXFColor::movACIColors QRTCL_AT_LOAD = PrepareACIColors();

// 3. The correction of the application's clock. Constant data: it stands before anything runs.
constinit LCTimeSpan LCDateTime::movCurrentDateTimeOffset;

// 4. The debug message channel.
LCDebugMessage covDebugMessage QRTCL_AT_LOAD;

// 5. The keyboard dispatcher.
LCKeyboardDispatcher LCKeyboardDispatcher::movInstance QRTCL_AT_LOAD;

// 6. The table of running timers.
qrtcl::TimerTable LCTimer::movTimers QRTCL_AT_LOAD;

// 7. Its lock.
LCRWCriticalSection LCTimer::movCS QRTCL_AT_LOAD;
