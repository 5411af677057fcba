#include "AxisExtents.h"

#include <cmath>

namespace {

std::array<double, 6> withTop(std::array<double, 6> extents, double top)
{
    extents[5] = top;
    return extents;
}

} // namespace

std::array<double, 6> nextAxisExtents(
    const std::array<double, 6> &current, const std::array<double, 6> &cloud, int sensorHeight)
{
    if (sensorHeight != 0)
        return withTop(cloud, sensorHeight);

    const double dataTop = cloud[5];
    const double raisedTop = dataTop + 0.2 * dataTop;
    const bool nothingShownYet = current[1] == 0.0;
    if (nothingShownYet) {
        const bool isNegative = dataTop - 0.25 * dataTop > dataTop;
        return isNegative ? withTop(cloud, raisedTop) : cloud;
    }

    const double top = current[5];
    // An infinite top compares with nothing and would stay for good.
    if (top - 0.25 * top > dataTop || dataTop > top || !std::isfinite(top))
        return withTop(cloud, raisedTop);
    return current;
}
