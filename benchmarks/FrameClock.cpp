#include "FrameClock.h"

#include "Stopwatch.h"
#include "VtkCompatibility.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>
#include <QVTKOpenGLNativeWidget.h>

#include <vtkRenderWindow.h>

#include <utility>

FrameClock::FrameClock(Pipeline &measured)
    : pipeline(measured)
{
    QVTKOpenGLNativeWidget *view = &pipeline.view();
    pipeline.whenRendered([this] { isRendered = true; });
    // Whatever is swapped after a cloud was rendered shows it.
    QObject::connect(view, &QOpenGLWidget::frameSwapped, view, [this] {
        ++swaps;
        clouds += std::exchange(isRendered, false) ? 1 : 0;
    });
}

void FrameClock::settle()
{
    QEventLoop loop;
    QTimer::singleShot(300, &loop, &QEventLoop::quit);
    loop.exec();
}

void FrameClock::waitForCloud()
{
    const int before = clouds;
    while (clouds == before)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

double FrameClock::show(Heights &heights, int side)
{
    const Stopwatch watch;
    pipeline.setBuffer(heights, side);
    waitForCloud();
    return watch.milliseconds();
}

double FrameClock::showConverted()
{
    const Stopwatch watch;
    waitForCloud();
    return watch.milliseconds();
}

double FrameClock::redraw()
{
    return showChange([this] { VtkCompatibility::renderWindow(pipeline.view())->Render(); });
}

double FrameClock::showChange(const std::function<void()> &change)
{
    const int before = swaps;
    const Stopwatch watch;
    change();
    while (swaps == before)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    return watch.milliseconds();
}
