#pragma once

#include <array>

/// The box that the axes show after a cloud with the bounds \a cloud arrived: xmin, xmax, ymin,
/// ymax, zmin, zmax, unscaled.
///
/// The height axis keeps its top while the top of the data stays within 75 and 100 % of it, so that
/// it does not jump with each frame; outside that band it becomes 120 % of the data's top.
/// \param current the box shown so far, all 0 before the first cloud
/// \param sensorHeight fixed top of the height axis, 0 for none
std::array<double, 6> nextAxisExtents(
    const std::array<double, 6> &current, const std::array<double, 6> &cloud, int sensorHeight);
