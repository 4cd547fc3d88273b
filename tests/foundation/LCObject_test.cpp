#include "foundation/LCObject.h"

#include "foundation/LCCheckCancel.h"
#include "foundation/LCInfo.h"
#include "foundation/LCOverwriteCallback.h"
#include "library/LCQRTCL_DataTypesInit.h"

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

TEST(Object, TheSeamsAnswerHarmlessly)
{
    LCQRTCL_DataTypesInit::Terminate();
    LCQRTCL_DataTypesInit::Init(nullptr);
    LCInfo info;
    EXPECT_TRUE(!gopInfo && info.ShowInfo() && info.HideInfo() && info.SetInfo("loading") && info.ClearInfo());
    EXPECT_TRUE(LCOverwriteCallback().AskOverwrite(nullptr) && !LCCheckCancel().IsCancelled());
}

}  // namespace
