#pragma once

#include "ArrayPool.h"
#include "Scan.h"

#include <vtkFloatArray.h>

/// Turns buffer after buffer of heights into clouds, into the memory of clouds that nobody shows
/// any more. The points are those of DataConverter; one pass over the heights finds everything
/// else.
///
/// One thread at a time; the results may go to another one.
class ScanConverter
{
public:
    /// \param heights width * height values, row-major
    /// \param showZero false leaves out the heights of zero
    /// \throws std::bad_alloc when there is no memory for the points
    Scan convert(const float *heights, int width, int height, bool showZero);

private:
    ArrayPool<vtkFloatArray> points;
    ArrayPool<vtkFloatArray> samplePoints;
};
