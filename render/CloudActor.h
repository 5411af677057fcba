#pragma once

#include "CloudMapper.h"

#include <vtkLODActor.h>
#include <vtkNew.h>

#include <optional>

struct Scan;

/// Actor of the cloud, with two levels of detail: all points, or where those take longer than a
/// frame a regular subsample that looks the same. The full cloud then comes in parts, see
/// Refinement.
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

    /// The points that the next part adds to the picture of those before it: about a frame's worth.
    /// Any draw that is no part starts anew.
    PointRange nextPart() const;
    bool isLast(const PointRange &part) const { return part.end() >= count; }

    /// Whether to draw the next part instead of the subsample.
    bool isRefining() const { return refining; }
    void setRefining(bool wanted) { refining = wanted; }

    /// Whether the picture leaves points out so far.
    bool isCoarse() const { return drawn < count; }

    /// Milliseconds that drawing all points is expected to take.
    double fullDrawTime() const;

    void Render(vtkRenderer *renderer, vtkMapper *mapper) override;
    void ReleaseGraphicsResources(vtkWindow *window) override;

protected:
    CloudActor();
    ~CloudActor() override;

private:
    bool canLeaveOut();
    void drawPart(vtkRenderer *renderer, CloudMapper &full, const PointRange &part);
    void drawCoarse(vtkRenderer *renderer, CloudMapper &full);

    vtkNew<CloudMapper> coarse;
    vtkNew<vtkProperty> coarseProperty;
    int coarseStep = 1;
    double spacing = 1.0; ///< of neighbours in the full cloud, in scene units
    vtkIdType count = 0; ///< points of the full cloud
    vtkIdType drawn = 0; ///< how many of them the picture shows
    double milliseconds = 0.0; ///< that those took
    std::optional<double> millisecondsPerPoint; ///< of the last full draw of a large cloud
    bool holdsFullBuffers = false; ///< all points of some cloud are on the graphics card
    bool areFullBuffersCurrent = false; ///< and they are of this cloud
    bool refining = false;
};
