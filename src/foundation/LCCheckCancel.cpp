#include "foundation/LCCheckCancel.h"

LCCheckCancel::~LCCheckCancel() = default;

bool LCCheckCancel::IsCancelled() { return false; }
