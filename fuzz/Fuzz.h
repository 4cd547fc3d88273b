#pragma once

// What every fuzz target sees: it defines Fuzz, takes its input apart, and requires what must hold.

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "foundation/LCString.h"

/// The bytes of one run. What is beyond the end is zero or empty.
struct Input {
    /// A number, by its bytes.
    template <typename Number> Number Take()
    {
        Number number{};
        std::size_t const size = std::min(sizeof number, rest.size());
        std::memcpy(&number, rest.data(), size);
        rest.remove_prefix(size);
        return number;
    }
    /// Up to the next line feed, which is left out.
    std::string TakeLine()
    {
        std::string const line(rest.substr(0, rest.find('\n')));
        rest.remove_prefix(std::min(line.size() + 1, rest.size()));
        return line;
    }
    std::string Rest() const { return std::string(rest); }

    std::string_view rest;
};

/// Ends the run with a finding if the two differ.
template <typename Value> void RequireEqual(char const * what, Value const & got, Value const & expected)
{
    if (got == expected) return;
    std::fprintf(stderr, "%s\n", what);
    if constexpr (requires { got.c_str(); })
        std::fprintf(stderr, "got      %s\nexpected %s\n", got.c_str(), expected.c_str());
    std::abort();
}

void Fuzz(Input input);

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const * data, std::size_t size)
{
    Fuzz(Input{{reinterpret_cast<char const *>(data), size}});
    return 0;
}
