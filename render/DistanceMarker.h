#pragma once

#include <vtkNew.h>

#include <array>

class vtkActor;
class vtkBillboardTextActor3D;
class vtkLineSource;
class vtkPolyDataMapper;
class vtkRenderer;

/// The line between two measured points and its label, hidden until something was measured.
/// GUI thread only; never renders by itself.
class DistanceMarker
{
public:
    DistanceMarker();
    ~DistanceMarker();

    void addTo(vtkRenderer &renderer);

    /// Draws the line and puts the distance at half the absolute difference from the first point,
    /// at its height: the middle of the line when the second point lies at larger x and y.
    /// \return the distance in scene units
    double show(const std::array<double, 3> &first, const std::array<double, 3> &second);
    void hide();

private:
    vtkNew<vtkLineSource> lineSource;
    vtkNew<vtkPolyDataMapper> lineMapper;
    vtkNew<vtkActor> lineActor;
    vtkNew<vtkBillboardTextActor3D> distanceText;
};
