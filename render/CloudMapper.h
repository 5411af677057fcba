#pragma once

#include <vtkOpenGLPolyDataMapper.h>

#include <array>

/// Mapper of a point cloud whose box is known from its conversion.
///
/// Saves two passes over all points for each frame: the stock mapper visits every cell to find the
/// bounds and rebuilds the index buffer whenever the poly data is another one, although the vertex
/// cells stay.
class CloudMapper : public vtkOpenGLPolyDataMapper
{
public:
    static CloudMapper *New();
    vtkTypeMacro(CloudMapper, vtkOpenGLPolyDataMapper)

    /// \param bounds box of the input set next, in scene units
    void setCloudBounds(const std::array<double, 6> &bounds);
    const std::array<double, 6> &knownBounds() const { return cloudBounds; }

    void ReleaseGraphicsResources(vtkWindow *window) override;

protected:
    void ComputeBounds() override;
    void BuildIBO(vtkRenderer *renderer, vtkActor *actor, vtkPolyData *cloud) override;

private:
    struct IndexBufferState
    {
        const void *verts = nullptr;
        vtkMTimeType vertsTime = 0;
        int representation = -1;

        bool operator==(const IndexBufferState &other) const;
    };

    std::array<double, 6> cloudBounds{1.0, -1.0, 1.0, -1.0, 1.0, -1.0};
    IndexBufferState builtFor;
};
