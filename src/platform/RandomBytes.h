#pragma once

#include <array>

#include "foundation/Export.h"

// Random bytes for new identities.
namespace qrtcl::platform {

using RandomBlock = std::array<unsigned char, 16>;

/// Fills the block with bytes that no other call gets, on no thread and in no forked child. False if the
/// system gives none; the block is then not meaningful.
bool RandomBytes(RandomBlock & block) noexcept;

/// Puts another source behind `RandomBytes`, for tests; null puts the system's back.
QRTCL_API void ReplaceRandomBytes(bool (*source)(RandomBlock &) noexcept) noexcept;

}  // namespace qrtcl::platform
