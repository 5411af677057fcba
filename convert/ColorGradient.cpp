#include "ColorGradient.h"

#include "Truncate.h"

#include <algorithm>
#include <cstdint>

namespace {

template <typename Color> void output(const Color &color, int &r, int &g, int &b, int &a)
{
    r = color.r;
    g = color.g;
    b = color.b;
    a = color.a;
}

/// 0 at \a to, 1 at \a from.
float fraction(float t, float from, float to)
{
    const float length = from - to;
    return length == 0.0f ? 0.0f : (t - to) / length;
}

int mixed(int from, int to, float share)
{
    const std::int64_t difference = static_cast<std::int64_t>(from) - to;
    return truncatedToInt(static_cast<float>(difference) * share + static_cast<float>(to));
}

} // namespace

ColorGradient::ColorGradient()
{
    createDefaultHeatMapGradient();
}

void ColorGradient::addColorPoint(float value, float red, float green, float blue, float alpha)
{
    const ColorPoint point{truncatedToInt(red), truncatedToInt(green), truncatedToInt(blue),
        truncatedToInt(alpha), value};
    // Stops mostly arrive in order. False for NaN, which only the search below places right.
    if (!points.empty() && points.back().val <= value) {
        points.push_back(point);
        return;
    }
    const auto behind = std::find_if(points.begin(), points.end(),
        [value](const ColorPoint &existing) { return existing.val > value; });
    points.insert(behind, point);
}

void ColorGradient::createDefaultHeatMapGradient()
{
    points = {{0, 0, 1, 1, 0.0f}, {0, 1, 1, 1, 0.25f}, {0, 1, 0, 1, 0.5f}, {1, 1, 0, 1, 0.75f},
        {1, 0, 0, 1, 1.0f}};
}

void ColorGradient::clear()
{
    points.clear();
}

void ColorGradient::setMin(int bound)
{
    min = bound;
    calculateNormalize();
}

void ColorGradient::setMax(int bound)
{
    max = bound;
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

    const auto next = firstAbove(t);
    if (next == points.end())
        return output(points.back(), r, g, b, a);

    const ColorPoint &to = *next;
    const ColorPoint &from = next == points.begin() ? to : *(next - 1);
    const float share = fraction(t, from.val, to.val);
    r = mixed(from.r, to.r, share);
    g = mixed(from.g, to.g, share);
    b = mixed(from.b, to.b, share);
    a = mixed(from.a, to.a, share);
}

void ColorGradient::getColorRawValue(float v, int &r, int &g, int &b, int &a) const
{
    if (min == 0 && max == 0)
        return;

    if (static_cast<float>(min) > v)
        return output(below, r, g, b, a);
    if (v > static_cast<float>(max))
        return output(above, r, g, b, a);

    getColorAtValue(normalized(v), r, g, b, a);
}

float ColorGradient::normalized(float v) const
{
    const double height = v - static_cast<float>(min);
    return static_cast<float>(height / normalize);
}

ColorGradient::Points::const_iterator ColorGradient::firstAbove(float t) const
{
    return std::find_if(
        points.begin(), points.end(), [t](const ColorPoint &point) { return point.val > t; });
}

std::size_t ColorGradient::pointAbove(float v) const
{
    return static_cast<std::size_t>(firstAbove(normalized(v)) - points.begin());
}
