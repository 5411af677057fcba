#pragma once

#include <vtkSmartPointer.h>

class vtkCellArray;
class vtkPoints;

/// Distance, in columns and rows, of the points that a regular subsample keeps.
/// \return at least 1
int subsampleStep(vtkIdType pointCount, vtkIdType budget);

/// One poly-vertex cell over a regular subsample of a scanned surface: the points of each step-th
/// profile that lie in each step-th column. Of points that are not laid out in profiles, each
/// (step * step)-th is taken.
/// \param points 32-bit floats
vtkSmartPointer<vtkCellArray> subsampleCells(vtkPoints &points, int step);
