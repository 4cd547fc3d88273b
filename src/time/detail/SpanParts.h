#pragma once

namespace qrtcl::time {

/// What is whole in a span; both have the sign of the span.
struct WholeSpan {
    int seconds;
    int milliseconds;
};

/// Cuts off what is below the millisecond. A span that does not fit 32 bits of seconds gives the longest that
/// does, not-a-number gives zeros.
inline WholeSpan Cut(double span) noexcept
{
    if (span > -2147483648.0 && span < 2147483648.0) {
        int const seconds = static_cast<int>(span);
        return {seconds, static_cast<int>((span - seconds) * 1000.0)};
    }
    return {span > 0.0 ? 2147483647 : span < 0.0 ? -2147483647 : 0, 0};
}

/// A span taken apart; every part has the sign of the span.
struct SpanParts {
    int days;
    int hours;
    int minutes;
    int seconds;
    int milliseconds;
};

inline SpanParts Split(double span) noexcept
{
    auto const [seconds, milliseconds] = Cut(span);
    return {seconds / 86400, seconds / 3600 % 24, seconds / 60 % 60, seconds % 60, milliseconds};
}

}  // namespace qrtcl::time
