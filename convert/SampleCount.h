#pragma once

#include <cstdint>
#include <new>

/// Number of samples in a buffer of \a width values per row and \a height rows: the 32-bit product,
/// wrapping as the sensor's own drivers compute it, widened with its sign. 65536 x 65536 gives 0.
constexpr std::int64_t wrappedSampleCount(int width, int height)
{
    const std::uint32_t product =
        static_cast<std::uint32_t>(width) * static_cast<std::uint32_t>(height);
    return static_cast<std::int32_t>(product);
}

/// The same for a copy of the buffer.
/// \throws std::bad_array_new_length when the product is negative
inline std::int64_t checkedSampleCount(int width, int height)
{
    const std::int64_t count = wrappedSampleCount(width, height);
    if (count < 0)
        throw std::bad_array_new_length();
    return count;
}
