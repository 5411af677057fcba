#pragma once

#include "Gradient.h"

#include <QMetaType>
#include <QObject>

#include <vtkPolyData.h>
#include <vtkSmartPointer.h>

#include <array>
#include <atomic>
#include <memory>
#include <vector>

/// One buffer on its way to the worker.
struct PlainProfile
{
    std::shared_ptr<const std::vector<float>> heights;
    int width = 0;
    int height = 0;
    std::shared_ptr<const Gradient> gradient; ///< null colours by height
};

/// One cloud on its way to the screen.
struct PlainFrame
{
    vtkSmartPointer<vtkPolyData> cloud;
    vtkSmartPointer<vtkPolyData> unscaled;
    std::array<float, 2> heightRange = {};
    std::array<double, 6> bounds = {};
};

/// The worker of the plain pipeline: heights to points, one after another. Lives on a thread of its
/// own.
class PlainConverter : public QObject
{
    Q_OBJECT

public:
    /// True from the start of a conversion until its frame was drawn. Any thread.
    bool isBusy() const { return busy; }
    void setIdle() { busy = false; }

    /// Points as most people write them: sized once, filled through the pointer.
    static vtkSmartPointer<vtkPolyData> pointsOf(const float *heights, int width, int height);

Q_SIGNALS:
    void converted(PlainFrame frame);

public Q_SLOTS:
    void convert(const PlainProfile &profile);

private:
    std::atomic<bool> busy{false};
};

Q_DECLARE_METATYPE(PlainProfile)
Q_DECLARE_METATYPE(PlainFrame)
