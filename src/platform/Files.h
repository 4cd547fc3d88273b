#pragma once

#include <string>
#include <string_view>

// Whole files by name. Names are bytes and end at their first zero. On POSIX the text mode changes nothing.
namespace qrtcl::platform {

/// Reads the whole file into `content`; false if it can't be opened or is a folder, or if a read fails
/// (`content` is then what came until then). Throws what the allocation throws.
bool ReadFile(std::string const & name, std::string & content);

/// Empties or creates the file and writes the bytes. False if it can't be opened; a failing write is not
/// reported.
bool WriteFile(std::string const & name, std::string_view content);

}  // namespace qrtcl::platform
