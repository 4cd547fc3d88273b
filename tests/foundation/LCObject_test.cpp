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
    EXPECT_EQ(copy.GetUniqueID(), first.GetUniqueID());
    EXPECT_EQ(second.GetUniqueID(), first.GetUniqueID() + 1);
    EXPECT_EQ(second.GetUniqueID(), Counted::Count());
    second = first;
    EXPECT_EQ(second.GetUniqueID(), first.GetUniqueID());
    EXPECT_EQ(Counted::Count(), first.GetUniqueID() + 1);
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
