#include "input/LCBarCode.h"

#include <type_traits>

#include "support/Support.h"

namespace {

static_assert(std::is_nothrow_move_constructible_v<LCBarCode> && std::has_virtual_destructor_v<LCBarCode>);

TEST(BarCode, ConstantsHoldTheNamesInUse)
{
    struct {
        LCString const & constant;
        char const * text;
    } const rows[] = {
        {LCBarCode::BCT_C2_5_interleaved, "C2_5_interleaved"},
        {LCBarCode::BCT_C2_5_industrial, "C2_5_industrial"},
        {LCBarCode::BCT_C2_5_matrix, "C2_5_matrix"},
        {LCBarCode::BCT_C39, "C39"},
        {LCBarCode::BCT_C39Extended, "C39Extended"},
        {LCBarCode::BCT_C128A, "C128A"},
        {LCBarCode::BCT_C128B, "C128B"},
        {LCBarCode::BCT_C128C, "C128C"},
        {LCBarCode::BCT_C93, "C93"},
        {LCBarCode::BCT_C93Extended, "C93Extended"},
        {LCBarCode::BCT_MSI, "MSI"},
        {LCBarCode::BCT_PostNet, "PostNet"},
        {LCBarCode::BCT_Codabar, "Codabar"},
        {LCBarCode::BCT_EAN8, "EAN8"},
        {LCBarCode::BCT_EAN13, "EAN13"},
        {LCBarCode::BCT_UPC_A, "UPC_A"},
        {LCBarCode::BCT_UPC_E0, "UPC_E0"},
        {LCBarCode::BCT_UPC_E1, "UPC_E1"},
        {LCBarCode::BCT_UPC_Supp2, "UPC_Supp2"},
        {LCBarCode::BCT_UPC_Supp5, "UPC_Supp5"},
        {LCBarCode::BCT_EAN128A, "EAN128A"},
        {LCBarCode::BCT_EAN128B, "EAN128B"},
        {LCBarCode::BCT_EAN128C, "EAN128C"},
        {LCBarCode::BCT_QR, "QR"},
    };
    for (auto const & row : rows) EXPECT_EQ(row.constant, row.text);
}

TEST(BarCode, TypeAndDataAreFreeText)
{
    LCBarCode code;
    EXPECT_EQ(code, LCBarCode("", ""));
    EXPECT_TRUE(code.SetType(LCBarCode::BCT_EAN13));
    EXPECT_TRUE(code.SetData("no digits"));
    EXPECT_EQ(code.GetType(), "EAN13");
    EXPECT_EQ(code.GetData(), "no digits");
    EXPECT_TRUE(code.SetType("no type of ours"));
    EXPECT_TRUE(code.SetData(""));
    EXPECT_EQ(code, LCBarCode("no type of ours"));
}

TEST(BarCode, OrderIsByTypeThenData)
{
    ExpectTotalOrder(std::vector<LCBarCode>{
        {}, {"", "1"}, {"C39", "9"}, {"EAN13", "1"}, {"QR", "A"}, {"QR", "a"}, {"qr", "A"}});
}

}  // namespace
