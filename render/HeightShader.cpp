#include "HeightShader.h"

#include <QFile>

#include <vtkActor.h>
#include <vtkShaderProperty.h>

#include <string>

bool installHeightShader(vtkActor &actor)
{
    QFile file(QStringLiteral(":/shader.vert"));
    if (!file.open(QIODevice::ReadOnly))
        return false;

    // The actor's shader property instead of the mapper: VTK 9.2 has dropped the mapper's own
    // replacements, and several mappers may draw one cloud.
    const bool beforeVtk = true;
    const bool everywhere = false;
    vtkShaderProperty *shader = actor.GetShaderProperty();
    shader->AddVertexShaderReplacement("//VTK::Normal::Dec", beforeVtk,
        "//VTK::Normal::Dec\n" + file.readAll().toStdString(), everywhere);
    shader->AddVertexShaderReplacement(
        "//VTK::Normal::Impl", beforeVtk, "//VTK::Normal::Impl\n  vertexcode();\n", everywhere);
    shader->AddFragmentShaderReplacement(
        "//VTK::Normal::Dec", beforeVtk, "//VTK::Normal::Dec\nin vec4 colorVSOutput;", everywhere);
    shader->AddFragmentShaderReplacement("//VTK::Normal::Impl", beforeVtk,
        "//VTK::Normal::Impl\nfragOutput0 = vec4(colorVSOutput);\n", everywhere);
    // No lighting: the colour on screen is exactly the colour of the vertex.
    shader->AddFragmentShaderReplacement("//VTK::Light::Impl", beforeVtk, "\n", everywhere);
    return true;
}

void removeHeightShader(vtkActor &actor)
{
    actor.GetShaderProperty()->ClearAllShaderReplacements();
}
