#pragma once

#include <cstdint>

// The integers of the family's interfaces and of its stored data: `long` stays at 32 bits there on every
// platform. On 64-bit Windows these are the types of those names.
#if defined(_WIN32)
using LCLong = long;
using LCULong = unsigned long;
using LCUInt64 = unsigned __int64;
#else
using LCLong = std::int32_t;
using LCULong = std::uint32_t;
using LCUInt64 = std::uint64_t;
#endif

static_assert(sizeof(int) == 4 && sizeof(LCLong) == 4 && sizeof(LCULong) == 4 && sizeof(LCUInt64) == 8);
static_assert(sizeof(double) == 8);
