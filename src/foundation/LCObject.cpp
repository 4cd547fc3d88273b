#include "foundation/LCObject.h"

int LCObject::mivUniqueIDCount = 0;

LCObject::LCObject()
{
    mivUniqueIDCount = static_cast<int>(static_cast<unsigned int>(mivUniqueIDCount) + 1);
    mivUniqueID = mivUniqueIDCount;
}
