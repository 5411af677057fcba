#pragma once

#include "ColorGradient.h"

#include <array>
#include <cstddef>
#include <vector>

/// The colours of ColorGradient::getColorRawValue() for many heights, equal for each float.
///
/// Between two colour points each component only rises or only falls with the height. The range
/// between the bounds is therefore cut into equal cells, and a cell whose neighbours' centres lie
/// between the same points and have the same colour has no other: one table access. The rest, where
/// a component steps, and heights outside the bounds take the road of the gradient itself.
///
/// Built in about 2 ms, then read-only: any number of threads may look up.
class ColorLookup
{
public:
    explicit ColorLookup(ColorGradient gradient);

    /// Black where the gradient leaves the colour open.
    /// \param heights the first of count heights, stride floats apart
    /// \param[out] rgb three bytes for each height
    void colorHeights(
        const float *heights, std::size_t stride, std::size_t count, unsigned char *rgb) const;

private:
    using Components = std::array<int, 3>;
    using Rgb = std::array<unsigned char, 3>;

    struct Cell
    {
        Rgb color;
        bool isPlain;
    };

    /// The heights between the bounds, cut into cells.
    struct Axis
    {
        float lowest;
        float highest;
        float cellsPerUnit;

        /// False for NaN.
        bool holds(float height) const { return height >= lowest && height <= highest; }
        /// Only rises with the height; \a height is on the axis.
        std::size_t cellOf(float height) const
        {
            return static_cast<std::size_t>((height - lowest) * cellsPerUnit);
        }
        float centreOf(std::size_t cell) const;
        double length() const;
    };

    static Rgb bytesOf(const Components &color);
    Components componentsAt(float height) const;
    Rgb exact(float height) const;
    void fillCells();

    ColorGradient gradient;
    Axis axis;
    std::vector<Cell> cells;
};
