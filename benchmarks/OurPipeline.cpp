#include "OurPipeline.h"

#include "Olvik3DViewerWidget.h"

OurPipeline::OurPipeline()
    : control(QStringLiteral("benchmark"), &window, nullptr)
    , widget(window.findChild<Olvik3DViewerWidget *>())
    , worker(widget, nullptr)
{
    window.resize(measuredViewSize);
    control.show();
}

QVTKOpenGLNativeWidget &OurPipeline::view()
{
    return *widget;
}

void OurPipeline::whenRendered(std::function<void()> callback)
{
    // Queued behind the widget's own slot, which was connected first.
    QObject::connect(
        widget, &Olvik3DViewerWidget::mRender, widget, std::move(callback), Qt::QueuedConnection);
}

void OurPipeline::colorBy(const Gradient &gradient)
{
    widget->setGradient(gradient);
    widget->setColorMode(UserGradient);
}

void OurPipeline::setBuffer(Heights &heights, int side)
{
    control.setBuffer(heights.data(), side, side);
}

std::function<void()> OurPipeline::conversionOf(Heights &heights, int side)
{
    return [this, profile = copies.copyOf(heights.data(), side, side)] {
        worker.onNewProfileData(profile, true);
    };
}
