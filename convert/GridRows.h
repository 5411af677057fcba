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

/// Calls visit(row, offset of the row's first sample, samples in the row) for each row of the first
/// \a count samples; a wrapped count may end inside a row.
template <typename Visit> void forEachRow(int width, std::int64_t count, Visit visit)
{
    std::int64_t offset = 0;
    for (int row = 0; offset < count; ++row) {
        const auto samples = static_cast<int>(std::min<std::int64_t>(width, count - offset));
        visit(row, offset, samples);
        offset += samples;
    }
}

/// Writes the point (column, row, height) for each sample.
/// \return the end of what was written
inline float *writeRow(int row, const float *heights, int samples, float *xyz)
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
inline float *writeRowNoZero(int row, const float *heights, int samples, float *xyz)
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
