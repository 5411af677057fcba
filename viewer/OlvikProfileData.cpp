#include "OlvikProfileData.h"

#include "SampleCount.h"

#include <algorithm>
#include <utility>

OlvikProfileData::OlvikProfileData(int valuesPerProfile, int profiles, float *values)
    : width(valuesPerProfile)
    , height(profiles)
{
    const std::int64_t count = checkedSampleCount(width, height);
    // Without a value initialiser: the heights are written once, by the copy.
    data = std::shared_ptr<float>(
        new float[static_cast<std::size_t>(count)], std::default_delete<float[]>());
    std::copy_n(values, count, data.get());
}

OlvikProfileData::OlvikProfileData(
    int valuesPerProfile, int profiles, std::shared_ptr<float> values)
    : data(std::move(values))
    , width(valuesPerProfile)
    , height(profiles)
{ }
