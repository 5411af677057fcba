#include "PlainConverter.h"

#include <vtkNew.h>
#include <vtkPointData.h>
#include <vtkPoints.h>
#include <vtkUnsignedCharArray.h>

#include <algorithm>
#include <limits>

namespace {

constexpr float highest = std::numeric_limits<float>::max();

std::array<float, 2> rangeOf(const std::vector<float> &heights)
{
    float min = highest;
    float max = -highest;
    for (const float height : heights) {
        min = std::min(min, height);
        max = std::max(max, height);
    }
    return {min, max};
}

std::array<double, 6> boundsOf(vtkPolyData &cloud)
{
    std::array<float, 3> min = {highest, highest, highest};
    std::array<float, 3> max = {-highest, -highest, -highest};
    const auto *xyz = static_cast<const float *>(cloud.GetPoints()->GetVoidPointer(0));
    for (vtkIdType i = 0; i < cloud.GetNumberOfPoints(); ++i) {
        for (std::size_t axis = 0; axis < 3; ++axis, ++xyz) {
            min[axis] = std::min(min[axis], *xyz);
            max[axis] = std::max(max[axis], *xyz);
        }
    }
    return {min[0], max[0], min[1], max[1], min[2], max[2]};
}

void addColors(vtkPolyData &cloud, const std::vector<float> &heights, const Gradient &gradient)
{
    vtkNew<vtkUnsignedCharArray> colors;
    colors->SetName("Colors");
    colors->SetNumberOfComponents(3);
    for (const float height : heights) {
        int r = 0;
        int g = 0;
        int b = 0;
        int a = 0;
        gradient.getColorFromValue(static_cast<double>(height), r, g, b, a);
        const unsigned char color[] = {static_cast<unsigned char>(r), static_cast<unsigned char>(g),
            static_cast<unsigned char>(b)};
        colors->InsertNextTypedTuple(color);
    }
    cloud.GetPointData()->SetScalars(colors);
}

} // namespace

vtkSmartPointer<vtkPolyData> PlainConverter::pointsOf(const float *heights, int width, int height)
{
    vtkNew<vtkPoints> points;
    points->SetNumberOfPoints(static_cast<vtkIdType>(width) * height);
    auto *xyz = static_cast<float *>(points->GetVoidPointer(0));
    for (int row = 0; row < height; ++row) {
        for (int column = 0; column < width; ++column) {
            *xyz++ = static_cast<float>(column);
            *xyz++ = static_cast<float>(row);
            *xyz++ = *heights++;
        }
    }
    auto cloud = vtkSmartPointer<vtkPolyData>::New();
    cloud->SetPoints(points);
    return cloud;
}

void PlainConverter::convert(const PlainProfile &profile)
{
    busy = true;
    PlainFrame frame;
    frame.heightRange = rangeOf(*profile.heights);
    frame.cloud = pointsOf(profile.heights->data(), profile.width, profile.height);
    frame.bounds = boundsOf(*frame.cloud);
    // The user's scale works in place; the measured points are kept beside it.
    frame.unscaled = vtkSmartPointer<vtkPolyData>::New();
    frame.unscaled->DeepCopy(frame.cloud);
    if (profile.gradient)
        addColors(*frame.cloud, *profile.heights, *profile.gradient);
    Q_EMIT converted(frame);
}
