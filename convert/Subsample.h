#pragma once

#include <vtkSmartPointer.h>
#include <vtkType.h>

#include <cstdint>

template <class Array> class ArrayPool;
class vtkFloatArray;
class vtkPoints;
class vtkPolyData;

/// About as many points are drawn within 20 ms by software OpenGL, and close the surface on a full
/// screen.
constexpr vtkIdType subsampleBudget = 200'000;

/// A regular choice of a cloud's points, copied: drawing it needs nothing of the full cloud.
struct Subsample
{
    vtkSmartPointer<vtkPolyData> cloud; ///< null for a cloud that is within the budget
    int step = 1; ///< distance of neighbours, in columns or rows
};

/// The points of each step-th sample in each step-th row.
/// \param count samples of the buffer, width of them in each row but the last
/// \param memory where the points come to lie
Subsample gridSubsample(const float *heights, int width, std::int64_t count, bool showZero,
    ArrayPool<vtkFloatArray> &memory);

/// The points of each step-th profile that lie in each step-th column, found from the coordinates; of
/// points that are not laid out in profiles each (step * step)-th. Takes 5 ms for a million points.
/// \param points 32-bit floats
Subsample cloudSubsample(vtkPoints &points);
