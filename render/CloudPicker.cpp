#include "CloudPicker.h"

#include <vtkFloatArray.h>
#include <vtkMapper.h>
#include <vtkMath.h>
#include <vtkObjectFactory.h>
#include <vtkPoints.h>
#include <vtkPolyData.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

/// A point on its way along the pick ray: depth t from 0 at the near plane to 1 at the far one.
struct Hit
{
    vtkIdType point = -1;
    double t = std::numeric_limits<double>::max();
    double distance = std::numeric_limits<double>::max();
};

class Ray
{
public:
    Ray(const double from[3], const double to[3])
        : origin{from[0], from[1], from[2]}
        , direction{to[0] - from[0], to[1] - from[1], to[2] - from[2]}
        , squaredLength(vtkMath::Dot(direction, direction))
    { }
    bool hasLength() const { return squaredLength > 0.0; }

    double depthOf(const float *point) const
    {
        return (direction[0] * (point[0] - origin[0]) + direction[1] * (point[1] - origin[1])
                   + direction[2] * (point[2] - origin[2]))
            / squaredLength;
    }

    /// Largest difference in any coordinate between the point and the ray at its depth.
    double distanceTo(const float *point, double t) const
    {
        double largest = 0.0;
        for (int i = 0; i < 3; ++i)
            largest = std::max(largest, std::abs(point[i] - (origin[i] + t * direction[i])));
        return largest;
    }

private:
    double origin[3];
    double direction[3];
    double squaredLength;
};

vtkFloatArray *cloudOf(vtkAbstractMapper3D *mapper)
{
    auto *surface = vtkMapper::SafeDownCast(mapper);
    auto *cloud = surface ? vtkPolyData::SafeDownCast(surface->GetInput()) : nullptr;
    return cloud && cloud->GetPoints() ? vtkFloatArray::FastDownCast(cloud->GetPoints()->GetData())
                                       : nullptr;
}

/// \param fudge depth within which points count as equally near to the eye
Hit nearestPoint(vtkFloatArray &cloud, const Ray &ray, double tolerance, double fudge)
{
    Hit nearest;
    const float *point = cloud.GetPointer(0);
    for (vtkIdType i = 0; i < cloud.GetNumberOfTuples(); ++i, point += 3) {
        const double t = ray.depthOf(point);
        // Written so that NaN fails.
        if (!(t >= 0.0 && t <= 1.0 && t <= nearest.t + fudge))
            continue;
        const double distance = ray.distanceTo(point, t);
        if (distance <= tolerance && distance < nearest.distance)
            nearest = {i, t, distance};
    }
    return nearest;
}

} // namespace

vtkStandardNewMacro(CloudPicker)

double CloudPicker::IntersectWithLine(const double p1[3], const double p2[3], double tol,
    vtkAssemblyPath *path, vtkProp3D *prop, vtkAbstractMapper3D *mapper)
{
    vtkFloatArray *cloud = cloudOf(mapper);
    const Ray ray(p1, p2);
    if (!cloud || !ray.hasLength())
        return vtkPointPicker::IntersectWithLine(p1, p2, tol, path, prop, mapper);

    const Hit hit = nearestPoint(*cloud, ray, tol, Tolerance);
    if (hit.point < 0 || hit.t >= GlobalTMin)
        return hit.t;
    double coordinates[3];
    cloud->GetTuple(hit.point, coordinates);
    MarkPicked(path, prop, mapper, hit.t, coordinates);
    PointId = hit.point;
    return hit.t;
}
