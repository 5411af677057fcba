#include "Refinement.h"

#include "CloudActor.h"
#include "SceneWindow.h"

#include <vtkCommand.h>
#include <vtkPropCollection.h>
#include <vtkRenderer.h>

#include <algorithm>
#include <vector>

namespace {

constexpr int restMs = 150;

/// Takes everything but one prop out of the picture as long as it lives.
class Solo
{
public:
    Solo(vtkRenderer &renderer, vtkProp &kept)
    {
        vtkPropCollection *props = renderer.GetViewProps();
        vtkCollectionSimpleIterator each;
        for (props->InitTraversal(each); vtkProp *prop = props->GetNextProp(each);) {
            if (prop != &kept && prop->GetVisibility())
                hidden.push_back(prop);
        }
        setVisibility(false);
    }
    ~Solo() { setVisibility(true); }
    Q_DISABLE_COPY_MOVE(Solo)

private:
    void setVisibility(bool isVisible)
    {
        for (vtkProp *prop : hidden)
            prop->SetVisibility(isVisible);
    }

    std::vector<vtkProp *> hidden;
};

} // namespace

Refinement::Refinement(SceneWindow &sceneWindow, vtkRenderer &scene, CloudActor &actor)
    : window(sceneWindow)
    , renderer(scene)
    , cloud(actor)
{
    timer.setSingleShot(true);
    connect(&timer, &QTimer::timeout, this, &Refinement::drawNextPart);
    renderer.AddObserver(vtkCommand::EndEvent, this, &Refinement::onDrawn);
}

Refinement::~Refinement()
{
    renderer.RemoveObservers(vtkCommand::EndEvent);
}

void Refinement::onDrawn()
{
    if (!cloud.isRefining() && cloud.isCoarse())
        timer.start(restMs);
}

/// Frames that stream stay coarse also when they come slower than the full cloud would: drawing it
/// between two of them would delay the second.
void Refinement::onNewCloud()
{
    constexpr qint64 longestStreamInterval = 1000;
    const qint64 interval = sinceLastCloud.isValid() ? sinceLastCloud.restart() : -1;
    if (interval < 0)
        sinceLastCloud.start();
    const bool isStreaming = interval >= 0 && interval < longestStreamInterval
        && static_cast<double>(interval - restMs) < cloud.fullDrawTime();
    if (isStreaming && timer.isActive())
        timer.start(std::max(restMs, static_cast<int>(interval * 3 / 2)));
}

void Refinement::drawNextPart()
{
    const vtkIdType before = cloud.nextPart().first;
    cloud.setRefining(true);
    renderPart();
    cloud.setRefining(false);
    // Out of view, or without an OpenGL context, nothing is drawn.
    if (cloud.isCoarse() && cloud.nextPart().first > before)
        timer.start(0);
}

void Refinement::renderPart()
{
    const PointRange part = cloud.nextPart();
    renderer.SetPreserveColorBuffer(part.first > 0);
    renderer.SetPreserveDepthBuffer(part.first > 0);
    if (cloud.isLast(part)) {
        window.Render();
    } else {
        const Solo onlyTheCloud(renderer, cloud);
        window.SwapBuffersOff();
        window.Render();
        window.SwapBuffersOn();
    }
    renderer.PreserveColorBufferOff();
    renderer.PreserveDepthBufferOff();
}
