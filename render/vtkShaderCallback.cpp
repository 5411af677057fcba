#include "vtkShaderCallback.h"

#include <vtkShaderProgram.h>

vtkShaderCallback *vtkShaderCallback::New()
{
    return new vtkShaderCallback;
}

void vtkShaderCallback::Execute(vtkObject *, unsigned long, void *callData)
{
    auto *program = static_cast<vtkShaderProgram *>(callData);
    if (!program)
        return;
    program->SetUniformf("m_min", data.min);
    program->SetUniformf("m_scaleFactor", data.scaleFactor);
}
