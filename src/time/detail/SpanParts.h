#pragma once

namespace qrtcl::time {

/// A span taken apart; every part has the sign of the span.
struct SpanParts {
    int days;
    int hours;
    int minutes;
    int seconds;
    int milliseconds;
};

/// Cuts off what is below the millisecond. A span that does not fit 32 bits of seconds gives the longest that
/// does, not-a-number gives zeros.
inline SpanParts Split(double span) noexcept
{
    int seconds = 0;
    int milliseconds = 0;
    if (span > -2147483648.0 && span < 2147483648.0) {
        seconds = static_cast<int>(span);
        milliseconds = static_cast<int>((span - seconds) * 1000.0);
    } else if (span > 0.0) {
        seconds = 2147483647;
    } else if (span < 0.0) {
        seconds = -2147483647;
    }
    return {seconds / 86400, seconds / 3600 % 24, seconds / 60 % 60, seconds % 60, milliseconds};
}

}  // namespace qrtcl::time
