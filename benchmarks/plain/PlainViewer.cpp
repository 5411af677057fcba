#include "PlainViewer.h"

#include "HeightShader.h"
#include "VtkCompatibility.h"
#include "vtkShaderCallback.h"

#include <vtkCamera.h>
#include <vtkInteractorStyleTrackballCamera.h>
#include <vtkRenderWindowInteractor.h>

PlainViewer::PlainViewer()
{
    qRegisterMetaType<PlainProfile>();
    qRegisterMetaType<PlainFrame>();
    buildScene();
    worker.moveToThread(&thread);
    connect(
        this, &PlainViewer::newProfile, &worker, &PlainConverter::convert, Qt::QueuedConnection);
    connect(&worker, &PlainConverter::converted, this, &PlainViewer::show, Qt::QueuedConnection);
    thread.start();
}

PlainViewer::~PlainViewer()
{
    thread.quit();
    thread.wait();
    makeCurrent();
    sceneWindow->Finalize();
}

void PlainViewer::buildScene()
{
    VtkCompatibility::setRenderWindow(*this, sceneWindow);
    sceneWindow->SetMultiSamples(0);
    sceneWindow->AddRenderer(renderer);
    vertices->SetInputData(vtkNew<vtkPolyData>());
    mapper->SetInputConnection(vertices->GetOutputPort());
    actor->SetMapper(mapper);
    renderer->AddActor(actor);
    axes->SetCamera(renderer->GetActiveCamera());
    axes->VisibilityOff();
    renderer->AddActor(axes);
    vtkNew<vtkInteractorStyleTrackballCamera> style;
    VtkCompatibility::interactor(*this)->SetInteractorStyle(style);
    colorByHeight();
}

void PlainViewer::colorByHeight()
{
    if (!installHeightShader({*actor, {mapper}}))
        qFatal("no height shader");
    // Without shift and scale the shader sees the cloud's real coordinates.
    mapper->SetVBOShiftScaleMethod(0);
    shaderCallback.TakeReference(vtkShaderCallback::New());
    mapper->AddObserver(vtkCommand::UpdateShaderEvent, shaderCallback);
}

void PlainViewer::colorBy(const Gradient &newGradient)
{
    gradient = std::make_shared<const Gradient>(newGradient);
    VtkCompatibility::Shaders(*actor, {mapper}).restore();
    mapper->RemoveObserver(shaderCallback);
}

PlainProfile PlainViewer::profileOf(const std::vector<float> &heights, int side) const
{
    return {std::make_shared<const std::vector<float>>(heights), side, side, gradient};
}

void PlainViewer::setBuffer(const std::vector<float> &heights, int side)
{
    if (!worker.isBusy())
        Q_EMIT newProfile(profileOf(heights, side));
}

void PlainViewer::show(const PlainFrame &frame)
{
    shown = frame;
    shaderCallback->data.min = 0.0f;
    shaderCallback->data.scaleFactor = 1.0f / frame.heightRange[1];
    vertices->SetInputData(frame.cloud);
    mapper->Update();
    showAxes(frame.bounds);
    if (!isFramed) {
        renderer->ResetCamera();
        renderer->GetActiveCamera()->Zoom(0.8);
        isFramed = true;
    }
    renderer->ResetCameraClippingRange();
    sceneWindow->Render();
    worker.setIdle();
    Q_EMIT rendered();
}

void PlainViewer::showAxes(const std::array<double, 6> &bounds)
{
    axes->SetBounds(bounds[0], bounds[1], bounds[2], bounds[3], 0.0, bounds[5]);
    axes->SetXAxisRange(bounds[0], bounds[1]);
    axes->SetYAxisRange(bounds[2], bounds[3]);
    axes->SetZAxisRange(0.0, bounds[5]);
    axes->VisibilityOn();
}
