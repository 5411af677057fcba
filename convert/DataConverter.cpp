#include "DataConverter.h"

#include "ArrayMemory.h"
#include "GridRows.h"
#include "PointCloud.h"
#include "Truncate.h"

#include <vtkFloatArray.h>
#include <vtkPoints.h>
#include <vtkPolyData.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <utility>

namespace {

using Rgb = std::array<unsigned char, 3>;

struct DistanceScale
{
    float min;
    float range;
};

void swapCoordinates(vtkFloatArray &xyz)
{
    // An array that was given fewer components has more tuples than points.
    const vtkIdType count = std::min(xyz.GetNumberOfTuples(), xyz.GetNumberOfValues() / 3);
    float *const begin = xyz.GetPointer(0);
    float *const end = begin + 3 * count;
    for (float *point = begin; point != end; point += 3)
        std::swap(point[1], point[2]);
}

void swapCoordinates(vtkPoints &points)
{
    for (vtkIdType i = 0; i < points.GetNumberOfPoints(); ++i) {
        double point[3];
        points.GetPoint(i, point);
        points.SetPoint(i, point[0], point[2], point[1]);
    }
}

template <typename Result, typename Value>
std::pair<Result, Result> minmax(const Value *values, std::int64_t count, Result lowestMax)
{
    Result min = std::numeric_limits<Result>::max();
    Result max = lowestMax;
    for (std::int64_t i = 0; i < count; ++i) {
        const Result value = values[i];
        if (value > max)
            max = value;
        else
            min = value < min ? value : min;
    }
    return {min, max < Result(1) ? Result(1) : max};
}

DistanceScale distanceScale(float *values, long count)
{
    const auto [min, max] = DataConverter::getminmax(values, count);
    const auto lowest = static_cast<float>(min);
    return {lowest, static_cast<float>(max) - lowest};
}

DistanceScale distanceScale(unsigned char *values, long count)
{
    const auto [min, max] = DataConverter::getminmax(values, count);
    // Rising bytes have a minimum above their maximum; their range wraps like the bytes themselves.
    const auto range = static_cast<unsigned char>(max - min);
    return {static_cast<float>(min), static_cast<float>(range)};
}

unsigned char distanceByte(float value, const DistanceScale &scale)
{
    return static_cast<unsigned char>(DataConverter::getDistance(value, scale.min, scale.range));
}

Rgb hueColor(unsigned char distance)
{
    Rgb color;
    DataConverter::distanceToColor(distance, color[0], color[1], color[2]);
    return color;
}

Rgb gradientColor(const Gradient &gradient, float value)
{
    int r = 0;
    int g = 0;
    int b = 0;
    int a = 0;
    gradient.getColorFromValue(value, r, g, b, a);
    return {static_cast<unsigned char>(r), static_cast<unsigned char>(g),
        static_cast<unsigned char>(b)};
}

template <typename Value, typename Color>
void fillPixels(const Value *values, std::int64_t count, unsigned char *out, Color color)
{
    for (std::int64_t i = 0; i < count; ++i) {
        const Rgb pixel = color(static_cast<float>(values[i]));
        out = std::copy(pixel.begin(), pixel.end(), out);
    }
}

/// 0 where the pixels would not fit an image whose lines take 3 * w bytes.
std::int64_t pixelCount(const void *values, int w, int h)
{
    const std::int64_t count = sampleCount(values, w, h);
    const bool isWrapped = count != static_cast<std::int64_t>(w) * h;
    return isWrapped || w > std::numeric_limits<int>::max() / 3 ? 0 : count;
}

template <typename Value>
QImage rangeMap(
    Value *values, int w, int h, unsigned char *&out, bool grey, const Gradient &gradient)
{
    out = nullptr;
    const std::int64_t count = pixelCount(values, w, h);
    if (count == 0)
        return {};

    out = static_cast<unsigned char *>(std::malloc(3 * static_cast<std::size_t>(count)));
    QImage image = out ? QImage(out, w, h, 3 * w, QImage::Format_RGB888) : QImage();
    if (image.isNull()) {
        std::free(std::exchange(out, nullptr));
        return image;
    }

    const DistanceScale scale = distanceScale(values, count);
    const auto greyOf = [&scale](float value) {
        const unsigned char level = distanceByte(value, scale);
        return Rgb{level, level, level};
    };
    if (grey)
        fillPixels(values, count, out, greyOf);
    else if (gradient.isValid())
        fillPixels(values, count, out, [&](float v) { return gradientColor(gradient, v); });
    else
        fillPixels(values, count, out, [&](float v) { return hueColor(distanceByte(v, scale)); });
    return image;
}

} // namespace

vtkSmartPointer<vtkPoints> DataConverter::convertToPointData(float *buffer, int w, int h)
{
    const HeightGrid grid(buffer, w, h);
    const auto xyz = freshArray<vtkFloatArray>(grid.count(), 3);
    float *out = xyz->GetPointer(0);
    for (std::int64_t row = 0; row < grid.rows(); ++row)
        out = writeRow(row, grid.row(row), grid.samplesIn(row), out);
    return pointsOver(xyz);
}

vtkSmartPointer<vtkPoints> DataConverter::convertToPointDataNoZero(float *buffer, int w, int h)
{
    const HeightGrid grid(buffer, w, h);
    const auto xyz = freshArray<vtkFloatArray>(grid.count(), 3);
    float *const begin = xyz->GetPointer(0);
    float *out = begin;
    for (std::int64_t row = 0; row < grid.rows(); ++row)
        out = writeRowNoZero(row, grid.row(row), grid.samplesIn(row), out);
    xyz->Resize((out - begin) / 3);
    return pointsOver(xyz);
}

vtkSmartPointer<vtkPolyData> DataConverter::convertToPolyData(float *buffer, int w, int h)
{
    return cloudOver(convertToPointData(buffer, w, h));
}

vtkSmartPointer<vtkPolyData> DataConverter::convertToPolyDataNoZero(float *buffer, int w, int h)
{
    return cloudOver(convertToPointDataNoZero(buffer, w, h));
}

void DataConverter::swapzy(const vtkSmartPointer<vtkPoints> &points)
{
    if (!points)
        return;

    if (auto *floats = vtkFloatArray::SafeDownCast(points->GetData()))
        swapCoordinates(*floats);
    else
        swapCoordinates(*points);
    points->Modified();
}

void DataConverter::swapzy(const vtkSmartPointer<vtkPolyData> &polyData)
{
    if (polyData)
        swapzy(vtkSmartPointer<vtkPoints>(polyData->GetPoints()));
}

std::pair<double, double> DataConverter::getminmax(float *values, long count)
{
    return minmax(values, values ? count : 0, 0.0);
}

std::pair<unsigned char, unsigned char> DataConverter::getminmax(unsigned char *values, long count)
{
    return minmax(values, values ? count : 0, static_cast<unsigned char>(0));
}

std::pair<double, double> DataConverter::getminmax(const QVector<double> &values)
{
    return minmax(values.constData(), values.size(), std::numeric_limits<double>::min());
}

int DataConverter::getDistance(float value, float min, float range)
{
    return truncatedToInt((value - min) * 255.0f / range);
}

void DataConverter::distanceToColor(unsigned char distance, float &r, float &g, float &b)
{
    const float hue = static_cast<float>(255 - distance) * 226.0f / 255.0f / 60.0f;
    const float sector = std::floor(hue);
    const float rising = hue - sector;
    const float falling = 1.0f - rising;
    std::array<float, 3> color;
    // The ramp ends at 226 degrees: no distance reaches the sectors from blue back to red.
    switch (static_cast<int>(sector)) {
    case 0:
        color = {1.0f, rising, 0.0f};
        break;
    case 1:
        color = {falling, 1.0f, 0.0f};
        break;
    case 2:
        color = {0.0f, 1.0f, rising};
        break;
    default:
        color = {0.0f, falling, 1.0f};
    }
    r = color[0];
    g = color[1];
    b = color[2];
}

void DataConverter::distanceToColor(
    unsigned char distance, unsigned char &r, unsigned char &g, unsigned char &b)
{
    float red = 0.0f;
    float green = 0.0f;
    float blue = 0.0f;
    distanceToColor(distance, red, green, blue);
    r = static_cast<unsigned char>(red * 255.0);
    g = static_cast<unsigned char>(green * 255.0);
    b = static_cast<unsigned char>(blue * 255.0);
}

QImage DataConverter::generateImageRangeMap(
    float *values, int w, int h, unsigned char *&out, bool grey, const Gradient &gradient)
{
    return rangeMap(values, w, h, out, grey, gradient);
}

QImage DataConverter::generateImageRangeMap(
    unsigned char *values, int w, int h, unsigned char *&out, bool grey, const Gradient &gradient)
{
    return rangeMap(values, w, h, out, grey, gradient);
}
