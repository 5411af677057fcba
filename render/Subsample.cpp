#include "Subsample.h"

#include <vtkCellArray.h>
#include <vtkIdTypeArray.h>
#include <vtkNew.h>
#include <vtkPoints.h>

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

/// Smallest step between different values of one coordinate of neighbouring points: the distance of two
/// columns or profiles, whatever the user's scale.
float spacing(const float *coordinate, vtkIdType count)
{
    float smallest = HUGE_VALF;
    for (vtkIdType i = 1; i < count; ++i) {
        const float distance = std::abs(coordinate[3 * i] - coordinate[3 * i - 3]);
        if (distance > 0.0f && distance < smallest)
            smallest = distance;
    }
    return smallest;
}

/// Tells for each step-th of equally spaced values that it is kept.
class KeptValues
{
public:
    KeptValues(float valueSpacing, int step)
        : inverse(1.0f / valueSpacing)
        , modulus(step)
    { }
    bool operator()(float value) const
    {
        const float index = std::abs(value * inverse);
        return index < maxIndex && std::lround(index) % modulus == 0;
    }

private:
    static constexpr float maxIndex = 1e9f;
    float inverse;
    int modulus;
};

std::vector<vtkIdType> inColumnsAndProfiles(const float *xyz, vtkIdType count, int step)
{
    // Where a profile ends shows within the first two of them, at most 65536 values long.
    const vtkIdType looked = std::min<vtkIdType>(count, 200'000);
    const KeptValues keepsColumn(spacing(xyz, looked), step);
    const KeptValues keepsProfile(spacing(xyz + 1, looked), step);
    std::vector<vtkIdType> ids;
    ids.reserve(static_cast<std::size_t>(2 * count / step / step + 1));
    for (vtkIdType i = 0; i < count; ++i) {
        if (keepsProfile(xyz[3 * i + 1]) && keepsColumn(xyz[3 * i]))
            ids.push_back(i);
    }
    return ids;
}

std::vector<vtkIdType> eachOfMany(vtkIdType count, int step)
{
    std::vector<vtkIdType> ids;
    for (vtkIdType i = 0; i < count; i += static_cast<vtkIdType>(step) * step)
        ids.push_back(i);
    return ids;
}

} // namespace

int subsampleStep(vtkIdType pointCount, vtkIdType budget)
{
    const double share = static_cast<double>(pointCount) / static_cast<double>(budget);
    return std::max(1, static_cast<int>(std::ceil(std::sqrt(share))));
}

vtkSmartPointer<vtkCellArray> subsampleCells(vtkPoints &points, int step)
{
    const vtkIdType count = points.GetNumberOfPoints();
    const auto *xyz = static_cast<const float *>(points.GetVoidPointer(0));
    std::vector<vtkIdType> ids = inColumnsAndProfiles(xyz, count, step);

    const auto kept = static_cast<vtkIdType>(ids.size());
    const vtkIdType expected = count / step / step;
    if (kept < expected / 4 || kept > 4 * expected)
        ids = eachOfMany(count, step);

    auto cells = vtkSmartPointer<vtkCellArray>::New();
    if (!ids.empty())
        cells->InsertNextCell(static_cast<vtkIdType>(ids.size()), ids.data());
    return cells;
}
