#include "VertexCells.h"

#include <vtkNew.h>
#include <vtkTypeInt32Array.h>
#include <vtkTypeInt64Array.h>

#include <limits>
#include <numeric>

namespace {

template <class Array> vtkSmartPointer<vtkCellArray> polyVertex(vtkIdType pointCount)
{
    using Id = typename Array::ValueType;
    vtkNew<Array> offsets;
    vtkNew<Array> ids;
    offsets->InsertNextValue(0);
    if (pointCount > 0) {
        offsets->InsertNextValue(static_cast<Id>(pointCount));
        ids->SetNumberOfValues(pointCount);
        std::iota(ids->GetPointer(0), ids->GetPointer(0) + pointCount, Id{0});
    }
    auto cells = vtkSmartPointer<vtkCellArray>::New();
    cells->SetData(offsets.Get(), ids.Get());
    return cells;
}

} // namespace

vtkCellArray *VertexCells::forPoints(vtkIdType pointCount)
{
    if (pointCount == count)
        return cells;

    const bool fits32Bits = pointCount <= std::numeric_limits<vtkTypeInt32>::max();
    cells = fits32Bits ? polyVertex<vtkTypeInt32Array>(pointCount)
                       : polyVertex<vtkTypeInt64Array>(pointCount);
    count = pointCount;
    return cells;
}
