#include "HeightShader.h"

#include "VtkCompatibility.h"

#include <QFile>

bool installHeightShader(const VtkCompatibility::Shaders &shaders)
{
    QFile file(QStringLiteral(":/shader.vert"));
    if (!file.open(QIODevice::ReadOnly))
        return false;

    shaders.replace(vtkShader::Vertex, "//VTK::Normal::Dec",
        "//VTK::Normal::Dec\n" + file.readAll().toStdString());
    shaders.replace(
        vtkShader::Vertex, "//VTK::Normal::Impl", "//VTK::Normal::Impl\n  vertexcode();\n");
    shaders.replace(
        vtkShader::Fragment, "//VTK::Normal::Dec", "//VTK::Normal::Dec\nin vec4 colorVSOutput;");
    shaders.replace(vtkShader::Fragment, "//VTK::Normal::Impl",
        "//VTK::Normal::Impl\nfragOutput0 = vec4(colorVSOutput);\n");
    // No lighting: the colour on screen is exactly the colour of the vertex.
    shaders.replace(vtkShader::Fragment, "//VTK::Light::Impl", "\n");
    return true;
}
