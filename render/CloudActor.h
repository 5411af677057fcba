#pragma once

#include <vtkLODActor.h>

/// Actor of the cloud: draws its mapper through the inner actor and hands that one the shader
/// property.
///
/// The stock class keeps the shader property to itself, so that replacements never reach the
/// screen, and builds levels of detail of 150 random points that are drawn white.
class CloudActor : public vtkLODActor
{
public:
    static CloudActor *New();
    vtkTypeMacro(CloudActor, vtkLODActor)

    void Render(vtkRenderer *renderer, vtkMapper *mapper) override;
};
