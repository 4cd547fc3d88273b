#include "input/LCBarCode.h"

#include "support/Support.h"

namespace {

TEST(BarCode, ConstantsHoldTheNamesInUse)
{
    using B = LCBarCode;
    auto const join = [](auto const &... names) { return ((names + " ") + ...); };
    EXPECT_EQ(join(B::BCT_C2_5_interleaved, B::BCT_C2_5_industrial, B::BCT_C2_5_matrix, B::BCT_C39,
                   B::BCT_C39Extended, B::BCT_C128A, B::BCT_C128B, B::BCT_C128C, B::BCT_C93, B::BCT_C93Extended,
                   B::BCT_MSI, B::BCT_PostNet, B::BCT_Codabar, B::BCT_EAN8, B::BCT_EAN13, B::BCT_UPC_A,
                   B::BCT_UPC_E0, B::BCT_UPC_E1,
                   B::BCT_UPC_Supp2, B::BCT_UPC_Supp5, B::BCT_EAN128A, B::BCT_EAN128B, B::BCT_EAN128C, B::BCT_QR),
              "C2_5_interleaved C2_5_industrial C2_5_matrix C39 C39Extended C128A C128B C128C C93 C93Extended MSI "
              "PostNet Codabar EAN8 EAN13 UPC_A UPC_E0 UPC_E1 UPC_Supp2 UPC_Supp5 EAN128A EAN128B EAN128C QR ");
}

TEST(BarCode, TypeAndDataAreFreeTextOrderedByTypeThenData)
{
    LCBarCode code;
    EXPECT_TRUE(code.SetType("no type of ours") && code.SetData("no digits"));
    EXPECT_EQ(code.GetType() + ", " + code.GetData(), "no type of ours, no digits");
    EXPECT_TRUE(code.SetType("") && code.SetData("") && code == LCBarCode());
    ExpectTotalOrder(std::vector<LCBarCode>{
        {}, {"", "1"}, {"C39", "9"}, {"EAN13", "1"}, {"QR", "A"}, {"QR", "a"}, {"qr", "A"}});
}

}  // namespace
