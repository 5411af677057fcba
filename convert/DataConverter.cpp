#include "DataConverter.h"

#include "Gradient.h"
#include "SampleCount.h"
#include "Truncate.h"

#include <vtkArrayDispatch.h>
#include <vtkDataArrayRange.h>
#include <vtkFloatArray.h>
#include <vtkNew.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <vector>

namespace {

/// Number of samples that a conversion may touch.
vtkIdType sampleCount(const float *buffer, int w, int h)
{
    if (!buffer || w <= 0 || h <= 0)
        return 0;
    return std::max<vtkIdType>(0, wrappedSampleCount(w, h));
}

vtkSmartPointer<vtkPoints> pointsOf(vtkFloatArray &xyz)
{
    auto points = vtkSmartPointer<vtkPoints>::New();
    points->SetData(&xyz);
    return points;
}

vtkSmartPointer<vtkPolyData> cloudOf(vtkPoints &points)
{
    auto cloud = vtkSmartPointer<vtkPolyData>::New();
    cloud->SetPoints(&points);
    return cloud;
}

/// Calls visit(column, row, height) for the first \a count samples, row by row.
template <class Visit> void forEachSample(const float *buffer, vtkIdType count, int w, Visit visit)
{
    for (vtkIdType begin = 0, row = 0; begin < count; begin += w, ++row) {
        const vtkIdType columns = std::min<vtkIdType>(w, count - begin);
        for (vtkIdType column = 0; column < columns; ++column)
            visit(column, row, buffer[begin + column]);
    }
}

void writePoint(float *xyz, vtkIdType column, vtkIdType row, float height)
{
    xyz[0] = static_cast<float>(column);
    xyz[1] = static_cast<float>(row);
    xyz[2] = height;
}

/// (min, max) where a value that raises the maximum is not compared with the minimum.
template <class Value, class Sample>
std::pair<Value, Value> risingRange(
    const Sample *values, std::int64_t count, Value untouchedMin, Value untouchedMax)
{
    Value min = untouchedMin;
    Value max = untouchedMax;
    for (std::int64_t i = 0; i < count; ++i) {
        const auto value = static_cast<Value>(values[i]);
        if (value > max)
            max = value;
        else if (value < min)
            min = value;
    }
    return {min, max};
}

std::pair<double, double> withUsableMax(std::pair<double, double> range)
{
    if (std::trunc(range.second) == 0.0)
        range.second = 1.0;
    return range;
}

float rangeOf(std::pair<double, double> minmax)
{
    return static_cast<float>(minmax.second) - static_cast<float>(minmax.first);
}

float rangeOf(std::pair<unsigned char, unsigned char> minmax)
{
    // In eight bits, where a minimum above the maximum wraps.
    return static_cast<unsigned char>(minmax.second - minmax.first);
}

struct SwapYz
{
    template <class Array> void operator()(Array *xyz) const
    {
        using Value = vtk::GetAPIType<Array>;
        for (auto point : vtk::DataArrayTupleRange<3>(xyz)) {
            const Value y = point[1];
            point[1] = static_cast<Value>(point[2]);
            point[2] = y;
        }
    }
};

template <class Sample> class RangeMap
{
public:
    RangeMap(Sample *values, std::int64_t count, const Gradient &colors)
        : gradient(colors)
        , hasGradient(colors.isValid())
    {
        const auto minmax = DataConverter::getminmax(values, static_cast<long>(count));
        min = static_cast<float>(minmax.first);
        range = rangeOf(minmax);
    }

    void writeGrey(Sample value, unsigned char *rgb) const { std::fill_n(rgb, 3, distance(value)); }

    void writeColor(Sample value, unsigned char *rgb) const
    {
        if (!hasGradient) {
            DataConverter::distanceToColor(distance(value), rgb[0], rgb[1], rgb[2]);
            return;
        }
        int r = 0;
        int g = 0;
        int b = 0;
        int a = 0;
        gradient.getColorFromValue(static_cast<double>(value), r, g, b, a);
        rgb[0] = static_cast<unsigned char>(r);
        rgb[1] = static_cast<unsigned char>(g);
        rgb[2] = static_cast<unsigned char>(b);
    }

private:
    unsigned char distance(Sample value) const
    {
        return static_cast<unsigned char>(
            DataConverter::getDistance(static_cast<float>(value), min, range));
    }

    const Gradient &gradient;
    bool hasGradient;
    float min;
    float range;
};

template <class Sample>
QImage rangeMap(
    Sample *values, int w, int h, unsigned char *&out, bool grey, const Gradient &gradient)
{
    const bool isEmpty =
        !values || w <= 0 || h <= 0 || wrappedSampleCount(w, h) != std::int64_t{w} * h;
    const std::int64_t count = isEmpty ? 0 : wrappedSampleCount(w, h);
    out = static_cast<unsigned char *>(std::malloc(static_cast<std::size_t>(3 * count)));
    const bool fitsAnImage = w <= std::numeric_limits<int>::max() / 3;
    if (isEmpty || !fitsAnImage || !out)
        return {};

    const RangeMap<Sample> map(values, count, gradient);
    for (std::int64_t i = 0; i < count; ++i) {
        if (grey)
            map.writeGrey(values[i], out + 3 * i);
        else
            map.writeColor(values[i], out + 3 * i);
    }
    return {out, w, h, 3 * w, QImage::Format_RGB888};
}

} // namespace

vtkSmartPointer<vtkPoints> DataConverter::convertToPointData(float *buffer, int w, int h)
{
    const vtkIdType count = sampleCount(buffer, w, h);
    vtkNew<vtkFloatArray> xyz;
    xyz->SetNumberOfComponents(3);
    xyz->SetNumberOfTuples(count);
    float *out = xyz->GetPointer(0);
    forEachSample(buffer, count, w, [&out](vtkIdType column, vtkIdType row, float height) {
        writePoint(out, column, row, height);
        out += 3;
    });
    return pointsOf(*xyz);
}

vtkSmartPointer<vtkPoints> DataConverter::convertToPointDataNoZero(float *buffer, int w, int h)
{
    const vtkIdType count = sampleCount(buffer, w, h);
    vtkNew<vtkFloatArray> xyz;
    xyz->SetNumberOfComponents(3);
    xyz->SetNumberOfTuples(count);
    float *out = xyz->GetPointer(0);
    vtkIdType kept = 0;
    forEachSample(buffer, count, w, [out, &kept](vtkIdType column, vtkIdType row, float height) {
        if (height == 0.0f)
            return;
        writePoint(out + 3 * kept, column, row, height);
        ++kept;
    });
    xyz->Resize(kept);
    xyz->SetNumberOfTuples(kept);
    return pointsOf(*xyz);
}

vtkSmartPointer<vtkPolyData> DataConverter::convertToPolyData(float *buffer, int w, int h)
{
    return cloudOf(*convertToPointData(buffer, w, h));
}

vtkSmartPointer<vtkPolyData> DataConverter::convertToPolyDataNoZero(float *buffer, int w, int h)
{
    return cloudOf(*convertToPointDataNoZero(buffer, w, h));
}

void DataConverter::swapzy(vtkSmartPointer<vtkPoints> points)
{
    vtkDataArray *xyz = points ? points->GetData() : nullptr;
    if (!xyz || xyz->GetNumberOfComponents() != 3)
        return;
    const SwapYz swap;
    if (!vtkArrayDispatch::Dispatch::Execute(xyz, swap))
        swap(xyz);
    xyz->Modified();
    points->Modified();
}

void DataConverter::swapzy(vtkSmartPointer<vtkPolyData> polyData)
{
    if (!polyData || !polyData->GetPoints())
        return;
    swapzy(vtkSmartPointer<vtkPoints>(polyData->GetPoints()));
    polyData->Modified();
}

std::pair<double, double> DataConverter::getminmax(float *values, long count)
{
    constexpr double untouchedMin = std::numeric_limits<double>::max();
    return withUsableMax(risingRange<double>(values, count, untouchedMin, 0.0));
}

std::pair<unsigned char, unsigned char> DataConverter::getminmax(unsigned char *values, long count)
{
    auto range = risingRange<unsigned char>(
        values, count, static_cast<unsigned char>(255), static_cast<unsigned char>(0));
    if (range.second == 0)
        range.second = 1;
    return range;
}

std::pair<double, double> DataConverter::getminmax(QVector<double> values)
{
    using Limits = std::numeric_limits<double>;
    return withUsableMax(
        risingRange<double>(values.constData(), values.size(), Limits::max(), Limits::min()));
}

int DataConverter::getDistance(float value, float min, float range)
{
    return truncated((value - min) * 255.0f / range);
}

void DataConverter::distanceToColor(unsigned char distance, float &r, float &g, float &b)
{
    // Hue in sixths of the colour circle: 226 degrees at the low end down to 0 at the top.
    const float hue = static_cast<float>(255 - distance) * 226.0f / 255.0f / 60.0f;
    const int sector = static_cast<int>(std::floor(hue)) % 6;
    const float rising = hue - static_cast<float>(sector);
    const float falling = 1.0f - rising;
    const float colors[6][3] = {{1, rising, 0}, {falling, 1, 0}, {0, 1, rising}, {0, falling, 1},
        {rising, 0, 1}, {1, 0, falling}};
    r = colors[sector][0];
    g = colors[sector][1];
    b = colors[sector][2];
}

void DataConverter::distanceToColor(
    unsigned char distance, unsigned char &r, unsigned char &g, unsigned char &b)
{
    float components[3];
    distanceToColor(distance, components[0], components[1], components[2]);
    r = static_cast<unsigned char>(components[0] * 255.0f);
    g = static_cast<unsigned char>(components[1] * 255.0f);
    b = static_cast<unsigned char>(components[2] * 255.0f);
}

QImage DataConverter::generateImageRangeMap(
    float *values, int w, int h, unsigned char *&out, bool grey, Gradient gradient)
{
    return rangeMap(values, w, h, out, grey, gradient);
}

QImage DataConverter::generateImageRangeMap(
    unsigned char *values, int w, int h, unsigned char *&out, bool grey, Gradient gradient)
{
    return rangeMap(values, w, h, out, grey, gradient);
}
