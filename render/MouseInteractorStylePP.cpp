#include "MouseInteractorStylePP.h"

#include <vtkAbstractPicker.h>
#include <vtkObjectFactory.h>
#include <vtkRendererCollection.h>
#include <vtkRenderWindow.h>
#include <vtkRenderWindowInteractor.h>

namespace {

constexpr qint64 longestClickMs = 150;

} // namespace

vtkStandardNewMacro(MouseInteractorStylePP)

MouseInteractorStylePP::MouseInteractorStylePP(QObject *parent)
    : QObject(parent)
{ }

void MouseInteractorStylePP::OnLeftButtonDown()
{
    pressed.start();
    vtkInteractorStyleTrackballCamera::OnLeftButtonDown();
}

void MouseInteractorStylePP::OnLeftButtonUp()
{
    if (pressed.isValid() && pressed.elapsed() <= longestClickMs)
        pick();
    vtkInteractorStyleTrackballCamera::OnLeftButtonUp();
}

void MouseInteractorStylePP::pick()
{
    vtkRenderWindowInteractor *rwi = GetInteractor();
    vtkAbstractPicker *picker = rwi->GetPicker();
    vtkRenderer *renderer = rwi->GetRenderWindow()->GetRenderers()->GetFirstRenderer();
    const int *position = rwi->GetEventPosition();
    picker->Pick(position[0], position[1], 0.0, renderer);

    double coords[3];
    picker->GetPickPosition(coords);
    Q_EMIT pixelPicked(coords);
}
