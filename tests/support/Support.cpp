#include "support/Support.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <locale>
#include <stdlib.h>

void PrintTo(LCString const & text, std::ostream * out) { *out << testing::PrintToString(text.str()); }

TemporaryFolder::TemporaryFolder()
{
    movPath = testing::TempDir() + "qrtcl-XXXXXX";
    if (::mkdtemp(movPath.data()) == nullptr) throw std::runtime_error("no temporary folder " + movPath);
}

TemporaryFolder::~TemporaryFolder()
{
    std::error_code ignored;
    std::filesystem::remove_all(movPath, ignored);
}

LCString TemporaryFolder::Path(std::string const & name) const { return LCString(movPath + "/" + name); }

LCString TemporaryFolder::Write(std::string const & name, std::string const & content) const
{
    LCString const path = Path(name);
    std::ofstream(path.str(), std::ios::binary) << content;
    return path;
}

std::string TemporaryFolder::Read(std::string const & name) const
{
    std::ifstream in(Path(name).str(), std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), {});
}

// Stored texts are the same in every locale: QRTCL_TEST_LOCALE names one to run the tests in.
int main(int argc, char ** argv)
{
    if (char const * const name = std::getenv("QRTCL_TEST_LOCALE")) std::locale::global(std::locale(name));
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
