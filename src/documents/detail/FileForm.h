#pragma once

#include <cstddef>
#include <string>
#include <string_view>

// How bytes that XML can't hold stand in the file: "_xHHHH_", with the number of the byte from 0000 to 00FF
// in hexadecimal digits. An underscore that could be taken for the begin of such a form is written so itself.
namespace qrtcl::documents {

/// A document with more levels or more attributes in one paragraph is neither saved nor loaded. A value that
/// stands in an attribute does not count.
inline constexpr std::size_t maximumLevels = 256;
inline constexpr std::size_t maximumAttributes = 10000;
/// Nor is one with more bytes, as they stand in the file, in a name or in an attribute: libxml2 reads no
/// more.
inline constexpr std::size_t maximumNameBytes = 10'000'000;
inline constexpr std::size_t maximumAttributeBytes = 1'000'000'000;

/// The attribute that holds a value that can't be the text of its element.
inline constexpr std::string_view valueAttribute = "_value";

/// Appends a paragraph's or an attribute's name: ASCII letters, digits, "_", "-" and "." stay, the empty name
/// is "_x_". What begins with "xml" in any case is escaped, since such names are reserved.
void AppendName(std::string & out, std::string_view name);

/// Whether a name stays as it is.
bool IsPlainName(std::string_view name);

/// Appends a value between tags, or with `inAttribute` between double quotes.
void AppendText(std::string & out, std::string_view text, bool inAttribute);

/// The text that `stored` stands for: `stored` itself, or built in `room`. Forms of numbers above 00FF stay.
std::string_view Unescaped(std::string_view stored, std::string & room);
/// The name that `stored` stands for.
std::string_view UnescapedName(std::string_view stored, std::string & room);

/// Blank, tab, line feed and carriage return.
bool IsWhiteSpace(std::string_view text);

}  // namespace qrtcl::documents
