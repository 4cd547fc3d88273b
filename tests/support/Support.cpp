#include "support/Support.h"

#include <locale>

// Stored texts are the same in every locale: QRTCL_TEST_LOCALE names one to run the tests in.
int main(int argc, char ** argv)
{
    if (char const * const name = std::getenv("QRTCL_TEST_LOCALE")) std::locale::global(std::locale(name));
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
