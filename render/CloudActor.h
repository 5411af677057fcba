#pragma once

#include <vtkLODActor.h>
#include <vtkNew.h>
#include <vtkWeakPointer.h>

class CloudMapper;
class vtkPolyData;

/// Actor of the cloud, with two levels of detail: all points, or while the camera moves a regular
/// subsample that looks the same and draws within a frame.
///
/// Draws through the inner actor of its base and hands that one the shader property, which the base
/// keeps to itself: replacements would never reach the screen. The base's own levels of detail are
/// 150 random points, drawn white. GUI thread only.
class CloudActor : public vtkLODActor
{
public:
    static CloudActor *New();
    vtkTypeMacro(CloudActor, vtkLODActor)

    /// Draws the subsample. Its input is made by the first draw that needs it.
    CloudMapper &coarseMapper() { return *coarse; }

    /// Asks for the subsample or for all points. Small clouds, and all clouds on a machine that draws
    /// them within a frame, are drawn in full anyway.
    void setCoarse(bool wanted) { isCoarseWanted = wanted; }

    /// Whether the last draw left points out.
    bool isCoarse() const { return wasCoarse; }

    void Render(vtkRenderer *renderer, vtkMapper *mapper) override;
    void ReleaseGraphicsResources(vtkWindow *window) override;

protected:
    CloudActor();
    ~CloudActor() override;

private:
    bool canLeaveOut(vtkPolyData &cloud) const;
    void drawAll(vtkRenderer *renderer, CloudMapper &full);
    void drawCoarse(vtkRenderer *renderer, CloudMapper &full);
    void prepareCoarse(CloudMapper &full);

    vtkNew<CloudMapper> coarse;
    vtkNew<vtkProperty> coarseProperty;
    vtkWeakPointer<vtkPolyData> coarseOf; ///< the cloud that the subsample was taken from
    int coarseStep = 1;
    double millisecondsPerPoint = 1.0; ///< of the last full draw of a large cloud
    bool isCoarseWanted = false;
    bool wasCoarse = false;
};
