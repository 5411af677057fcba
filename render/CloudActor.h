#pragma once

#include <vtkLODActor.h>
#include <vtkNew.h>

#include <optional>

class CloudMapper;
struct Scan;

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

    /// Draws the subsample.
    CloudMapper &coarseMapper() { return *coarse; }

    /// Takes over both levels of detail.
    /// \param full the actor's mapper
    void show(const Scan &scan, CloudMapper &full);

    /// Asks for the subsample or for all points. Small clouds, and all clouds on a machine that draws
    /// them within a frame, are drawn in full anyway.
    void setCoarse(bool wanted) { isCoarseWanted = wanted; }

    /// Whether the last draw left points out.
    bool isCoarse() const { return wasCoarse; }

    /// Milliseconds that drawing all points is expected to take.
    double fullDrawTime() const;

    void Render(vtkRenderer *renderer, vtkMapper *mapper) override;
    void ReleaseGraphicsResources(vtkWindow *window) override;

protected:
    CloudActor();
    ~CloudActor() override;

private:
    bool canLeaveOut();
    void drawAll(vtkRenderer *renderer, CloudMapper &full);
    void drawCoarse(vtkRenderer *renderer, CloudMapper &full);

    vtkNew<CloudMapper> coarse;
    vtkNew<vtkProperty> coarseProperty;
    int coarseStep = 1;
    double spacing = 1.0; ///< of neighbours in the full cloud, in scene units
    double points = 0.0; ///< in the full cloud
    std::optional<double> millisecondsPerPoint; ///< of the last full draw of a large cloud
    bool holdsFullBuffers = false; ///< all points of some cloud are on the graphics card
    bool areFullBuffersCurrent = false; ///< and they are of this cloud
    bool isCoarseWanted = false;
    bool wasCoarse = false;
};
