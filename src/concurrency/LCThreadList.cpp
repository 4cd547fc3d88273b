#include "concurrency/LCThreadList.h"

LCThreadList::~LCThreadList() { ClearWithContents(); }

void LCThreadList::ClearWithContents()
{
    for (LCThread * const thread : *this) delete thread;
    clear();
}

void LCThreadList::WaitFor(LCULong timeout)
{
    for (LCThread * const thread : *this) {
        if (thread != nullptr) thread->WaitFor(timeout);
    }
}
