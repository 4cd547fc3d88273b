#include "input/LCBarCode.h"

#include "support/Support.h"

namespace {

TEST(BarCode, TypeAndDataAreFreeTextOrderedByTypeThenData)
{
    EXPECT_EQ(LCBarCode::BCT_C2_5_interleaved + " " + LCBarCode::BCT_QR, "C2_5_interleaved QR");
    LCBarCode code;
    EXPECT_TRUE(code.SetType("no type of ours") && code.SetData("no digits"));
    EXPECT_EQ(code.GetType() + ", " + code.GetData(), "no type of ours, no digits");
    ExpectTotalOrder(std::vector<LCBarCode>{
        {}, {"", "1"}, {"C39", "9"}, {"EAN13", "1"}, {"QR", "A"}, {"QR", "a"}, {"qr", "A"}});
}

}  // namespace
