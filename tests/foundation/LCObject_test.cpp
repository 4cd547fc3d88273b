#include "foundation/LCObject.h"

#include "foundation/LCCheckCancel.h"
#include "foundation/LCInfo.h"
#include "foundation/LCOverwriteCallback.h"
#include "library/LCQRTCL_DataTypesInit.h"

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

TEST(Object, TheSeamsAnswerHarmlessly)
{
    LCQRTCL_DataTypesInit::Terminate();
    LCQRTCL_DataTypesInit::Init(nullptr);
    EXPECT_EQ(gopInfo, nullptr);
    LCInfo info;
    EXPECT_TRUE(info.ShowInfo() && info.HideInfo() && info.SetInfo("loading") && info.ClearInfo());
    EXPECT_TRUE(LCOverwriteCallback().AskOverwrite(nullptr) && !LCCheckCancel().IsCancelled());
}

}  // namespace
