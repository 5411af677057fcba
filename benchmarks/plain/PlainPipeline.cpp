#include "PlainPipeline.h"

#include <QVBoxLayout>

PlainPipeline::PlainPipeline()
    : viewer(new PlainViewer)
{
    auto *layout = new QVBoxLayout(&window);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(viewer);
    window.resize(measuredViewSize);
    window.show();
}

QVTKOpenGLNativeWidget &PlainPipeline::view()
{
    return *viewer;
}

void PlainPipeline::whenRendered(std::function<void()> callback)
{
    QObject::connect(viewer, &PlainViewer::rendered, viewer, std::move(callback));
}

void PlainPipeline::colorBy(const Gradient &gradient)
{
    viewer->colorBy(gradient);
}

void PlainPipeline::setBuffer(Heights &heights, int side)
{
    viewer->setBuffer(heights, side);
}

std::function<void()> PlainPipeline::conversionOf(Heights &heights, int side)
{
    return [this, profile = viewer->profileOf(heights, side)] {
        viewer->converter().convert(profile);
    };
}
