#pragma once

#include <vtkGenericOpenGLRenderWindow.h>

/// A render window that leaves frames out while its OpenGL context is lost, as after a reset of the
/// graphics driver. VTK would draw without one.
class SceneWindow : public vtkGenericOpenGLRenderWindow
{
public:
    static SceneWindow *New();
    vtkTypeMacro(SceneWindow, vtkGenericOpenGLRenderWindow)

    /// Whether the context is there; makes it current.
    bool canDraw();

    void Render() override;
};
