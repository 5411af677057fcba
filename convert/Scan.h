#pragma once

#include "Subsample.h"

#include <vtkPolyData.h>
#include <vtkSmartPointer.h>

#include <array>

/// Box of nothing in VTK's sense: xmin > xmax, ...
constexpr std::array<double, 6> unknownBox{1.0, -1.0, 1.0, -1.0, 1.0, -1.0};

/// A cloud on its way to the screen, with what its maker knows of it.
struct Scan
{
    vtkSmartPointer<vtkPolyData> cloud; ///< points as 32-bit floats
    std::array<double, 6> bounds{}; ///< extents for the axes
    std::array<double, 2> heightRange{}; ///< low and high end for colouring
    /// Of the points whose coordinates are finite, each coordinate on its own.
    std::array<double, 6> box = unknownBox;
    Subsample subsample; ///< without a cloud: small enough to do without, or not known yet
    bool isHandedOver = false; ///< nobody else looks at the points: they can be kept without a copy
};
