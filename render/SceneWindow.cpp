#include "SceneWindow.h"

#include <QOpenGLContext>

#include <vtkObjectFactory.h>

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
    if (this->ReadyForRendering && canDraw())
        this->Superclass::Render();
}
