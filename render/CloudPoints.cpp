#include "CloudPoints.h"

#include "Gradient.h"

#include <vtkFloatArray.h>
#include <vtkNew.h>
#include <vtkPointData.h>
#include <vtkPoints.h>
#include <vtkPolyData.h>
#include <vtkSmartPointer.h>
#include <vtkUnsignedCharArray.h>

#include <cmath>

namespace {

float *coordinates(vtkPoints &points)
{
    return static_cast<float *>(points.GetVoidPointer(0));
}

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

bool holdsPointsAlone(vtkPolyData &cloud)
{
    vtkPoints *points = cloud.GetPoints();
    return cloud.GetReferenceCount() == 1 && points->GetReferenceCount() == 1
        && points->GetData()->GetReferenceCount() == 1;
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
    auto copy = vtkSmartPointer<vtkPolyData>::New();
    vtkNew<vtkPoints> points;
    points->DeepCopy(cloud.GetPoints());
    copy->SetPoints(points);
    copy->GetPointData()->DeepCopy(cloud.GetPointData());
    return copy;
}

void scalePoints(vtkPolyData &cloud, const std::array<float, 3> &factors)
{
    vtkPoints *points = ensureFloatPoints(cloud);
    float *xyz = coordinates(*points);
    const vtkIdType count = 3 * points->GetNumberOfPoints();
    for (int axis = 0; axis < 3; ++axis) {
        const float factor = factors[static_cast<std::size_t>(axis)];
        if (factor == 1.0f)
            continue;
        for (vtkIdType i = axis; i < count; i += 3)
            xyz[i] *= factor;
    }
    points->Modified();
    cloud.Modified();
}

vtkSmartPointer<vtkUnsignedCharArray> gradientColors(vtkPolyData &cloud, const Gradient &gradient)
{
    vtkPoints *points = ensureFloatPoints(cloud);
    const float *xyz = coordinates(*points);
    const vtkIdType count = points->GetNumberOfPoints();

    auto colors = vtkSmartPointer<vtkUnsignedCharArray>::New();
    colors->SetName("Colors");
    colors->SetNumberOfComponents(3);
    colors->SetNumberOfTuples(count);
    unsigned char *out = colors->GetPointer(0);
    for (vtkIdType i = 0; i < count; ++i) {
        int r = 0;
        int g = 0;
        int b = 0;
        int a = 0;
        gradient.getColorFromValue(static_cast<double>(xyz[3 * i + 2]), r, g, b, a);
        out[3 * i] = static_cast<unsigned char>(r);
        out[3 * i + 1] = static_cast<unsigned char>(g);
        out[3 * i + 2] = static_cast<unsigned char>(b);
    }
    return colors;
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
