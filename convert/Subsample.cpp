#include "Subsample.h"

#include "ArrayPool.h"
#include "PointCloud.h"

#include <vtkFloatArray.h>
#include <vtkPoints.h>
#include <vtkPolyData.h>

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

/// Smallest step between different values of one coordinate of neighbouring points: the distance of
/// two columns or profiles, whatever the user's scale.
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

/// Distances of neighbours in a cloud of profiles.
struct Pitch
{
    float columns;
    float profiles;
};

Pitch pitchOf(const float *xyz, vtkIdType count)
{
    // Where a profile ends shows within the first two of them, at most 65536 values long.
    const vtkIdType looked = std::min<vtkIdType>(count, 200'000);
    return {spacing(xyz, looked), spacing(xyz + 1, looked)};
}

std::vector<vtkIdType> inColumnsAndProfiles(
    const float *xyz, vtkIdType count, const Pitch &pitch, int step)
{
    const KeptValues keepsColumn(pitch.columns, step);
    const KeptValues keepsProfile(pitch.profiles, step);
    std::vector<vtkIdType> ids;
    ids.reserve(static_cast<std::size_t>(2 * count / step / step + 1));
    for (vtkIdType i = 0; i < count; ++i) {
        if (keepsProfile(xyz[3 * i + 1]) && keepsColumn(xyz[3 * i]))
            ids.push_back(i);
    }
    return ids;
}

/// For points that are not laid out in profiles.
std::vector<vtkIdType> eachOfMany(vtkIdType count, int step)
{
    std::vector<vtkIdType> ids;
    for (vtkIdType i = 0; i < count; i += static_cast<vtkIdType>(step) * step)
        ids.push_back(i);
    return ids;
}

/// Ratio of all points to those of a subsample, rounded up.
int sharePerPoint(std::int64_t pointCount)
{
    return static_cast<int>((pointCount + subsampleBudget - 1) / subsampleBudget);
}

/// Width and height, in samples, of the square that one point of a subsample stands for.
int squareOf(std::int64_t pointCount)
{
    return static_cast<int>(std::ceil(std::sqrt(static_cast<double>(sharePerPoint(pointCount)))));
}

} // namespace

GridSampler::GridSampler(const HeightGrid &heights, bool showZero, ArrayPool<vtkFloatArray> &memory)
    : grid(heights)
    , showsZeros(showZero)
{
    if (grid.count() <= subsampleBudget)
        return;
    step = stepOf(grid);
    const std::int64_t keptRows = (grid.rows() + step.rows - 1) / step.rows;
    xyz = memory.take(keptIn(grid.width()) * keptRows, 3);
    end = xyz->GetPointer(0);
}

GridSampler::~GridSampler() = default;

/// As wide as it is high, unless the grid is too narrow for that.
GridSampler::Step GridSampler::stepOf(const HeightGrid &grid)
{
    const int square = squareOf(grid.count());
    if (grid.rows() < square)
        return {sharePerPoint(grid.count()), 1};
    if (grid.width() < square)
        return {1, sharePerPoint(grid.count())};
    return {square, square};
}

void GridSampler::addRow(std::int64_t row)
{
    if (!xyz || row % step.rows != 0)
        return;
    const float *const heights = grid.row(row);
    const std::int64_t samples = grid.samplesIn(row);
    float *point = showsZeros ? xyz->GetPointer(3 * keptIn(grid.width()) * (row / step.rows)) : end;
    for (std::int64_t column = 0; column < samples; column += step.columns) {
        point[0] = static_cast<float>(column);
        point[1] = static_cast<float>(row);
        point[2] = heights[column];
        point += showsZeros || heights[column] != 0.0f ? 3 : 0;
    }
    if (!showsZeros)
        end = point;
}

std::int64_t GridSampler::pointCount() const
{
    if (!showsZeros)
        return (end - xyz->GetPointer(0)) / 3;
    const std::int64_t lastRow = grid.rows() - 1;
    const std::int64_t lastKept = lastRow - lastRow % step.rows;
    return keptIn(grid.width()) * (lastKept / step.rows) + keptIn(grid.samplesIn(lastKept));
}

Subsample GridSampler::result() const
{
    if (!xyz)
        return {};
    resizeWithin(*xyz, pointCount());
    return {cloudOver(xyz), std::max(step.columns, step.rows), 1.0f};
}

Subsample cloudSubsample(vtkPoints &points)
{
    const vtkIdType count = points.GetNumberOfPoints();
    if (count <= subsampleBudget)
        return {};

    const auto *xyz = static_cast<const float *>(points.GetVoidPointer(0));
    const int step = squareOf(count);
    const Pitch pitch = pitchOf(xyz, count);
    std::vector<vtkIdType> ids = inColumnsAndProfiles(xyz, count, pitch, step);
    const auto kept = static_cast<vtkIdType>(ids.size());
    const vtkIdType expected = count / step / step;
    const bool areProfiles = kept >= expected / 4 && kept <= 4 * expected;
    if (!areProfiles)
        ids = eachOfMany(count, step);

    const auto chosen = freshArray<vtkFloatArray>(static_cast<vtkIdType>(ids.size()), 3);
    float *point = chosen->GetPointer(0);
    for (const vtkIdType id : ids)
        point = std::copy_n(xyz + 3 * id, 3, point);
    return {cloudOver(chosen), step, areProfiles ? std::max(pitch.columns, pitch.profiles) : 1.0f};
}
