#include "input/LCBarCode.h"

TEST(BarCode, IsOrderedByTypeThenData)
{
    ExpectTotalOrder(std::vector<LCBarCode>{
        {}, {"", "1"}, {"C39", "9"}, {"EAN13", "1"}, {"QR", "A"}, {"QR", "a"}, {"qr", "A"}});
}
