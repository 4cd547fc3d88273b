#include "foundation/LCString.h"

namespace {
TEST(String, Builds) { EXPECT_EQ(LCString(1.5, -1, false), "1.5"); }
}  // namespace
