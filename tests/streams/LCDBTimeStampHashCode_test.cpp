#include "streams/LCDBTimeStampHashCode.h"

#include <memory>

struct OtherHashCode : LCDBHashCode {
    LCDBHashCode * Clone() const override { return new OtherHashCode(*this); }
};

TEST(DBHashCode, StampsAreEqualOnlyToStamps)
{
    LCDBTimeStampHashCode stamp;
    std::unique_ptr<LCDBHashCode> const clone(stamp.Clone());
    EXPECT_TRUE(stamp.IsEqual(*clone));
    stamp.SetDBTimeStamp(-5);
    EXPECT_TRUE(!stamp.IsEqual(*clone) && clone->IsEqual(LCDBTimeStampHashCode(0)));
    EXPECT_TRUE(OtherHashCode().IsEqual(stamp) && !stamp.IsEqual(OtherHashCode()));
}
