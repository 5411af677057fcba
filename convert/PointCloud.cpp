#include "PointCloud.h"

#include <vtkFloatArray.h>
#include <vtkNew.h>
#include <vtkPoints.h>
#include <vtkPolyData.h>

vtkSmartPointer<vtkPolyData> cloudOver(vtkFloatArray *xyz)
{
    vtkNew<vtkPoints> points;
    points->SetData(xyz);
    auto cloud = vtkSmartPointer<vtkPolyData>::New();
    cloud->SetPoints(points);
    return cloud;
}
