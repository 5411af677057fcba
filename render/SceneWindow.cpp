#include "SceneWindow.h"

#include <QOpenGLContext>
#include <QWidget>

#include <vtkObjectFactory.h>

#include <new>
#include <utility>

vtkStandardNewMacro(SceneWindow)

bool SceneWindow::canDraw()
{
    this->MakeCurrent();
    if (!this->IsCurrent())
        return false;
    // After a refusal Qt still names the context that was current before, this one as a rule.
    QOpenGLContext *context = QOpenGLContext::currentContext();
    return context->makeCurrent(context->surface());
}

void SceneWindow::Render()
{
    if (!this->ReadyForRendering || !canDraw())
        return;
    isMissing = false;
    try {
        this->Superclass::Render();
        hasFailed = false;
    } catch (const std::bad_alloc &error) {
        this->endPicture();
        if (!std::exchange(hasFailed, true))
            qWarning("3D viewer: a picture was dropped: %s", error.what());
    }
}

bool SceneWindow::renderOnScreen(QWidget &view)
{
    // A minimised window counts as visible, too.
    isMissing = !view.isVisible() || !view.window()->testAttribute(Qt::WA_Mapped);
    if (isMissing)
        view.update();
    else
        Render();
    return !isMissing;
}

void SceneWindow::renderMissed()
{
    if (isMissing)
        Render();
}
