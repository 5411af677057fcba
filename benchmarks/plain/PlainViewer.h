#pragma once

#include "PlainConverter.h"

#include <QThread>
#include <QVTKOpenGLNativeWidget.h>

#include <vtkActor.h>
#include <vtkCubeAxesActor.h>
#include <vtkGenericOpenGLRenderWindow.h>
#include <vtkNew.h>
#include <vtkOpenGLPolyDataMapper.h>
#include <vtkRenderer.h>
#include <vtkVertexGlyphFilter.h>

class vtkShaderCallback;

/// What the library is measured against: the same picture, made with VTK's parts as most people put
/// them together. Converts on a worker thread and drops what arrives meanwhile, like the library.
class PlainViewer : public QVTKOpenGLNativeWidget
{
    Q_OBJECT

public:
    PlainViewer();
    ~PlainViewer() override;

    /// A copy of the heights, ready for the worker.
    PlainProfile profileOf(const std::vector<float> &heights, int side) const;
    PlainConverter &converter() { return worker; }

    /// Dropped while the worker converts or a cloud is on its way to the screen.
    void setBuffer(const std::vector<float> &heights, int side);
    void colorBy(const Gradient &gradient);

Q_SIGNALS:
    void newProfile(PlainProfile profile);
    void rendered();

private:
    void buildScene();
    void colorByHeight();
    void show(const PlainFrame &frame);
    void showAxes(const std::array<double, 6> &bounds);

    PlainConverter worker;
    QThread thread;
    std::shared_ptr<const Gradient> gradient;
    PlainFrame shown;
    bool isFramed = false;

    vtkNew<vtkGenericOpenGLRenderWindow> sceneWindow;
    vtkNew<vtkRenderer> renderer;
    vtkNew<vtkVertexGlyphFilter> vertices;
    vtkNew<vtkOpenGLPolyDataMapper> mapper;
    vtkNew<vtkActor> actor;
    vtkNew<vtkCubeAxesActor> axes;
    vtkSmartPointer<vtkShaderCallback> shaderCallback;
};
