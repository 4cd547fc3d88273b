#include "streams/LCDBTimeStampHashCode.h"

#include <memory>

#include "support/Support.h"

namespace {

struct OtherHashCode : LCDBHashCode {
    LCDBHashCode * Clone() const override { return new OtherHashCode(*this); }
};

struct DerivedTimeStamp : LCDBTimeStampHashCode {
    using LCDBTimeStampHashCode::LCDBTimeStampHashCode;
};

TEST(DBHashCode, StampsAreEqualOnlyToStamps)
{
    LCDBTimeStampHashCode const seven(7);
    LCDBTimeStampHashCode const eight(8);
    OtherHashCode const other;
    EXPECT_TRUE(seven.IsEqual(seven));
    EXPECT_TRUE(seven.IsEqual(LCDBTimeStampHashCode(7)));
    EXPECT_TRUE(seven.IsEqual(DerivedTimeStamp(7)));
    EXPECT_FALSE(seven.IsEqual(eight));
    EXPECT_FALSE(seven.IsEqual(other));
    EXPECT_TRUE(other.IsEqual(seven));
    EXPECT_TRUE(other.IsEqual(other));
}

TEST(DBHashCode, ACloneKeepsItsStamp)
{
    LCDBTimeStampHashCode stamp;
    EXPECT_EQ(stamp.GetDBTimeStamp(), 0);
    stamp.SetDBTimeStamp(-5);
    std::unique_ptr<LCDBHashCode> const clone(stamp.Clone());
    stamp.SetDBTimeStamp(6);
    EXPECT_TRUE(clone->IsEqual(LCDBTimeStampHashCode(-5)));
}

}  // namespace
