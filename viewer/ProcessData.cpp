#include "ProcessData.h"

#include "IndividualBound.h"
#include "Olvik3DViewerWidget.h"
#include "ScanConverter.h"

#include <QDebug>
#include <QScopeGuard>

#include <exception>
#include <utility>

ProcessData::ProcessData(Olvik3DViewerWidget *widget, QObject *parent)
    : QObject(parent)
    , renderWidget(widget)
    , converter(std::make_unique<ScanConverter>())
{ }

ProcessData::~ProcessData() = default;

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
        renderWidget->loadScan(converter->convert(
            profile.GetRawPtr(), profile.GetWidth(), profile.GetHeight(), showZero));
        hasToldOfDrop = false;
    } catch (const std::exception &error) {
        // Not once for each buffer: they come at the sensor's rate.
        if (std::exchange(hasToldOfDrop, true))
            return;
        qWarning("3D viewer: a buffer of %d x %d heights was dropped: %s", profile.GetWidth(),
            profile.GetHeight(), error.what());
    }
}

std::vector<float> ProcessData::computeIndividualBound(
    float *values, long end, int start, int step) const
{
    if (step < 1)
        return {0.0f, 0.0f};

    const std::array<float, 2> bound = individualBound(values, end, start, step);
    return {bound.begin(), bound.end()};
}

std::array<double, 6> ProcessData::computeBounds(float *xyz, long count) const
{
    return interleavedBounds(xyz, count);
}
