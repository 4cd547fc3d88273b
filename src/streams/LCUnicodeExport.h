#pragma once

#include "foundation/Export.h"

/// Texts as UTF-16 files (little-endian, with a byte-order mark), which replace what stood under the path.
///
/// False if the file can't be opened, or for a null text, which touches no file. A write that fails leaves a
/// short file and gives true.
class QRTCL_API LCUnicodeExport {
public:
    /// A data link file (UDL): the header lines of that layout, the connection string and a line end. The
    /// bytes of the string become the code units of their numbers; no character set is asked.
    static bool SaveConnStrUDLFile(char const * connectionString, char const * path) noexcept;
    /// The text and nothing else, converted by the character set of the calling thread's locale. A byte that
    /// does not convert becomes the code unit of its number.
    static bool SaveStringToFile(char const * text, char const * path) noexcept;
};

// Exported under these plain names, for callers that look them up. Both are `SaveStringToFile`: unlike the
// member of its own name, the first writes no header lines.
extern "C" {
QRTCL_API bool SaveConnStrUDLFile(char const * text, char const * path) noexcept;
QRTCL_API bool SaveStringAsUniCodeToFile(char const * text, char const * path) noexcept;
}
