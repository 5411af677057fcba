#include "ColorLookup.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace {

/// 256 KiB of cells fit the processor's second cache; a gradient of five stops has some 3000 steps
/// of a component, so that one height of twenty meets a cell that is not plain.
constexpr std::size_t cellCount = 65536;

ColorLookup::Rgb bytesOf(const std::array<int, 3> &color)
{
    return {static_cast<unsigned char>(color[0]), static_cast<unsigned char>(color[1]),
        static_cast<unsigned char>(color[2])};
}

} // namespace

ColorLookup::ColorLookup(ColorGradient colors)
    : gradient(std::move(colors))
    , lowest(static_cast<float>(gradient.getMin()))
    , highest(static_cast<float>(gradient.getMax()))
{
    if (lowest < highest) {
        fillCells();
        return;
    }
    // Nothing lies between such bounds but what the gradient itself decides.
    lowest = std::numeric_limits<float>::infinity();
    highest = -lowest;
}

ColorLookup::Components ColorLookup::componentsAt(float height) const
{
    Components color{};
    int alpha = 0;
    gradient.getColorRawValue(height, color[0], color[1], color[2], alpha);
    return color;
}

ColorLookup::Rgb ColorLookup::exact(float height) const
{
    return bytesOf(componentsAt(height));
}

float ColorLookup::centreOf(std::size_t cell) const
{
    const double unitsPerCell = (static_cast<double>(highest) - lowest) / cellCount;
    return static_cast<float>(lowest + (static_cast<double>(cell) + 0.5) * unitsPerCell);
}

void ColorLookup::fillCells()
{
    struct Sample
    {
        Components color;
        std::size_t point;
        std::size_t cell;
    };
    const auto centre = [this](std::size_t cell) {
        const float height = centreOf(cell);
        return Sample{componentsAt(height), gradient.pointAbove(height), cellOf(height)};
    };

    cellsPerUnit = static_cast<float>(cellCount / (static_cast<double>(highest) - lowest));
    // The outer cells have a neighbour on one side only. Rounding may take the upper bound itself
    // into a cell behind the last.
    cells.assign(cellCount + 2, Cell{{}, false});
    Sample below = centre(0);
    Sample middle = centre(1);
    for (std::size_t cell = 1; cell + 1 < cellCount; ++cell) {
        const Sample above = centre(cell + 1);
        // Where floats are wider apart than cells, a centre may round into another cell.
        const bool isEnclosed = below.cell < cell && above.cell > cell;
        if (isEnclosed && below.point == above.point && below.color == above.color)
            cells[cell] = {bytesOf(above.color), true};
        below = std::exchange(middle, above);
    }
}
