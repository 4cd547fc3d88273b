#pragma once

// What every fuzz target sees: it defines Fuzz, takes its input apart, and requires what must hold.

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>

#include "foundation/LCString.h"

/// The bytes of one run. What is beyond the end is zero or empty.
class Input {
public:
    explicit Input(std::string_view bytes) : movRest(bytes) {}

    /// A number, by its bytes.
    template <typename Number> Number Take()
    {
        Number number{};
        std::string_view const bytes = movRest.substr(0, sizeof number);
        std::memcpy(&number, bytes.data(), bytes.size());
        movRest.remove_prefix(bytes.size());
        return number;
    }
    /// Up to the next line feed, which is left out.
    std::string TakeLine()
    {
        std::string const line(movRest.substr(0, movRest.find('\n')));
        movRest.remove_prefix(std::min(line.size() + 1, movRest.size()));
        return line;
    }
    std::string Rest() const { return std::string(movRest); }

private:
    std::string_view movRest;
};

/// Ends the run with a finding if the two differ.
template <typename Value> void RequireEqual(char const * what, Value const & got, Value const & expected)
{
    if (got == expected) return;
    std::fprintf(stderr, "%s\n", what);
    if constexpr (requires { got.data(); })
        std::fprintf(stderr, "got      %s\nexpected %s\n", got.data(), expected.data());
    std::abort();
}

void Fuzz(Input input);

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const * data, std::size_t size)
{
    Fuzz(Input({reinterpret_cast<char const *>(data), size}));
    return 0;
}
