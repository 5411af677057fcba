#pragma once

#include <cstdint>

/// Number of samples in a buffer of \a width values per row and \a height rows: the 32-bit product,
/// wrapping as the sensor's own drivers compute it, widened with its sign. 65536 x 65536 gives 0.
constexpr std::int64_t wrappedSampleCount(int width, int height)
{
    const std::uint32_t product =
        static_cast<std::uint32_t>(width) * static_cast<std::uint32_t>(height);
    return static_cast<std::int32_t>(product);
}
