#include "ViewSetup.h"

#include "HeightMap.h"
#include "TerrainGradient.h"

#include <vtkPolyData.h>

#include <algorithm>
#include <cmath>
#include <optional>

namespace {

bool isVisible(const Olvik3DViewerWidget::RenderData &request)
{
    const vtkIdType count = request.polyData ? request.polyData->GetNumberOfPoints() : 0;
    for (vtkIdType i = 0; i < count; ++i) {
        if (std::isfinite(request.polyData->GetPoint(i)[2]))
            return true;
    }
    return false;
}

} // namespace

ViewSetup::ViewSetup(Olvik3DViewerWidget *viewerWidget, const ViewOptions &viewOptions)
    : QObject(viewerWidget)
    , view(viewerWidget)
    , options(viewOptions)
{
    view->setAxesScale(options.scale[0], options.scale[1], options.scale[2]);
    if (options.isGradient)
        view->setColorMode(*options.isGradient ? UserGradient : Auto);
    connect(
        view, &Olvik3DViewerWidget::mRender, this, &ViewSetup::followFirst, Qt::QueuedConnection);
}

void ViewSetup::useRangeOf(const HeightMap &frame)
{
    if (!options.isGradient.value_or(false))
        return;
    float top = 0.0f;
    for (const float height : frame.heights)
        top = std::isfinite(height) ? std::max(top, height) : top;
    view->setGradient(terrainGradient(std::ceil(static_cast<double>(top))));
}

void ViewSetup::followFirst(const Olvik3DViewerWidget::RenderData &request)
{
    if (!isFollowed && !isVisible(request))
        Q_EMIT frameIsInvisible();
    isFollowed = true;
    // A file is shown within the bounds of the last buffer, so there has to be one on screen first.
    if (options.cloudFile.isEmpty())
        disconnect(view, nullptr, this, nullptr);
    else
        load();
}

void ViewSetup::load()
{
    std::optional<bool> isCloudVisible;
    const QMetaObject::Connection watch = connect(view, &Olvik3DViewerWidget::mRender, this,
        [&](const Olvik3DViewerWidget::RenderData &cloud) { isCloudVisible = isVisible(cloud); });
    view->load(options.cloudFile, options.swapsAxes);
    disconnect(watch);
    // A view that is at the next buffer drops the cloud; that buffer brings another chance.
    if (!isCloudVisible)
        return;
    disconnect(view, nullptr, this, nullptr);
    if (!*isCloudVisible)
        Q_EMIT cloudIsInvisible();
}
