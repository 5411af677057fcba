#pragma once

#include <vtkSmartPointer.h>

class vtkFloatArray;
class vtkPolyData;

/// A cloud without cells over three coordinates a point, which stay where they are.
vtkSmartPointer<vtkPolyData> cloudOver(vtkFloatArray *xyz);
