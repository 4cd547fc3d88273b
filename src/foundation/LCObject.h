#pragma once

#include "foundation/Export.h"

/// A root class with an id of its own, for applications to derive from.
///
/// Every default construction takes the next id of the process, the first one 1; the numbers wrap behind the
/// greatest. A copy and an assignment take the id of their source. Default-construct on one thread at a time.
class QRTCL_API LCObject {
public:
    LCObject();
    LCObject(LCObject const &) = default;
    LCObject & operator=(LCObject const &) = default;
    virtual ~LCObject() = default;

    int GetUniqueID() const { return mivUniqueID; }

protected:
    /// How many objects have been default-constructed since load.
    static int mivUniqueIDCount;

private:
    int mivUniqueID;
};
