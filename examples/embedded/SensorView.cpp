#include "SensorView.h"

#include "HeightMap.h"
#include "ScannerSimulator.h"
#include "TerrainGradient.h"

#include <Olvik3DViewerControl.h>
#include <Olvik3DViewerWidget.h>

namespace {

constexpr QSize frameSize(512, 384);
constexpr double framesPerSecond = 5.0;
/// Height of the highest part that the simulated scanner sees at this frame size.
constexpr double top = 125.0;

std::unique_ptr<FrameSource> simulator(int lead)
{
    auto source = std::make_unique<ScannerSimulator>(frameSize);
    for (int frame = 0; frame < lead; ++frame)
        source->next();
    return source;
}

} // namespace

SensorView::SensorView(const QString &name, int lead, QWidget *parent)
    : QGroupBox(name, parent)
    , feeder(simulator(lead), framesPerSecond, 0)
    , viewer(new Olvik3DViewerControl(name, this, nullptr))
    , view(findChild<Olvik3DViewerWidget *>())
{
    view->setGradient(terrainGradient(top));
    view->setMinimumSize(200, 150);
    viewer->show();

    connect(&feeder, &Feeder::frameReady, this, [this](HeightMap &frame) {
        viewer->setBuffer(frame.heights.data(), frame.width, frame.height);
    });
    connect(viewer, &Olvik3DViewerControl::pointPicked, this, &SensorView::reportPoint);
    connect(viewer, &Olvik3DViewerControl::distancePicked, this, &SensorView::reportDistance);
}

void SensorView::setRunning(bool running)
{
    if (running)
        feeder.start();
    else
        feeder.stop();
}

void SensorView::setColorMode(ColorMode mode)
{
    view->setColorMode(mode);
}

void SensorView::setAxesShown(bool shown)
{
    view->showAxes(shown);
}

void SensorView::resetCamera()
{
    view->resetCamera();
}

void SensorView::reportPoint(const double *xyz)
{
    Q_EMIT measured(title(), tr("Point"),
        tr("pixel %1, profile %2, height %3").arg(xyz[0]).arg(xyz[1]).arg(xyz[2], 0, 'f', 1));
}

void SensorView::reportDistance(double distance)
{
    Q_EMIT measured(title(), tr("Distance"), QString::number(distance, 'f', 1));
}
