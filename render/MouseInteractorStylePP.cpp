#include "MouseInteractorStylePP.h"

#include <vtkAbstractPicker.h>
#include <vtkCamera.h>
#include <vtkObjectFactory.h>
#include <vtkPropCollection.h>
#include <vtkRenderer.h>
#include <vtkRendererCollection.h>
#include <vtkRenderWindow.h>
#include <vtkRenderWindowInteractor.h>

#include <algorithm>

namespace {

constexpr qint64 longestClickMs = 150;

/// VTK's time of the last change that a picture would show.
vtkMTimeType lastChange(vtkRenderer *renderer)
{
    if (!renderer)
        return 0;
    vtkMTimeType last = renderer->GetActiveCamera()->GetMTime();
    vtkPropCollection *props = renderer->GetViewProps();
    vtkCollectionSimpleIterator each;
    for (props->InitTraversal(each); vtkProp *prop = props->GetNextProp(each);)
        last = std::max(last, prop->GetRedrawMTime());
    return last;
}

} // namespace

vtkStandardNewMacro(MouseInteractorStylePP)

MouseInteractorStylePP::MouseInteractorStylePP(QObject *parent)
    : QObject(parent)
{ }

void MouseInteractorStylePP::OnLeftButtonDown()
{
    pressed.start();
    sceneAtPress = lastChange(renderer());
    vtkInteractorStyleTrackballCamera::OnLeftButtonDown();
}

void MouseInteractorStylePP::OnLeftButtonUp()
{
    if (pressed.isValid() && pressed.elapsed() <= longestClickMs)
        pick();
    // The picture of the full cloud stays: after another one it would have to be drawn anew.
    if (lastChange(renderer()) == sceneAtPress)
        GetInteractor()->EnableRenderOff();
    vtkInteractorStyleTrackballCamera::OnLeftButtonUp();
    GetInteractor()->EnableRenderOn();
}

vtkRenderer *MouseInteractorStylePP::renderer()
{
    return GetInteractor()->GetRenderWindow()->GetRenderers()->GetFirstRenderer();
}

void MouseInteractorStylePP::pick()
{
    vtkRenderWindowInteractor *rwi = GetInteractor();
    vtkAbstractPicker *picker = rwi->GetPicker();
    const int *position = rwi->GetEventPosition();
    picker->Pick(position[0], position[1], 0.0, renderer());

    double coords[3];
    picker->GetPickPosition(coords);
    Q_EMIT pixelPicked(coords);
}
