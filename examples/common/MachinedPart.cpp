#include "MachinedPart.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double pi = 3.14159265358979323846;

constexpr double beltHeight = 20.0;
constexpr double plateHeight = 120.0;
constexpr double plateChamfer = 24.0;
constexpr double bossX = 320.0;
constexpr double bossY = 310.0;
constexpr double bossRadius = 115.0;
constexpr double bossHeight = 200.0;

/// A rectangle with rounded corners.
struct Outline
{
    double left, right, front, back, corner;

    /// \return distance to the outline, positive on the inside
    double depth(double x, double y) const
    {
        const double halfWidth = (right - left) / 2 - corner;
        const double halfLength = (back - front) / 2 - corner;
        const double dx = std::abs(x - (left + right) / 2) - halfWidth;
        const double dy = std::abs(y - (front + back) / 2) - halfLength;
        const double outside = std::hypot(std::max(dx, 0.0), std::max(dy, 0.0));
        return corner - outside - std::min(std::max(dx, dy), 0.0);
    }
};

constexpr Outline plate{112.0, 912.0, 90.0, 680.0, 30.0};
constexpr Outline pocket{540.0, 830.0, 180.0, 460.0, 45.0};
constexpr Outline slot{190.0, 700.0, 540.0, 600.0, 30.0};

bool isInCornerHole(double x, double y)
{
    constexpr double inset = 62.0;
    constexpr double radius = 26.0;
    const double dx = std::min(std::abs(x - plate.left - inset), std::abs(plate.right - inset - x));
    const double dy = std::min(std::abs(y - plate.front - inset), std::abs(plate.back - inset - y));
    return std::hypot(dx, dy) < radius;
}

/// \return distance from the axis of the nearest hole in the bolt circle
double boltDistance(double x, double y)
{
    constexpr double circleRadius = 84.0;
    constexpr double sector = pi / 3;
    const double radius = std::hypot(x, y);
    const double angle = std::remainder(std::atan2(y, x), sector);
    return std::hypot(radius * std::cos(angle) - circleRadius, radius * std::sin(angle));
}

double bossTop(double x, double y)
{
    constexpr double chamfer = 12.0;
    constexpr double boreRadius = 46.0;
    constexpr double boreFloor = 60.0;
    constexpr double boltRadius = 13.0;
    constexpr double boltFloor = 130.0;
    const double radius = std::hypot(x, y);
    if (radius < boreRadius)
        return boreFloor;
    const double bolt = boltDistance(x, y);
    if (bolt < boltRadius)
        return boltFloor + bolt * 1.5; // the cone that the drill's tip leaves
    return bossHeight - std::max(chamfer - (bossRadius - radius), 0.0);
}

double pocketFloor(double x, double y)
{
    constexpr double floor = 70.0;
    constexpr double step = 18.0;
    constexpr double markDepth = 1.2;
    return floor + markDepth * std::abs(std::sin(pi * (x + y) / step));
}

double plateTop(double x, double y, double depth)
{
    constexpr double slotFloor = 95.0;
    if (std::hypot(x - bossX, y - bossY) < bossRadius)
        return bossTop(x - bossX, y - bossY);
    if (pocket.depth(x, y) > 0)
        return pocketFloor(x, y);
    if (slot.depth(x, y) > 0)
        return slotFloor;
    return plateHeight - std::max(plateChamfer - depth, 0.0);
}

} // namespace

float MachinedPart::heightAt(double x, double y)
{
    const double depth = plate.depth(x, y);
    if (depth <= 0)
        return static_cast<float>(beltHeight + std::sin(pi * y / 12.0) * 0.8);
    if (isInCornerHole(x, y))
        return noEcho;
    return static_cast<float>(plateTop(x, y, depth));
}
