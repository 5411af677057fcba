#pragma once

#include "ArrayPool.h"
#include "OlvikProfileData.h"

#include <vtkFloatArray.h>

/// Copies the host's buffers into memory of earlier ones: the first touch of fresh memory costs
/// more than the copy, on the host's thread.
class HeightBuffers
{
public:
    /// The record that OlvikProfileData(width, height, values) makes, with the same exceptions. It
    /// may outlive this object.
    OlvikProfileData copyOf(const float *values, int width, int height);

private:
    ArrayPool<vtkFloatArray> arrays;
};
