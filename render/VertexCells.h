#pragma once

#include <vtkCellArray.h>
#include <vtkSmartPointer.h>

/// One poly-vertex cell over all points of a cloud, shared by all clouds of the same size.
///
/// One cell for each point costs 53 ms and 16 bytes a point at 4 million points; this costs 4 bytes
/// a point, and nothing for the second frame of a size. GUI thread only.
class VertexCells
{
public:
    /// Cells that name the points 0 to \a pointCount - 1. Shared: not to be changed.
    vtkCellArray *forPoints(vtkIdType pointCount);

private:
    vtkSmartPointer<vtkCellArray> cells;
    vtkIdType count = -1;
};
