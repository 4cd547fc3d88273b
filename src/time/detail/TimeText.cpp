#include "time/detail/TimeText.h"

#include <charconv>

namespace qrtcl::time {

void TextBlock::AnyField(int value, int width) noexcept
{
    char digits[16];
    char const * const end = std::to_chars(digits, digits + sizeof digits, value).ptr;
    for (auto length = end - digits; length < width; ++length) Char('0');
    for (char const * digit = digits; digit != end; ++digit) Char(*digit);
}

}  // namespace qrtcl::time
