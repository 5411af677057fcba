#pragma once

#include "Olvik3DViewerExport.h"
#include "Olvik3DViewerWidget.h"

#include <vtkCommand.h>

/// Feeds the height shader: observes a mapper's shader update and sets the uniforms m_min and
/// m_scaleFactor from the last render request. GUI thread only.
class OLVIK3DVIEWER_EXPORT vtkShaderCallback : public vtkCommand
{
public:
    static vtkShaderCallback *New();
    vtkTypeMacro(vtkShaderCallback, vtkCommand)

    /// \param callData the vtkShaderProgram that is about to draw
    void Execute(vtkObject *caller, unsigned long eventId, void *callData) override;

    Olvik3DViewerWidget::RenderData data;
};
