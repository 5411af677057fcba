#pragma once

#include <limits>

/// Truncates toward zero. What fits into no int, NaN included, is the smallest int, as the
/// processor's own conversion answers; the language leaves it undefined.
template <class Float> constexpr int truncated(Float value)
{
    constexpr Float limit = -static_cast<Float>(std::numeric_limits<int>::min());
    return value > -limit - 1 && value < limit ? static_cast<int>(value)
                                               : std::numeric_limits<int>::min();
}
