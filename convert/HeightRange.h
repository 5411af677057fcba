#pragma once

#include <array>
#include <cstddef>
#include <limits>

/// Extent of the heights of a scan, collected row by row while the row is in the processor's cache.
class HeightRange
{
public:
    /// \param withZeros whether heights of zero belong to the finite ones
    explicit HeightRange(bool withZeros)
        : countsZeros(withZeros)
    { }

    /// NaN counts for nothing.
    void add(const float *heights, std::size_t count);
    void add(const HeightRange &other);

    /// Largest height, infinity included, of those above the smallest positive normal float; 0 when
    /// there is none.
    float top() const { return highest > smallestTop ? highest : 0.0f; }

    /// (lowest, highest) finite height; (infinity, -infinity) when there is none.
    std::array<float, 2> finite() const { return finiteRange; }

private:
    static constexpr float infinity = std::numeric_limits<float>::infinity();
    static constexpr float smallestTop = std::numeric_limits<float>::min();

    bool countsZeros;
    float highest = -infinity;
    std::array<float, 2> finiteRange{infinity, -infinity};
};
