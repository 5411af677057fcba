#pragma once

#include <vtkSmartPointer.h>

class vtkFloatArray;
class vtkPoints;
class vtkPolyData;

/// Points over three coordinates each, which stay where they are.
vtkSmartPointer<vtkPoints> pointsOver(vtkFloatArray *xyz);

/// A cloud without cells over the same, or over points.
vtkSmartPointer<vtkPolyData> cloudOver(vtkFloatArray *xyz);
vtkSmartPointer<vtkPolyData> cloudOver(vtkPoints *points);
