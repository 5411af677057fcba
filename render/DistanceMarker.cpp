#include "DistanceMarker.h"

#include <QString>

#include <vtkActor.h>
#include <vtkBillboardTextActor3D.h>
#include <vtkLineSource.h>
#include <vtkPolyDataMapper.h>
#include <vtkProperty.h>
#include <vtkRenderer.h>
#include <vtkTextProperty.h>

#include <cmath>

DistanceMarker::DistanceMarker()
{
    hide();
    lineMapper->SetInputConnection(lineSource->GetOutputPort());
    lineActor->SetMapper(lineMapper);
    lineActor->GetProperty()->SetLineWidth(2.0f);
    distanceText->GetTextProperty()->SetFontSize(18);
    distanceText->GetTextProperty()->SetJustificationToCentered();
    // A click is meant for the cloud, also where the line lies over it.
    lineActor->PickableOff();
    distanceText->PickableOff();
}

DistanceMarker::~DistanceMarker() = default;

void DistanceMarker::addTo(vtkRenderer &renderer)
{
    renderer.AddActor(lineActor);
    renderer.AddActor(distanceText);
}

double DistanceMarker::show(const std::array<double, 3> &first, const std::array<double, 3> &second)
{
    const double dx = first[0] - second[0];
    const double dy = first[1] - second[1];
    const double dz = first[2] - second[2];
    const double distance = std::sqrt(dx * dx + dy * dy + dz * dz);

    lineSource->SetPoint1(first[0], first[1], first[2]);
    lineSource->SetPoint2(second[0], second[1], second[2]);
    lineActor->VisibilityOn();

    distanceText->SetInput(QString::number(distance, 'g', 6).toLocal8Bit().constData());
    distanceText->SetPosition(
        first[0] + std::abs(dx) / 2.0, first[1] + std::abs(dy) / 2.0, first[2]);
    distanceText->VisibilityOn();
    return distance;
}

void DistanceMarker::hide()
{
    lineActor->VisibilityOff();
    distanceText->VisibilityOff();
}
