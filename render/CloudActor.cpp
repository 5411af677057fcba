#include "CloudActor.h"

#include <vtkMapper.h>
#include <vtkObjectFactory.h>

vtkStandardNewMacro(CloudActor)

void CloudActor::Render(vtkRenderer *renderer, vtkMapper *mapper)
{
    if (!mapper)
        return;

    Device->SetProperty(GetProperty());
    Device->SetShaderProperty(GetShaderProperty());
    Device->SetUserMatrix(GetMatrix());
    Device->Render(renderer, mapper);
    EstimatedRenderTime = mapper->GetTimeToDraw();
}
