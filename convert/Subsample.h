#pragma once

#include "GridRows.h"

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
    float spacing = 1.0f; ///< of neighbours in the full cloud, in scene units; a guess without rows
};

/// Picks the points of each step-th sample in each step-th row of a grid, while its rows are in the
/// processor's cache: afterwards each of them is a line of memory to be read again.
class GridSampler
{
public:
    /// \param memory where the points come to lie
    GridSampler(const HeightGrid &grid, bool showZero, ArrayPool<vtkFloatArray> &memory);
    ~GridSampler();

    /// Each row once: with zeros in any order and from any thread, otherwise one after the other.
    void addRow(std::int64_t row);

    Subsample result() const;

private:
    struct Step
    {
        int columns;
        int rows;
    };

    static Step stepOf(const HeightGrid &grid);
    std::int64_t keptIn(std::int64_t samples) const
    {
        return (samples + step.columns - 1) / step.columns;
    }
    std::int64_t pointCount() const;

    HeightGrid grid;
    bool showsZeros;
    Step step{1, 1};
    vtkSmartPointer<vtkFloatArray> xyz; ///< null for a grid within the budget
    float *end = nullptr; ///< of the points so far, without zeros
};

/// The points of each step-th profile that lie in each step-th column, found from the coordinates;
/// of points that are not laid out in profiles each (step * step)-th. Takes 5 ms for a million
/// points.
/// \param points 32-bit floats
Subsample cloudSubsample(vtkPoints &points);
