#include "ScanPreparer.h"

#include "CloudPoints.h"
#include "ColorLookup.h"
#include "PointCloud.h"

#include <vtkPointData.h>
#include <vtkPoints.h>

#include <algorithm>

namespace {

using Factors = std::array<float, 3>;

constexpr Factors unscaledFactors{1.0f, 1.0f, 1.0f};

/// The same numbers as the box of the scaled points, because rounding keeps their order.
std::array<double, 6> scaledBox(const std::array<double, 6> &box, const Factors &factors)
{
    std::array<double, 6> scaled;
    for (std::size_t i = 0; i < box.size(); ++i)
        scaled[i] = static_cast<double>(static_cast<float>(box[i]) * factors[i / 2]);
    return scaled;
}

} // namespace

ScanPreparer::Result ScanPreparer::prepare(const Scan &scan, const Factors &factors)
{
    vtkPoints *points = ensureFloatPoints(*scan.cloud);
    const auto unscaled = std::make_shared<Scan>(scan);
    if (!scan.isHandedOver)
        unscaled->cloud = copiedCloud(*scan.cloud);
    unscaled->isHandedOver = true;
    if (!unscaled->subsample.cloud)
        unscaled->subsample = cloudSubsample(*points);
    if (unscaled->box == unknownBox)
        unscaled->box = finiteBounds(*unscaled->cloud);

    const auto drawn = std::make_shared<Scan>(*unscaled);
    drawn->cloud = sharedCloud(*unscaled->cloud);
    if (drawn->subsample.cloud)
        drawn->subsample.cloud = sharedCloud(*drawn->subsample.cloud);
    if (factors != unscaledFactors)
        scale(*drawn, factors);
    return {unscaled, drawn};
}

void ScanPreparer::scale(Scan &drawn, const Factors &factors)
{
    replacePoints(*drawn.cloud, factors);
    if (drawn.subsample.cloud)
        replacePoints(*drawn.subsample.cloud, factors);
    drawn.subsample.spacing *= std::max(factors[0], factors[1]);
    drawn.box = scaledBox(drawn.box, factors);
    // Beyond the largest float only a look at all points tells.
    if (!isFinite(drawn.box.data()))
        drawn.box = finiteBounds(*drawn.cloud);
}

/// By scaled ones: the unscaled points stay what they are for those who keep them.
void ScanPreparer::replacePoints(vtkPolyData &cloud, const Factors &factors)
{
    vtkPoints *points = cloud.GetPoints();
    const vtkSmartPointer<vtkFloatArray> scaled = scaledPoints.take(points->GetNumberOfPoints(), 3);
    copyScaled(*points, factors, scaled->GetPointer(0));
    cloud.SetPoints(pointsOver(scaled));
}

void ScanPreparer::color(const Scan &drawn, const Scan &unscaled, const ColorLookup &lookup)
{
    colorCloud(*drawn.cloud, *unscaled.cloud, lookup);
    if (drawn.subsample.cloud)
        colorCloud(*drawn.subsample.cloud, *unscaled.subsample.cloud, lookup);
}

void ScanPreparer::colorCloud(vtkPolyData &cloud, vtkPolyData &unscaled, const ColorLookup &lookup)
{
    const vtkSmartPointer<vtkUnsignedCharArray> array =
        colors.take(unscaled.GetNumberOfPoints(), 3);
    array->SetName("Colors");
    colorByHeight(*unscaled.GetPoints(), lookup, array->GetPointer(0));
    cloud.GetPointData()->SetScalars(array);
}
