#include "streams/OleDBException.h"

#include <utility>

#include "support/Support.h"

TEST(OleDBException, KeepsItsTextThroughCopiesAndChanges)
{
    OleDBException error("no table", -2147467259, "SELECT");
    error.Message = "changed";
    OleDBException const moved(std::move(error));
    for (auto const * const each : {&std::as_const(error), &moved}) {
        EXPECT_STREQ(each->what(), "no table");
        EXPECT_EQ(each->Message + each->Detail + LCString(each->Code), "changedSELECT-2147467259");
    }
}
