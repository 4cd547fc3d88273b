#include "streams/LCDBTimeStampHashCode.h"

#include <memory>

#include "support/Support.h"

namespace {

struct OtherHashCode : LCDBHashCode {
    LCDBHashCode * Clone() const override { return new OtherHashCode(*this); }
};

TEST(DBHashCode, StampsAreEqualOnlyToStamps)
{
    LCDBTimeStampHashCode stamp;
    std::unique_ptr<LCDBHashCode> const clone(stamp.Clone());
    EXPECT_TRUE(stamp.IsEqual(*clone));
    stamp.SetDBTimeStamp(-5);
    EXPECT_FALSE(stamp.IsEqual(*clone));
    EXPECT_TRUE(clone->IsEqual(LCDBTimeStampHashCode(0)));
    EXPECT_TRUE(OtherHashCode().IsEqual(stamp));
    EXPECT_FALSE(stamp.IsEqual(OtherHashCode()));
}

}  // namespace
