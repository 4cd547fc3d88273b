#pragma once

#include <list>

#include "concurrency/LCThread.h"

/// Threads that the list owns. Null pointers may stand in it.
///
/// A copy holds the same pointers: only one of the two may go on to own them, the other must be cleared as a
/// list, with `clear`, before it is destroyed.
class QRTCL_API LCThreadList : public std::list<LCThread *> {
public:
    LCThreadList() = default;
    LCThreadList(LCThreadList const &) = default;
    LCThreadList & operator=(LCThreadList const &) = default;
    /// As `ClearWithContents`.
    ~LCThreadList();

    /// Deletes the threads from front to back and empties the list; those that still run end by force.
    void ClearWithContents();

    /// Waits for one after the other: the time-out holds for each in turn, not for the whole.
    void WaitFor(LCULong timeout);
};
