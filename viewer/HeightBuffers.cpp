#include "HeightBuffers.h"

#include "SampleCount.h"

#include <algorithm>

OlvikProfileData HeightBuffers::copyOf(const float *values, int width, int height)
{
    const std::int64_t count = checkedSampleCount(width, height);
    const vtkSmartPointer<vtkFloatArray> array = arrays.take(count, 1);
    std::copy_n(values, count, array->GetPointer(0));
    // The record's last copy lets go of the array.
    return {width, height, std::shared_ptr<float>(array->GetPointer(0), [array](float *) {})};
}
