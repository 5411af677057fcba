#include "MouseInteractorStylePP.h"

#include "VtkCompatibility.h"

#include <vtkAbstractPicker.h>
#include <vtkCamera.h>
#include <vtkObjectFactory.h>
#include <vtkPropCollection.h>
#include <vtkRenderer.h>
#include <vtkRendererCollection.h>
#include <vtkRenderWindow.h>
#include <vtkRenderWindowInteractor.h>

#include <algorithm>
#include <utility>

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
{
    VtkCompatibility::pressOnDoubleClick(*this);
}

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
    if (!hasSceneChanged())
        GetInteractor()->EnableRenderOff();
    vtkInteractorStyleTrackballCamera::OnLeftButtonUp();
    GetInteractor()->EnableRenderOn();
}

bool MouseInteractorStylePP::reportPick()
{
    isHolding = false;
    const auto point = std::exchange(picked, std::nullopt);
    if (point)
        Q_EMIT pixelPicked(point->data());
    return point.has_value();
}

bool MouseInteractorStylePP::hasSceneChanged()
{
    return lastChange(renderer()) != sceneAtPress;
}

void MouseInteractorStylePP::endInteraction()
{
    if (GetState() == VTKIS_NONE)
        return;
    pressed.invalidate();
    StopState();
    ReleaseFocus();
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

    picked.emplace();
    picker->GetPickPosition(picked->data());
    if (!isHolding)
        reportPick();
}
