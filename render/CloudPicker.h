#pragma once

#include <vtkPointPicker.h>

/// Point picker for measured clouds, which hold NaN where the sensor saw nothing.
///
/// VTK 9.1's own picker takes a NaN for the nearest point and then reports that nothing was hit.
/// Picks what that one picks in a cloud without NaN: of the points within the tolerance, the one
/// nearest to the ray among those nearest to the eye.
class CloudPicker : public vtkPointPicker
{
public:
    static CloudPicker *New();
    vtkTypeMacro(CloudPicker, vtkPointPicker)

protected:
    double IntersectWithLine(const double p1[3], const double p2[3], double tol,
        vtkAssemblyPath *path, vtkProp3D *prop, vtkAbstractMapper3D *mapper) override;
};
