#pragma once

#include <vector>

/// The heights of one scan, row-major: one profile per row, profile 0 first.
struct HeightMap
{
    /// Values per profile.
    int width = 0;
    /// Number of profiles.
    int height = 0;
    /// width * height heights in the unit of their source.
    std::vector<float> heights;
};
