#pragma once

#include "HeightBuffers.h"
#include "Olvik3DViewerControl.h"
#include "Pipeline.h"
#include "ProcessData.h"

#include <QWidget>

class Olvik3DViewerWidget;

/// The library, embedded as a host embeds it.
class OurPipeline : public Pipeline
{
public:
    OurPipeline();

    QVTKOpenGLNativeWidget &view() override;
    void whenRendered(std::function<void()> callback) override;
    void colorBy(const Gradient &gradient) override;
    void setBuffer(Heights &heights, int side) override;
    std::function<void()> conversionOf(Heights &heights, int side) override;

private:
    QWidget window;
    Olvik3DViewerControl control;
    Olvik3DViewerWidget *widget;
    ProcessData worker; ///< beside the control's own, to time its part alone
    HeightBuffers copies; ///< of the buffers handed to that worker
};
