#include "PointCloud.h"

#include <vtkFloatArray.h>
#include <vtkPoints.h>
#include <vtkPolyData.h>

vtkSmartPointer<vtkPoints> pointsOver(vtkFloatArray *xyz)
{
    auto points = vtkSmartPointer<vtkPoints>::New();
    points->SetData(xyz);
    return points;
}

vtkSmartPointer<vtkPolyData> cloudOver(vtkFloatArray *xyz)
{
    return cloudOver(pointsOver(xyz));
}

vtkSmartPointer<vtkPolyData> cloudOver(vtkPoints *points)
{
    auto cloud = vtkSmartPointer<vtkPolyData>::New();
    cloud->SetPoints(points);
    return cloud;
}
