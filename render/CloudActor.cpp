#include "CloudActor.h"

#include "CloudMapper.h"
#include "Scan.h"
#include "SoftwareOpenGL.h"
#include "VtkCompatibility.h"

#include <vtkCamera.h>
#include <vtkMath.h>
#include <vtkObjectFactory.h>
#include <vtkPolyData.h>
#include <vtkProperty.h>
#include <vtkRenderer.h>
#include <vtkRenderWindow.h>

#include <algorithm>
#include <chrono>
#include <cmath>

namespace {

constexpr double frameMilliseconds = 30.0;
/// Software OpenGL at its best, by two cores.
constexpr double softwareMillisecondsPerPoint = 65e-6;

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

    VtkCompatibility::shareShaders(*this, *Device);
    Device->SetUserMatrix(GetMatrix());
    wasCoarse = isCoarseWanted && canLeaveOut();
    if (wasCoarse)
        drawCoarse(renderer, *full);
    else
        drawAll(renderer, *full);
}

void CloudActor::show(const Scan &scan, CloudMapper &full)
{
    full.setCloudBounds(scan.box);
    full.SetInputData(scan.cloud);
    areFullBuffersCurrent = false;
    points = static_cast<double>(scan.cloud->GetNumberOfPoints());
    coarse->setCloudBounds(scan.box);
    coarse->SetInputData(scan.subsample.cloud);
    coarseStep = scan.subsample.step;
    spacing = static_cast<double>(scan.spacing);
}

double CloudActor::fullDrawTime() const
{
    return points * millisecondsPerPoint.value_or(0.0);
}

bool CloudActor::canLeaveOut()
{
    if (!coarse->GetInput())
        return false;
    // Nothing measured yet: a first frame of seconds, or a coarse one where none is needed, would be
    // a poor beginning.
    if (!millisecondsPerPoint)
        millisecondsPerPoint = isDrawnInSoftware() ? softwareMillisecondsPerPoint : 0.0;
    return fullDrawTime() > frameMilliseconds;
}

void CloudActor::drawAll(vtkRenderer *renderer, CloudMapper &full)
{
    using Clock = std::chrono::steady_clock;
    Device->SetProperty(GetProperty());
    const Clock::time_point begin = Clock::now();
    Device->Render(renderer, &full);
    EstimatedRenderTime = full.GetTimeToDraw();
    holdsFullBuffers = areFullBuffersCurrent = true;
    if (!coarse->GetInput())
        return;
    // VTK's own timer hardly ever runs for points. Waiting costs nothing that showing the frame would
    // not wait for.
    renderer->GetRenderWindow()->WaitForCompletion();
    const std::chrono::duration<double, std::milli> elapsed = Clock::now() - begin;
    millisecondsPerPoint = elapsed.count() / points;
}

void CloudActor::drawCoarse(vtkRenderer *renderer, CloudMapper &full)
{
    // Frames that are never drawn in full need no 12 bytes a point on the graphics card.
    if (holdsFullBuffers && !areFullBuffersCurrent) {
        full.ReleaseGraphicsResources(renderer->GetRenderWindow());
        holdsFullBuffers = false;
    }
    // Each point stands for its neighbours: as large as their distance on the screen closes the
    // surface wherever the full cloud does.
    const double distance = coarseStep * spacing * pixelsPerUnit(*renderer);
    coarseProperty->DeepCopy(GetProperty());
    coarseProperty->SetPointSize(
        static_cast<float>(std::clamp(std::ceil(distance), 1.0, static_cast<double>(coarseStep))));
    Device->SetProperty(coarseProperty);
    Device->Render(renderer, coarse);
}

void CloudActor::ReleaseGraphicsResources(vtkWindow *window)
{
    coarse->ReleaseGraphicsResources(window);
    holdsFullBuffers = false;
    vtkLODActor::ReleaseGraphicsResources(window);
}
