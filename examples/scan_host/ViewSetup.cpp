#include "ViewSetup.h"

#include "HeightMap.h"
#include "TerrainGradient.h"

#include <Olvik3DViewerWidget.h>

#include <algorithm>
#include <cmath>

ViewSetup::ViewSetup(Olvik3DViewerWidget *viewerWidget, const ViewOptions &viewOptions)
    : QObject(viewerWidget)
    , view(viewerWidget)
    , options(viewOptions)
{
    view->setAxesScale(options.scale[0], options.scale[1], options.scale[2]);
    if (options.isGradient)
        view->setColorMode(*options.isGradient ? UserGradient : Auto);
    // A file is shown within the bounds of the last buffer, so there has to be one on screen first.
    if (!options.cloudFile.isEmpty())
        connect(
            view, &Olvik3DViewerWidget::mRender, this, &ViewSetup::loadOnce, Qt::QueuedConnection);
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

void ViewSetup::loadOnce()
{
    if (isLoaded)
        return;
    isLoaded = true;
    view->load(options.cloudFile, options.swapsAxes);
}
