#include "CloudMapper.h"

#include <vtkActor.h>
#include <vtkCellArray.h>
#include <vtkObjectFactory.h>
#include <vtkPolyData.h>
#include <vtkProperty.h>

#include <algorithm>

vtkStandardNewMacro(CloudMapper)

bool CloudMapper::IndexBufferState::operator==(const IndexBufferState &other) const
{
    return verts == other.verts && vertsTime == other.vertsTime
        && representation == other.representation;
}

void CloudMapper::setCloudBounds(const std::array<double, 6> &bounds)
{
    cloudBounds = bounds;
}

void CloudMapper::ComputeBounds()
{
    std::copy(cloudBounds.begin(), cloudBounds.end(), this->Bounds);
}

void CloudMapper::BuildIBO(vtkRenderer *renderer, vtkActor *actor, vtkPolyData *cloud)
{
    // VTK 9.1 compares with a state that it forgets to clear and therefore rebuilds every time.
    const IndexBufferState wanted{cloud->GetVerts(), cloud->GetVerts()->GetMTime(),
        actor->GetProperty()->GetRepresentation()};
    if (wanted == builtFor)
        return;

    vtkOpenGLPolyDataMapper::BuildIBO(renderer, actor, cloud);
    builtFor = wanted;
}

void CloudMapper::ReleaseGraphicsResources(vtkWindow *window)
{
    builtFor = {};
    vtkOpenGLPolyDataMapper::ReleaseGraphicsResources(window);
}
