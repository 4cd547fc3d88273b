#include "foundation/LCObject.h"

namespace {

struct Counted : LCObject {
    static int Count() { return mivUniqueIDCount; }
};

TEST(Object, IdsCountUpAndCopiesKeepThem)
{
    Counted const first, copy(first);
    Counted second;
    int const id = first.GetUniqueID();
    EXPECT_EQ(std::tuple(copy.GetUniqueID(), second.GetUniqueID(), Counted::Count()), std::tuple(id, id + 1, id + 1));
    second = first;
    EXPECT_EQ(std::tuple(second.GetUniqueID(), Counted::Count()), std::tuple(id, id + 1));
}

}  // namespace
