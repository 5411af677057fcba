#pragma once

#include "ColorGradient.h"

#include <array>
#include <cstddef>
#include <vector>

/// The colours of ColorGradient::getColorRawValue() for many heights, equal for each float.
///
/// Between two colour points each component only rises or only falls with the height. The range between the
/// bounds is therefore cut into equal cells, and a cell whose neighbours' centres lie between the same
/// points and have the same colour has no other: one table access. The rest, where a component steps,
/// and heights outside the bounds take the road of the gradient itself.
///
/// Built in about 2 ms, then read-only: any number of threads may look up.
class ColorLookup
{
public:
    using Rgb = std::array<unsigned char, 3>;

    explicit ColorLookup(ColorGradient gradient);

    /// Black where the gradient leaves the colour open.
    Rgb at(float height) const
    {
        // False for NaN.
        if (!(height >= lowest && height <= highest))
            return exact(height);
        const Cell cell = cells[cellOf(height)];
        return cell.isPlain ? cell.color : exact(height);
    }

private:
    struct Cell
    {
        Rgb color;
        bool isPlain;
    };

    std::size_t cellOf(float height) const
    {
        return static_cast<std::size_t>((height - lowest) * cellsPerUnit);
    }
    using Components = std::array<int, 3>;

    Components componentsAt(float height) const;
    Rgb exact(float height) const;
    float centreOf(std::size_t cell) const;
    void fillCells();

    ColorGradient gradient;
    float lowest;
    float highest;
    float cellsPerUnit = 0.0f;
    std::vector<Cell> cells;
};
