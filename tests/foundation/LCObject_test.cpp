#include "foundation/LCObject.h"

namespace {

struct Counted : LCObject { static int Count() { return mivUniqueIDCount; } };

TEST(Object, IdsCountUpAndCopiesKeepThem)
{
    Counted first, copy(first), second, third;
    int const id = first.GetUniqueID();
    third = first;
    EXPECT_EQ((std::vector{copy.GetUniqueID(), second.GetUniqueID(), third.GetUniqueID(), Counted::Count()}),
              (std::vector{id, id + 1, id, id + 2}));
}

}  // namespace
