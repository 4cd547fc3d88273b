#pragma once

// What every test sees: the framework, and how it prints the library's values.

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <iterator>
#include <string>

#include <gtest/gtest.h>

#include "foundation/LCString.h"

inline void PrintTo(LCString const & text, std::ostream * out) { *out << testing::PrintToString(text.str()); }

/// A folder of its own that is gone at the end of the test.
class TemporaryFolder {
    std::string movPath = testing::TempDir() + "qrtcl-XXXXXX";

public:
    TemporaryFolder()
    {
        if (::mkdtemp(movPath.data()) == nullptr) throw std::runtime_error("no temporary folder " + movPath);
    }
    TemporaryFolder(TemporaryFolder const &) = delete;
    ~TemporaryFolder() { std::filesystem::remove_all(movPath); }

    /// The path of a file in it.
    LCString Path(std::string const & name) const { return LCString(movPath + "/" + name); }
    /// Writes a file with exactly these bytes and gives its path.
    LCString Write(std::string const & name, std::string const & content) const
    {
        std::ofstream(Path(name).str(), std::ios::binary) << content;
        return Path(name);
    }
    /// The bytes of a file in it.
    std::string Read(std::string const & name) const
    {
        std::ifstream in(Path(name).str(), std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(in), {});
    }
};

/// The number of repetitions of a stress: QRTCL_TEST_STRESS multiplies it.
inline int Rounds(int usual)
{
    char const * const factor = std::getenv("QRTCL_TEST_STRESS");
    return factor != nullptr ? usual * std::atoi(factor) : usual;
}

/// A collection with these elements, which its own constructors do not take.
template <typename Container, typename Elements = std::initializer_list<typename Container::value_type>>
Container Make(Elements const & elements)
{
    Container made;
    for (auto const & element : elements) made.insert(made.end(), element);
    return made;
}

/// Checks all six operators on every pair of `values`, which stand in ascending order without equal ones.
template <typename Values> void ExpectTotalOrder(Values const & values)
{
    for (auto a = values.begin(); a != values.end(); ++a) {
        for (auto b = values.begin(); b != values.end(); ++b) {
            bool const less = std::distance(values.begin(), a) < std::distance(values.begin(), b);
            EXPECT_TRUE((*a == *b) == (a == b) && (*a != *b) == (a != b) && (*a < *b) == less);
            if constexpr (requires { *a > *b; }) { EXPECT_EQ(*b > *a, less); }
            if constexpr (requires { *a <= *b; }) { EXPECT_EQ(*a <= *b, less || a == b); }
            if constexpr (requires { *a >= *b; }) { EXPECT_EQ(*b >= *a, less || a == b); }
        }
    }
}
