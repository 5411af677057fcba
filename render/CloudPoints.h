#pragma once

#include <array>

class Gradient;
class vtkPoints;
class vtkPolyData;
class vtkUnsignedCharArray;
template <class T> class vtkSmartPointer;

/// Gives the cloud points stored as interleaved 32-bit floats, converting or adding them where
/// needed.
/// \return these points, owned by the cloud
vtkPoints *ensureFloatPoints(vtkPolyData &cloud);

/// True when nobody but the caller can change the cloud's points: sharing them is as good as a
/// copy.
bool holdsPointsAlone(vtkPolyData &cloud);

/// Another cloud over the same points and point attributes, without cells.
vtkSmartPointer<vtkPolyData> sharedCloud(vtkPolyData &cloud);

/// Another cloud with copies of the points and point attributes, without cells.
vtkSmartPointer<vtkPolyData> copiedCloud(vtkPolyData &cloud);

/// Scales in place; a factor of exactly 1 leaves its coordinate untouched.
/// \param factors for scene x, y and z
void scalePoints(vtkPolyData &cloud, const std::array<float, 3> &factors);

/// Colours named "Colors" by the height (z) of each point, three components without alpha. Points
/// whose colour the gradient leaves open are black.
vtkSmartPointer<vtkUnsignedCharArray> gradientColors(vtkPolyData &cloud, const Gradient &gradient);

/// Box of all points whose coordinates are finite, each coordinate on its own: xmin, xmax, ymin,
/// ymax, zmin, zmax. Uninitialised in VTK's sense (1, -1, ...) for a coordinate without any.
std::array<double, 6> finiteBounds(vtkPolyData &cloud);
