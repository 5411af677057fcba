#pragma once

class vtkCubeAxesActor;
class vtkRenderer;

/// Fits the texts of the cube axes to the size at which they are about to be drawn: as tall on
/// screens of any density, only as many labels as stand apart, and titles near the axes of small
/// views. Ticks stay.
///
/// \param pixelRatio device pixels for each pixel of the screen's text
void layOutAxes(vtkCubeAxesActor &axes, vtkRenderer &renderer, double pixelRatio);

/// Takes the labels from axes that are about to go: VTK 9.1's actor would leak them.
void releaseAxisLabels(vtkCubeAxesActor &axes);
