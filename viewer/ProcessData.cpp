#include "ProcessData.h"

#include "DataConverter.h"
#include "IndividualBound.h"
#include "Olvik3DViewerWidget.h"
#include "SampleCount.h"

#include <QDebug>
#include <QScopeGuard>

#include <vtkPoints.h>

#include <exception>
#include <utility>

ProcessData::ProcessData(Olvik3DViewerWidget *widget, QObject *parent)
    : QObject(parent)
    , renderWidget(widget)
{ }

bool ProcessData::isProcessingData() const
{
    return processing;
}

void ProcessData::onNewProfileData(OlvikProfileData data, bool showZero)
{
    processing = true;
    const auto done = qScopeGuard([this] { processing = false; });
    profile = std::move(data);
    try {
        convert(showZero);
    } catch (const std::exception &error) {
        qWarning("3D viewer: a buffer of %d x %d heights was dropped: %s", profile.GetWidth(),
            profile.GetHeight(), error.what());
    }
}

void ProcessData::convert(bool showZero)
{
    float *heights = profile.GetRawPtr();
    const int width = profile.GetWidth();
    const int height = profile.GetHeight();
    const std::array<float, 2> heightBound =
        individualBound(heights, wrappedSampleCount(width, height), 0, 1);
    // Heights are shown from zero, however deep the data goes.
    const std::array<double, 6> bounds{0.0, static_cast<double>(width), 0.0,
        static_cast<double>(height), 0.0, static_cast<double>(heightBound[1])};

    vtkSmartPointer<vtkPolyData> cloud = showZero
        ? DataConverter::convertToPolyData(heights, width, height)
        : DataConverter::convertToPolyDataNoZero(heights, width, height);

    // The range for colouring comes from the columns of all points after the first: its low end is
    // 0 for each grid of more than one row, which ties the colour red to height zero.
    const auto *xyz = static_cast<const float *>(cloud->GetPoints()->GetVoidPointer(0));
    const std::array<float, 2> range = individualBound(xyz, 3 * cloud->GetNumberOfPoints(), 3, 3);

    renderWidget->loadPolyData(
        std::move(cloud), bounds, {static_cast<double>(range[0]), static_cast<double>(range[1])});
}

std::vector<float> ProcessData::computeIndividualBound(
    float *values, long end, int start, int step) const
{
    const std::array<float, 2> bound = individualBound(values, end, start, step);
    return {bound.begin(), bound.end()};
}

std::array<double, 6> ProcessData::computeBounds(float *xyz, long count) const
{
    return interleavedBounds(xyz, count);
}
