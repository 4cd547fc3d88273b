#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

// Whole files by name. Names are bytes and end at their first zero. On POSIX the text mode changes nothing.
namespace qrtcl::platform {

/// Reads the whole file into `content`; false if it can't be opened or is a folder, or if a read fails
/// (`content` is then what came until then). Throws what the allocation throws.
bool ReadFile(std::string const & name, std::string & content);

/// Hands the bytes of the file to `take`, piece by piece, none empty, each with how many are still to come as
/// far as the file had a size; false as above.
bool ReadPieces(std::string const & name, std::function<void(std::string_view, std::size_t)> const & take);

/// Empties or creates the file and writes the bytes. False if it can't be opened; a failing write is not
/// reported.
bool WriteFile(std::string const & name, std::string_view content);

/// The same with what `give` puts into the empty text, again and again until it puts in nothing.
bool WritePieces(std::string const & name, std::function<void(std::string &)> const & give);

}  // namespace qrtcl::platform
