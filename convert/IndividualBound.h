#pragma once

#include <array>
#include <cstdint>

/// (min, max) of values[start], values[start + step], ... below index \a end.
///
/// A value that raises the maximum is not compared with the minimum, so strictly rising positive
/// values never lower it, and only values above the smallest positive normal float raise the
/// maximum. A bound that no value touched is 0. NaN counts for nothing.
/// \param step at least 1
std::array<float, 2> individualBound(
    const float *values, std::int64_t end, std::int64_t start, std::int64_t step);

/// individualBound() of each coordinate of interleaved x, y, z values: x-min, x-max, y-min, y-max,
/// z-min, z-max. Blocks while three tasks of the global thread pool run.
/// \param count number of floats, three for each point
std::array<double, 6> interleavedBounds(const float *xyz, std::int64_t count);
