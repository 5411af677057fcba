#pragma once

#include <vtkOpenGLPolyDataMapper.h>

#include <array>
#include <limits>

/// Some neighbouring points of a cloud.
struct PointRange
{
    vtkIdType first = 0;
    vtkIdType size = std::numeric_limits<vtkIdType>::max(); ///< may reach beyond the last point

    vtkIdType end() const { return first + size; }
};

/// Mapper that draws every point of its input, in their order, whatever the cells.
///
/// The box is known from the conversion, and an array of points needs no index: the stock mapper
/// visits every cell to find the bounds, and takes 8 bytes and 20 ns a point for vertex cells and
/// their index buffer.
class CloudMapper : public vtkOpenGLPolyDataMapper
{
public:
    static CloudMapper *New();
    vtkTypeMacro(CloudMapper, vtkOpenGLPolyDataMapper)

    /// \param bounds box of the input set next, in scene units
    void setCloudBounds(const std::array<double, 6> &bounds);

    /// What of the input to draw from now on; at first everything.
    void setRange(const PointRange &points) { range = points; }

    void RenderPieceDraw(vtkRenderer *renderer, vtkActor *actor) override;

protected:
    void ComputeBounds() override;
    void BuildIBO(vtkRenderer *, vtkActor *, vtkPolyData *) override { }

private:
    std::array<double, 6> cloudBounds{1.0, -1.0, 1.0, -1.0, 1.0, -1.0};
    PointRange range;
};
