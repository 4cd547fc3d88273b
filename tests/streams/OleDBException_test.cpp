#include "streams/OleDBException.h"

TEST(OleDBException, KeepsItsTextThroughChangesAndCopies)
{
    OleDBException error("no table", -2147467259, "SELECT");
    error.Message = "changed";
    OleDBException const copy(error);
    EXPECT_STREQ(copy.what(), "no table");
    EXPECT_EQ(copy.Message + copy.Detail + LCString(copy.Code), "changedSELECT-2147467259");
}
