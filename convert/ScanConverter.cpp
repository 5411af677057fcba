#include "ScanConverter.h"

#include "GridRows.h"
#include "HeightRange.h"
#include "IndividualBound.h"

#include <vtkNew.h>
#include <vtkPoints.h>

namespace {

/// Where the points of a scan lie on its grid, told from the ends of each row: between them the
/// columns only rise, which changes neither a box nor a bound.
class GridExtent
{
public:
    /// \param begin,end the points of one row, after those of all rows before it
    void addRow(const float *begin, const float *end)
    {
        if (begin == end)
            return;
        const float first = begin[0];
        const float last = *(end - 3);
        const float y = begin[1];
        // The bound starts at the second point of the scan.
        if (!isEmpty())
            columns.add(first);
        if (first != last)
            columns.add(last);
        box = isEmpty() ? Box{first, last, y, y}
                        : Box{std::min(box[0], first), std::max(box[1], last), box[2], y};
    }

    bool isEmpty() const { return box[0] > box[1]; }
    std::array<float, 2> columnBound() const { return columns.result(); }
    std::array<double, 6> withHeights(const std::array<float, 2> &heights) const
    {
        if (isEmpty())
            return unknownBox;
        std::array<double, 6> result{box[0], box[1], box[2], box[3], 1.0, -1.0};
        if (heights[0] <= heights[1])
            std::copy(heights.begin(), heights.end(), result.begin() + 4);
        return result;
    }

private:
    using Box = std::array<float, 4>;

    Box box{1.0f, -1.0f, 1.0f, -1.0f};
    IndividualBound columns;
};

/// Columns beyond this one are no longer strictly rising as floats.
constexpr int largestExactColumn = 1 << 24;

std::array<double, 2> widened(const std::array<float, 2> &bound)
{
    return {static_cast<double>(bound[0]), static_cast<double>(bound[1])};
}

/// Two negative sizes have a positive product: no points, but heights that count for the axes.
void addIgnored(HeightRange &range, const float *heights, int width, int height)
{
    const std::int64_t count = wrappedSampleCount(width, height);
    range.add(heights, static_cast<std::size_t>(std::max<std::int64_t>(count, 0)));
}

vtkSmartPointer<vtkPolyData> cloudOver(vtkFloatArray *xyz)
{
    vtkNew<vtkPoints> points;
    points->SetData(xyz);
    auto cloud = vtkSmartPointer<vtkPolyData>::New();
    cloud->SetPoints(points);
    return cloud;
}

} // namespace

Scan ScanConverter::convert(const float *heights, int width, int height, bool showZero)
{
    const std::int64_t count = sampleCount(heights, width, height);
    const vtkSmartPointer<vtkFloatArray> xyz = points.take(count, 3);
    HeightRange range(showZero);
    GridExtent extent;
    float *const begin = xyz->GetPointer(0);
    float *end = begin;
    // On one thread: it already keeps the memory busy, and the other cores draw.
    forEachRow(width, count, [&](int row, std::int64_t offset, int samples) {
        range.add(heights + offset, static_cast<std::size_t>(samples));
        float *const rowBegin = end;
        end = showZero ? writeRow(row, heights + offset, samples, end)
                       : writeRowNoZero(row, heights + offset, samples, end);
        extent.addRow(rowBegin, end);
    });
    xyz->SetNumberOfTuples((end - begin) / 3);
    if (count == 0 && heights)
        addIgnored(range, heights, width, height);

    Scan scan;
    scan.cloud = cloudOver(xyz);
    // Heights are shown from zero, however deep the data goes.
    scan.bounds = {0.0, static_cast<double>(width), 0.0, static_cast<double>(height), 0.0,
        static_cast<double>(range.top())};
    // The range for colouring comes from the columns of all points after the first: its low end is
    // 0 for each grid of more than one row, which ties the colour red to height zero.
    scan.heightRange =
        widened(width <= largestExactColumn ? extent.columnBound()
                                            : individualBound(begin, end - begin, 3, 3));
    scan.box = extent.withHeights(range.finite());
    scan.subsample = gridSubsample(heights, width, count, showZero);
    scan.isHandedOver = true;
    return scan;
}
