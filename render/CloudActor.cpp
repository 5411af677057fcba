#include "CloudActor.h"

#include "CloudMapper.h"
#include "Subsample.h"

#include <vtkCamera.h>
#include <vtkCellArray.h>
#include <vtkMath.h>
#include <vtkObjectFactory.h>
#include <vtkPointData.h>
#include <vtkPolyData.h>
#include <vtkProperty.h>
#include <vtkRenderer.h>
#include <vtkRenderWindow.h>

#include <algorithm>
#include <chrono>
#include <cmath>

namespace {

/// Draws in 18 to 25 ms with software OpenGL and still closes the surface on a full screen.
constexpr vtkIdType coarsePoints = 200'000;
constexpr double frameMilliseconds = 30.0;

/// Screen pixels for one scene unit where the scene is nearest to the camera.
double pixelsPerUnit(vtkRenderer &renderer)
{
    vtkCamera *camera = renderer.GetActiveCamera();
    const double visibleHeight = camera->GetParallelProjection()
        ? 2.0 * camera->GetParallelScale()
        : 2.0 * camera->GetClippingRange()[0]
            * std::tan(vtkMath::RadiansFromDegrees(camera->GetViewAngle() / 2.0));
    return renderer.GetSize()[1] / visibleHeight;
}

} // namespace

vtkStandardNewMacro(CloudActor)

CloudActor::CloudActor()
{
    coarse->SetVBOShiftScaleMethod(0);
}

CloudActor::~CloudActor() = default;

void CloudActor::Render(vtkRenderer *renderer, vtkMapper *mapper)
{
    auto *full = static_cast<CloudMapper *>(mapper);
    if (!full || !full->GetInput())
        return;

    Device->SetShaderProperty(GetShaderProperty());
    Device->SetUserMatrix(GetMatrix());
    wasCoarse = isCoarseWanted && canLeaveOut(*full->GetInput());
    if (wasCoarse)
        drawCoarse(renderer, *full);
    else
        drawAll(renderer, *full);
}

bool CloudActor::canLeaveOut(vtkPolyData &cloud) const
{
    const auto points = static_cast<double>(cloud.GetNumberOfPoints());
    return cloud.GetNumberOfPoints() > coarsePoints
        && points * millisecondsPerPoint > frameMilliseconds;
}

void CloudActor::drawAll(vtkRenderer *renderer, CloudMapper &full)
{
    using Clock = std::chrono::steady_clock;
    const vtkIdType points = full.GetInput()->GetNumberOfPoints();
    Device->SetProperty(GetProperty());
    const Clock::time_point begin = Clock::now();
    Device->Render(renderer, &full);
    EstimatedRenderTime = full.GetTimeToDraw();
    if (points <= coarsePoints)
        return;
    // VTK's own timer hardly ever runs with a single poly-vertex cell. Waiting costs nothing that
    // showing the frame would not wait for.
    renderer->GetRenderWindow()->WaitForCompletion();
    const std::chrono::duration<double, std::milli> elapsed = Clock::now() - begin;
    millisecondsPerPoint = elapsed.count() / static_cast<double>(points);
}

void CloudActor::drawCoarse(vtkRenderer *renderer, CloudMapper &full)
{
    if (coarseOf != full.GetInput())
        prepareCoarse(full);
    // Each point stands for its neighbours: as large as their distance on the screen closes the
    // surface wherever the full cloud does.
    const double distance = coarseStep * pixelsPerUnit(*renderer);
    coarseProperty->DeepCopy(GetProperty());
    coarseProperty->SetPointSize(
        static_cast<float>(std::clamp(std::ceil(distance), 1.0, static_cast<double>(coarseStep))));
    Device->SetProperty(coarseProperty);
    Device->Render(renderer, coarse);
}

void CloudActor::prepareCoarse(CloudMapper &full)
{
    vtkPolyData *cloud = full.GetInput();
    coarseOf = cloud;
    coarseStep = subsampleStep(cloud->GetNumberOfPoints(), coarsePoints);
    vtkNew<vtkPolyData> subsample;
    // The same arrays: the vertex buffers on the graphics card are shared, too.
    subsample->SetPoints(cloud->GetPoints());
    subsample->GetPointData()->ShallowCopy(cloud->GetPointData());
    subsample->SetVerts(subsampleCells(*cloud->GetPoints(), coarseStep));
    coarse->setCloudBounds(full.knownBounds());
    coarse->SetInputData(subsample);
}

void CloudActor::ReleaseGraphicsResources(vtkWindow *window)
{
    coarse->ReleaseGraphicsResources(window);
    vtkLODActor::ReleaseGraphicsResources(window);
}
