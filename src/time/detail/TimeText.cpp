#include "time/detail/TimeText.h"

#include <algorithm>
#include <charconv>

namespace qrtcl::time {

char * PutAnyField(char * out, int value, int width) noexcept
{
    char digits[longestField];
    char const * const end = std::to_chars(digits, digits + sizeof digits, value).ptr;
    out = std::fill_n(out, std::max<std::ptrdiff_t>(width - (end - digits), 0), '0');
    return std::copy(static_cast<char const *>(digits), end, out);
}

}  // namespace qrtcl::time
