#include "CloudMapper.h"

#include "SoftwareOpenGL.h"

#include <QOpenGLContext>
#include <QOpenGLFunctions>

#include <vtkObjectFactory.h>
#include <vtkOpenGLIndexBufferObject.h>
#include <vtkOpenGLVertexBufferObjectGroup.h>

#include <algorithm>

namespace {

// Software OpenGL keeps the vertices of a whole call, 70 bytes each, and queues what its threads
// have not drawn yet: 16 million points took 60 bytes each at a time, and take 30 in blocks.
constexpr vtkIdType block = 65536;
constexpr int blocksInFlight = 4;

} // namespace

vtkStandardNewMacro(CloudMapper)

void CloudMapper::setCloudBounds(const std::array<double, 6> &bounds)
{
    cloudBounds = bounds;
}

void CloudMapper::ComputeBounds()
{
    std::copy(cloudBounds.begin(), cloudBounds.end(), this->Bounds);
}

void CloudMapper::RenderPieceDraw(vtkRenderer *renderer, vtkActor *actor)
{
    const vtkIdType count = this->VBOs->GetNumberOfTuples("vertexMC");
    if (count == 0)
        return;

    vtkOpenGLHelper &primitive = this->Primitives[PrimitivePoints];
    // VTK connects the points with the shader only when there is an index.
    primitive.IBO->IndexCount = static_cast<std::size_t>(count);
    this->UpdateShaders(primitive, renderer, actor);
    QOpenGLFunctions *gl = QOpenGLContext::currentContext()->functions();
    const bool isSoftware = isDrawnInSoftware();
    const vtkIdType end = range.first + std::min(range.size, count - range.first);
    int inFlight = 0;
    for (vtkIdType first = range.first; first < end; first += block) {
        const vtkIdType size = std::min(block, end - first);
        gl->glDrawArrays(GL_POINTS, static_cast<GLint>(first), static_cast<GLsizei>(size));
        if (isSoftware && ++inFlight % blocksInFlight == 0)
            gl->glFinish();
    }
}
