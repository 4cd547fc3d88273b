#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "foundation/Export.h"

// The two ways between numbers and text, in the classic locale and without streams.
namespace qrtcl::number {

/// The powers of ten that a double holds exactly.
inline constexpr std::array<double, 23> exactPowers = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                       1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                                       1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

/// Fixed notation with `precision` (not negative) digits behind the point, exactly rounded (ties to even).
/// With `trim`, without the zeros at the end of the fraction; a point left at the end goes as well. Throws
/// what the allocation throws.
std::string Fixed(double v, int precision, bool trim);

/// Decimal digits behind the sign.
std::string Decimal(std::uint64_t magnitude, bool negative);

// These read like the standard formatted extraction and leave in `out` what it leaves there. Short strings
// are read faster than views.
bool ReadDouble(std::string_view text, double & out) noexcept;
QRTCL_API bool ReadDouble(std::string const & text, double & out) noexcept;
bool ReadInt(std::string_view text, bool hex, std::int32_t & out) noexcept;
QRTCL_API bool ReadInt(std::string const & text, bool hex, std::int32_t & out) noexcept;
bool ReadUInt(std::string_view text, bool hex, std::uint32_t & out) noexcept;

}  // namespace qrtcl::number
