#pragma once

#include <array>
#include <cstdint>
#include <limits>

/// (min, max) of the values that are added, under a rule that the colouring relies on.
///
/// A value that raises the maximum is not compared with the minimum, so strictly rising positive
/// values never lower it, and only values above the smallest positive normal float raise the
/// maximum. A bound that no value touched is 0. NaN counts for nothing.
class IndividualBound
{
public:
    void add(float value)
    {
        if (value > max)
            max = value;
        else if (value < min)
            min = value;
    }

    std::array<float, 2> result() const
    {
        return {min == untouchedMin ? 0.0f : min, max == untouchedMax ? 0.0f : max};
    }

private:
    static constexpr float untouchedMin = std::numeric_limits<float>::max();
    static constexpr float untouchedMax = std::numeric_limits<float>::min();

    float min = untouchedMin;
    float max = untouchedMax;
};

/// The bound of values[start], values[start + step], ... below index \a end.
/// \param step at least 1
std::array<float, 2> individualBound(
    const float *values, std::int64_t end, std::int64_t start, std::int64_t step);

/// individualBound() of each coordinate of interleaved x, y, z values: x-min, x-max, y-min, y-max,
/// z-min, z-max. Blocks while three tasks of the global thread pool run.
/// \param count number of floats, three for each point
std::array<double, 6> interleavedBounds(const float *xyz, std::int64_t count);
