#pragma once

#include "Olvik3DViewerExport.h"
#include "OlvikProfileData.h"

#include <QObject>

#include <array>
#include <atomic>
#include <memory>
#include <vector>

class Olvik3DViewerWidget;
class ScanConverter;

/// Worker that turns buffers of heights into point clouds and hands them to the render widget.
///
/// Lives on a thread of its own; isProcessingData() may be called from any thread.
class OLVIK3DVIEWER_EXPORT ProcessData : public QObject
{
    Q_OBJECT

public:
    /// \param renderWidget borrowed; must outlive the worker
    ProcessData(Olvik3DViewerWidget *renderWidget, QObject *parent);
    ~ProcessData() override;

    bool isProcessingData() const;

    /// (min, max) of values[start], values[start + step], ... below index \a end; a value that
    /// raises the maximum is not compared with the minimum, and a bound that nothing touched is 0.
    /// \param step at least 1; (0, 0) otherwise
    std::vector<float> computeIndividualBound(float *values, long end, int start, int step) const;

    /// That pair for x, y and z of interleaved coordinates, computed in parallel.
    /// \param count number of floats, three for each point
    std::array<double, 6> computeBounds(float *xyz, long count) const;

public Q_SLOTS:
    /// Converts a buffer and hands the cloud over. Never throws: a buffer that does not fit into
    /// memory is dropped, of which only the first after a good one is logged.
    /// \param showZero false leaves out the points with a height of exactly zero
    void onNewProfileData(OlvikProfileData data, bool showZero);

private:
    std::atomic<bool> processing{false};
    OlvikProfileData profile;
    Olvik3DViewerWidget *renderWidget;
    bool hasToldOfDrop = false; ///< since the last buffer that came through
    std::unique_ptr<ScanConverter> converter;
};
