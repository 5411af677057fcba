#pragma once

#include <array>

class ColorLookup;
class vtkPoints;
class vtkPolyData;
template <class T> class vtkSmartPointer;

/// Gives the cloud points stored as interleaved 32-bit floats, converting or adding them where
/// needed.
/// \return these points, owned by the cloud
vtkPoints *ensureFloatPoints(vtkPolyData &cloud);

/// Another cloud over the same points and point attributes, without cells.
vtkSmartPointer<vtkPolyData> sharedCloud(vtkPolyData &cloud);

/// Another cloud with copies of the points and point attributes, without cells.
/// \param cloud points as 32-bit floats
/// \throws std::bad_alloc when there is no memory for it
vtkSmartPointer<vtkPolyData> copiedCloud(vtkPolyData &cloud);

/// Scales in place; three factors of 1 leave the cloud untouched.
/// \param factors for scene x, y and z; those of 1 leave their coordinate as it is
void scalePoints(vtkPolyData &cloud, const std::array<float, 3> &factors);

/// \param points 32-bit floats
/// \param[out] scaled three floats for each point
void copyScaled(vtkPoints &points, const std::array<float, 3> &factors, float *scaled);

/// Looks up the height (z) of each point.
/// \param points 32-bit floats
/// \param[out] rgb three bytes for each point
void colorByHeight(vtkPoints &points, const ColorLookup &lookup, unsigned char *rgb);

/// Box of all points whose coordinates are finite, each coordinate on its own: xmin, xmax, ymin,
/// ymax, zmin, zmax. Uninitialised in VTK's sense (1, -1, ...) for a coordinate without any.
std::array<double, 6> finiteBounds(vtkPolyData &cloud);

/// \param box xmin, xmax, ymin, ymax, zmin, zmax
bool isFinite(const double *box);
