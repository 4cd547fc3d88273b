#include "foundation/LCObject.h"

int LCObject::mivUniqueIDCount = 0;

LCObject::LCObject() : mivUniqueID(++mivUniqueIDCount) {}
