#pragma once

#include <limits>

/// \a value truncated toward zero. NaN and whatever no int can hold, which C++ leaves undefined,
/// give the smallest int, as x86 itself answers; its low byte is 0.
template <typename Float> constexpr int truncatedToInt(Float value)
{
    constexpr Float limit = 2147483648.0f;
    return value >= -limit && value < limit ? static_cast<int>(value)
                                            : std::numeric_limits<int>::min();
}
