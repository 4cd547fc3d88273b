#pragma once

#include <filesystem>

#include "Part.h"

/// Loads a part; throws std::runtime_error with the file and the place of what is wrong.
Part LoadPart(LCString const & file);

/// Feeds what a scanner types, a code between prefix and suffix, to the keyboard dispatcher; gives the code
/// that arrived.
LCString Scan(LCString const & typed);

/// The file of the part with this code that has the highest revision: in `folder`, or the shipped one. Throws
/// std::runtime_error if there is none.
LCString FindPart(LCString const & code, std::filesystem::path const & folder);
