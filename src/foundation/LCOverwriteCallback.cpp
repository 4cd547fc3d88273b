#include "foundation/LCOverwriteCallback.h"

LCOverwriteCallback::~LCOverwriteCallback() = default;

bool LCOverwriteCallback::AskOverwrite(LCObject *) { return true; }
