#pragma once

#include "VtkCompatibility.h"

class QWidget;

/// A render window that leaves frames out while its OpenGL context is lost, as after a reset of the
/// graphics driver, and those that there is no memory for. VTK would draw without a context, and
/// after an exception never again.
class SceneWindow : public VtkCompatibility::PictureWindow
{
public:
    static SceneWindow *New();
    vtkTypeMacro(SceneWindow, VtkCompatibility::PictureWindow)

    /// Whether the context is there; makes it current.
    bool canDraw();

    void Render() override;

    /// Draws, or while nothing of \a view is on screen leaves that to its next paint.
    /// \return whether there is a new picture
    bool renderOnScreen(QWidget &view);

    /// Called by that paint.
    void renderMissed();

private:
    bool hasFailed = false; ///< the last picture
    bool isMissing = false; ///< the picture that renderOnScreen() left out
};
