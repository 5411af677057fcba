#include "CloudActor.h"

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
constexpr double smallestPart = 1 << 16;
constexpr double largestPart = 1 << 30;

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
    if (refining)
        drawPart(renderer, *full, nextPart());
    else if (canLeaveOut())
        drawCoarse(renderer, *full);
    else
        drawPart(renderer, *full, {});
}

void CloudActor::show(const Scan &scan, CloudMapper &full)
{
    full.setCloudBounds(scan.box);
    full.SetInputData(scan.cloud);
    areFullBuffersCurrent = false;
    count = scan.cloud->GetNumberOfPoints();
    drawn = 0;
    coarse->setCloudBounds(scan.box);
    coarse->SetInputData(scan.subsample.cloud);
    coarseStep = scan.subsample.step;
    spacing = static_cast<double>(scan.subsample.spacing);
}

PointRange CloudActor::nextPart() const
{
    if (!VtkCompatibility::keepsLastPicture)
        return {};
    const double affordable = frameMilliseconds / millisecondsPerPoint.value_or(0.0);
    return {drawn, static_cast<vtkIdType>(std::clamp(affordable, smallestPart, largestPart))};
}

double CloudActor::fullDrawTime() const
{
    return static_cast<double>(count) * millisecondsPerPoint.value_or(0.0);
}

bool CloudActor::canLeaveOut()
{
    if (!coarse->GetInput())
        return false;
    // Nothing measured yet: a first frame of seconds, or a coarse one where none is needed, would
    // be a poor beginning.
    if (!millisecondsPerPoint)
        millisecondsPerPoint = isDrawnInSoftware() ? softwareMillisecondsPerPoint : 0.0;
    return fullDrawTime() > frameMilliseconds;
}

void CloudActor::drawPart(vtkRenderer *renderer, CloudMapper &full, const PointRange &part)
{
    using Clock = std::chrono::steady_clock;
    full.setRange(part);
    Device->SetProperty(GetProperty());
    const Clock::time_point begin = Clock::now();
    Device->Render(renderer, &full);
    EstimatedRenderTime = full.GetTimeToDraw();
    holdsFullBuffers = areFullBuffersCurrent = true;
    drawn = std::min(part.end(), count);
    if (!coarse->GetInput())
        return;
    // VTK's own timer hardly ever runs for points. Waiting costs nothing that showing the frame
    // would not wait for.
    renderer->GetRenderWindow()->WaitForCompletion();
    const std::chrono::duration<double, std::milli> elapsed = Clock::now() - begin;
    milliseconds = elapsed.count() + (part.first == 0 ? 0.0 : milliseconds);
    if (!isCoarse())
        millisecondsPerPoint = milliseconds / static_cast<double>(count);
}

void CloudActor::drawCoarse(vtkRenderer *renderer, CloudMapper &full)
{
    drawn = 0;
    // Frames that are never drawn in full need no 12 bytes a point on the graphics card.
    if (holdsFullBuffers && !areFullBuffersCurrent) {
        full.ReleaseGraphicsResources(renderer->GetRenderWindow());
        holdsFullBuffers = false;
    }
    // Each point stands for its neighbours: as large as their distance on the screen closes the
    // surface wherever the full cloud does.
    const double distance = coarseStep * spacing * pixelsPerUnit(*renderer);
    const double size = GetProperty()->GetPointSize();
    coarseProperty->DeepCopy(GetProperty());
    coarseProperty->SetPointSize(
        static_cast<float>(std::clamp(std::ceil(distance), size, coarseStep * size)));
    Device->SetProperty(coarseProperty);
    Device->Render(renderer, coarse);
}

void CloudActor::ReleaseGraphicsResources(vtkWindow *window)
{
    coarse->ReleaseGraphicsResources(window);
    holdsFullBuffers = false;
    vtkLODActor::ReleaseGraphicsResources(window);
}
