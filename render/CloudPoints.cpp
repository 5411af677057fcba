#include "CloudPoints.h"

#include "ArrayMemory.h"
#include "ColorLookup.h"
#include "ParallelFor.h"
#include "PointCloud.h"

#include <vtkFloatArray.h>
#include <vtkNew.h>
#include <vtkPointData.h>
#include <vtkPoints.h>
#include <vtkPolyData.h>

#include <algorithm>
#include <cmath>

namespace {

float *coordinates(vtkPoints &points)
{
    return static_cast<float *>(points.GetVoidPointer(0));
}

constexpr vtkIdType pointsPerPart = 262144;

} // namespace

vtkPoints *ensureFloatPoints(vtkPolyData &cloud)
{
    vtkPoints *points = cloud.GetPoints();
    if (points && vtkFloatArray::FastDownCast(points->GetData()))
        return points;

    vtkNew<vtkPoints> converted;
    if (points) {
        vtkNew<vtkFloatArray> floats;
        floats->DeepCopy(points->GetData());
        converted->SetData(floats);
    }
    cloud.SetPoints(converted);
    return converted;
}

vtkSmartPointer<vtkPolyData> sharedCloud(vtkPolyData &cloud)
{
    auto shared = vtkSmartPointer<vtkPolyData>::New();
    shared->SetPoints(cloud.GetPoints());
    shared->GetPointData()->ShallowCopy(cloud.GetPointData());
    return shared;
}

vtkSmartPointer<vtkPolyData> copiedCloud(vtkPolyData &cloud)
{
    vtkPoints *points = cloud.GetPoints();
    const auto xyz = freshArray<vtkFloatArray>(points->GetNumberOfPoints(), 3);
    std::copy_n(coordinates(*points), xyz->GetNumberOfValues(), xyz->GetPointer(0));
    vtkSmartPointer<vtkPolyData> copy = cloudOver(xyz);
    copy->GetPointData()->DeepCopy(cloud.GetPointData());
    return copy;
}

void copyScaled(vtkPoints &points, const std::array<float, 3> &factors, float *scaled)
{
    const float *xyz = coordinates(points);
    parallelFor(points.GetNumberOfPoints(), pointsPerPart, [=](vtkIdType begin, vtkIdType end) {
        for (vtkIdType i = 3 * begin; i < 3 * end; i += 3) {
            scaled[i] = xyz[i] * factors[0];
            scaled[i + 1] = xyz[i + 1] * factors[1];
            scaled[i + 2] = xyz[i + 2] * factors[2];
        }
    });
}

void scalePoints(vtkPolyData &cloud, const std::array<float, 3> &factors)
{
    if (factors == std::array<float, 3>{1.0f, 1.0f, 1.0f})
        return;
    vtkPoints *points = ensureFloatPoints(cloud);
    copyScaled(*points, factors, coordinates(*points));
    points->Modified();
    cloud.Modified();
}

void colorByHeight(vtkPoints &points, const ColorLookup &lookup, unsigned char *rgb)
{
    const float *xyz = coordinates(points);
    parallelFor(
        points.GetNumberOfPoints(), pointsPerPart, [=, &lookup](vtkIdType begin, vtkIdType end) {
            const auto count = static_cast<std::size_t>(end - begin);
            lookup.colorHeights(xyz + 3 * begin + 2, 3, count, rgb + 3 * begin);
        });
}

std::array<double, 6> finiteBounds(vtkPolyData &cloud)
{
    vtkPoints *points = ensureFloatPoints(cloud);
    const float *xyz = coordinates(*points);
    const vtkIdType count = 3 * points->GetNumberOfPoints();

    std::array<double, 6> bounds{1.0, -1.0, 1.0, -1.0, 1.0, -1.0};
    for (std::size_t axis = 0; axis < 3; ++axis) {
        float min = HUGE_VALF;
        float max = -HUGE_VALF;
        for (auto i = static_cast<vtkIdType>(axis); i < count; i += 3) {
            const float value = xyz[i];
            if (!std::isfinite(value))
                continue;
            min = value < min ? value : min;
            max = value > max ? value : max;
        }
        if (min > max)
            continue;
        bounds[2 * axis] = static_cast<double>(min);
        bounds[2 * axis + 1] = static_cast<double>(max);
    }
    return bounds;
}

bool isFinite(const double *box)
{
    return std::all_of(box, box + 6, [](double end) { return std::isfinite(end); });
}
