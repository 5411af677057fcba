#pragma once

#include "Pipeline.h"
#include "PlainViewer.h"

#include <QWidget>

/// The plain viewer in a window of the same size.
class PlainPipeline : public Pipeline
{
public:
    PlainPipeline();

    QVTKOpenGLNativeWidget &view() override;
    void whenRendered(std::function<void()> callback) override;
    void colorBy(const Gradient &gradient) override;
    void setBuffer(Heights &heights, int side) override;
    std::function<void()> conversionOf(Heights &heights, int side) override;

private:
    QWidget window;
    PlainViewer *viewer; ///< owned by the window
};
