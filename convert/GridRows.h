#pragma once

#include "SampleCount.h"

#include <algorithm>
#include <cstdint>

/// Number of samples in a buffer of w values per row and h rows. A null buffer, a size that is not
/// positive and a product that wraps to 0 or below make an empty buffer.
inline std::int64_t sampleCount(const void *buffer, int w, int h)
{
    if (!buffer || w <= 0 || h <= 0)
        return 0;

    return std::max<std::int64_t>(wrappedSampleCount(w, h), 0);
}

/// The rows of a buffer, whose wrapped count of samples may end inside one. Copies share heights.
class HeightGrid
{
public:
    HeightGrid(const float *heights, int w, int h)
        : begin(heights)
        , samples(sampleCount(heights, w, h))
        // Sizes whose product wraps may be far beyond the samples.
        , columns(std::clamp<std::int64_t>(w, 1, std::max<std::int64_t>(samples, 1)))
        , lines((samples + columns - 1) / columns)
    { }

    std::int64_t count() const { return samples; }
    std::int64_t rows() const { return lines; }
    /// At least 1, and no more than the samples if there are any.
    std::int64_t width() const { return columns; }

    const float *row(std::int64_t index) const { return begin + index * columns; }
    /// Fewer than the width in the last row only.
    std::int64_t samplesIn(std::int64_t index) const
    {
        return std::min(columns, samples - index * columns);
    }

private:
    const float *begin;
    std::int64_t samples;
    std::int64_t columns;
    std::int64_t lines;
};

/// Writes the point (column, row, height) for each sample.
/// \return the end of what was written
inline float *writeRow(std::int64_t row, const float *heights, std::int64_t samples, float *xyz)
{
    const auto y = static_cast<float>(row);
    for (int column = 0; column < samples; ++column, xyz += 3) {
        xyz[0] = static_cast<float>(column);
        xyz[1] = y;
        xyz[2] = heights[column];
    }
    return xyz;
}

/// The same without the samples that are +0 or -0. Writes all of them, and over each zero the next:
/// zeros come in no order that a branch could be predicted from.
inline float *writeRowNoZero(
    std::int64_t row, const float *heights, std::int64_t samples, float *xyz)
{
    const auto y = static_cast<float>(row);
    for (int column = 0; column < samples; ++column) {
        xyz[0] = static_cast<float>(column);
        xyz[1] = y;
        xyz[2] = heights[column];
        xyz += heights[column] != 0.0f ? 3 : 0;
    }
    return xyz;
}
