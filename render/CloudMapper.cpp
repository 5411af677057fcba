#include "CloudMapper.h"

#include <QOpenGLContext>
#include <QOpenGLFunctions>

#include <vtkObjectFactory.h>
#include <vtkOpenGLIndexBufferObject.h>
#include <vtkOpenGLVertexBufferObjectGroup.h>

#include <algorithm>

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
    // Software OpenGL keeps the results of a whole call's vertices, 70 bytes each; those of a block
    // stay in the processor's cache.
    constexpr vtkIdType block = 65536;
    QOpenGLFunctions *gl = QOpenGLContext::currentContext()->functions();
    for (vtkIdType first = 0; first < count; first += block) {
        const vtkIdType size = std::min(block, count - first);
        gl->glDrawArrays(GL_POINTS, static_cast<GLint>(first), static_cast<GLsizei>(size));
    }
}
