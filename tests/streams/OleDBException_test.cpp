#include "streams/OleDBException.h"

#include <utility>

#include "support/Support.h"

namespace {

TEST(OleDBException, KeepsItsTextThroughCopiesAndChanges)
{
    OleDBException error("no table", -2147467259, "SELECT");
    error.Message = "changed";
    OleDBException const moved(std::move(error));
    for (OleDBException const * const each : {&std::as_const(error), &moved}) {
        EXPECT_STREQ(each->what(), "no table");
        EXPECT_EQ(each->Message, "changed");
        EXPECT_EQ(each->Code, -2147467259);
        EXPECT_EQ(each->Detail, "SELECT");
    }
    try {
        throw OleDBException("thrown", 1, "");
    } catch (std::exception const & caught) {
        EXPECT_STREQ(caught.what(), "thrown");
    }
}

}  // namespace
