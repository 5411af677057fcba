#include "ColorGradient.h"

#include "Truncate.h"

#include <algorithm>

namespace {

constexpr ColorGradient::Color outsideColor{245, 66, 230, 255};

int mix(int from, int to, float factor)
{
    return truncated(static_cast<float>(to - from) * factor + static_cast<float>(from));
}

} // namespace

ColorGradient::ColorGradient()
    : below(outsideColor)
    , above(outsideColor)
{
    createDefaultHeatMapGradient();
}

void ColorGradient::addColorPoint(float value, float red, float green, float blue, float alpha)
{
    const auto next = std::upper_bound(points.begin(), points.end(), value,
        [](float position, const ColorPoint &point) { return position < point.val; });
    points.insert(
        next, {truncated(red), truncated(green), truncated(blue), truncated(alpha), value});
}

void ColorGradient::createDefaultHeatMapGradient()
{
    points = {{0, 0, 1, 1, 0.0f}, {0, 1, 1, 1, 0.25f}, {0, 1, 0, 1, 0.5f}, {1, 1, 0, 1, 0.75f},
        {1, 0, 0, 1, 1.0f}};
}

void ColorGradient::clearColorPoints()
{
    points.clear();
}

void ColorGradient::setMin(int value)
{
    min = value;
    calculateNormalize();
}

void ColorGradient::setMax(int value)
{
    max = value;
    calculateNormalize();
}

void ColorGradient::calculateNormalize()
{
    if (min != 0 || max != 0)
        normalize = static_cast<double>(max) - static_cast<double>(min);
}

void ColorGradient::getColorAtValue(float t, int &r, int &g, int &b, int &a) const
{
    if (points.empty())
        return;
    // Not a binary search: NaN has to fall past the last point.
    const auto next = std::find_if(
        points.begin(), points.end(), [t](const ColorPoint &point) { return point.val > t; });
    if (next == points.end()) {
        const ColorPoint &last = points.back();
        r = last.r;
        g = last.g;
        b = last.b;
        a = last.a;
        return;
    }

    const ColorPoint &current = *next;
    const ColorPoint &previous = next == points.begin() ? current : *(next - 1);
    const float distance = previous.val - current.val;
    const float factor = distance == 0.0f ? 0.0f : (t - current.val) / distance;
    r = mix(current.r, previous.r, factor);
    g = mix(current.g, previous.g, factor);
    b = mix(current.b, previous.b, factor);
    a = mix(current.a, previous.a, factor);
}

void ColorGradient::getColorRawValue(float v, int &r, int &g, int &b, int &a) const
{
    if (min == 0 && max == 0)
        return;
    const auto low = static_cast<float>(min);
    const bool isBelow = low > v;
    if (isBelow || v > static_cast<float>(max)) {
        const Color &outside = isBelow ? below : above;
        r = outside.r;
        g = outside.g;
        b = outside.b;
        a = outside.a;
        return;
    }
    getColorAtValue(static_cast<float>(static_cast<double>(v - low) / normalize), r, g, b, a);
}
