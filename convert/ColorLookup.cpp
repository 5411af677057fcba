#include "ColorLookup.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace {

/// Half a MiB of cells fits the processor's second cache. A gradient of five stops has some 1000
/// steps of a component, so that one height of fifty meets a cell that is not plain.
constexpr std::size_t cellCount = 131072;

} // namespace

ColorLookup::ColorLookup(ColorGradient colors)
    : gradient(std::move(colors))
    , axis{static_cast<float>(gradient.getMin()), static_cast<float>(gradient.getMax()), 0.0f}
{
    if (axis.lowest < axis.highest) {
        axis.cellsPerUnit = static_cast<float>(cellCount / axis.length());
        fillCells();
        return;
    }
    // Nothing lies between such bounds but what the gradient itself decides.
    axis.lowest = std::numeric_limits<float>::infinity();
    axis.highest = -axis.lowest;
}

void ColorLookup::colorHeights(
    const float *heights, std::size_t stride, std::size_t count, unsigned char *rgb) const
{
    // Copies that the bytes written cannot overlap: they would be loaded again for each height.
    const Axis scale = axis;
    const Cell *const table = cells.data();
    for (std::size_t i = 0; i < count; ++i, heights += stride, rgb += 3) {
        const float height = *heights;
        const Cell cell = scale.holds(height) ? table[scale.cellOf(height)] : Cell{{}, false};
        const Rgb color = cell.isPlain ? cell.color : exact(height);
        std::copy(color.begin(), color.end(), rgb);
    }
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

ColorLookup::Rgb ColorLookup::bytesOf(const Components &color)
{
    return {static_cast<unsigned char>(color[0]), static_cast<unsigned char>(color[1]),
        static_cast<unsigned char>(color[2])};
}

double ColorLookup::Axis::length() const
{
    return static_cast<double>(highest) - static_cast<double>(lowest);
}

float ColorLookup::Axis::centreOf(std::size_t cell) const
{
    const double share = (static_cast<double>(cell) + 0.5) / cellCount;
    return static_cast<float>(static_cast<double>(lowest) + share * length());
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
        const float height = axis.centreOf(cell);
        return Sample{componentsAt(height), gradient.pointAbove(height), axis.cellOf(height)};
    };

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
