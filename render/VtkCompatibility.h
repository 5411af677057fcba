#pragma once

#include <QVTKOpenGLNativeWidget.h>
#include <vtkActor.h>
#include <vtkCubeAxesActor.h>
#include <vtkGenericOpenGLRenderWindow.h>
#include <vtkInteractorStyle.h>
#include <vtkOpenGLPolyDataMapper.h>
#include <vtkShader.h>
#include <vtkVersionMacros.h>

#if VTK_MAJOR_VERSION >= 9
#include <vtkShaderProperty.h>
#endif

#include <array>
#include <string>

/// Everything that is written differently for different versions of VTK, 8.2 and later.
namespace VtkCompatibility {

#if VTK_MAJOR_VERSION >= 9
/// Coordinates as virtual functions of pickers take them.
using PickCoordinates = const double *;

inline QVTKInteractor *interactor(const QVTKOpenGLNativeWidget &widget)
{
    return widget.interactor();
}

inline void setRenderWindow(QVTKOpenGLNativeWidget &widget, vtkGenericOpenGLRenderWindow *window)
{
    widget.setRenderWindow(window);
}

/// Makes \a device draw with the shaders of \a actor.
inline void shareShaders(vtkActor &actor, vtkActor &device)
{
    device.SetShaderProperty(actor.GetShaderProperty());
}
#else
using PickCoordinates = double *;

inline QVTKInteractor *interactor(QVTKOpenGLNativeWidget &widget)
{
    return widget.GetInteractor();
}

inline void setRenderWindow(QVTKOpenGLNativeWidget &widget, vtkGenericOpenGLRenderWindow *window)
{
    widget.SetRenderWindow(window);
}

/// The mappers hold the replacements.
inline void shareShaders(vtkActor &, vtkActor &) { }
#endif

#if VTK_MAJOR_VERSION > 9 || (VTK_MAJOR_VERSION == 9 && VTK_MINOR_VERSION >= 3)
/// \param offset of the titles from the labels in pixels
inline void setTitleOffset(vtkCubeAxesActor &axes, double offset)
{
    double offsets[2];
    axes.GetTitleOffset(offsets[0], offsets[1]);
    offsets[1] = offset;
    axes.SetTitleOffset(offsets);
}
#else
inline void setTitleOffset(vtkCubeAxesActor &axes, double offset)
{
    axes.SetTitleOffset(offset);
}
#endif

#if VTK_MAJOR_VERSION > 9 || (VTK_MAJOR_VERSION == 9 && VTK_MINOR_VERSION >= 1)
/// Of two quick presses of a button the second comes as a double-click, which styles ignore.
inline void pressOnDoubleClick(vtkInteractorStyle &style)
{
    using Style = vtkInteractorStyle;
    style.AddObserver(vtkCommand::LeftButtonDoubleClickEvent, &style, &Style::OnLeftButtonDown);
    style.AddObserver(vtkCommand::MiddleButtonDoubleClickEvent, &style, &Style::OnMiddleButtonDown);
    style.AddObserver(vtkCommand::RightButtonDoubleClickEvent, &style, &Style::OnRightButtonDown);
}
#else
/// Every press comes as one.
inline void pressOnDoubleClick(vtkInteractorStyle &) { }
#endif

/// Changes VTK's shaders for one actor: the actor's own replacements, or before VTK 9.0 those of
/// all its mappers, which 9.2 has dropped.
class Shaders
{
public:
    /// \param drawing all mappers that draw the actor; borrowed, as is the actor
    Shaders(vtkActor &drawn, const std::array<vtkMapper *, 2> &drawing)
        : actor(drawn)
        , mappers(drawing)
    { }

    /// Replaces the first occurrence of \a tag before VTK replaces it.
    void replace(vtkShader::Type shader, const std::string &tag, const std::string &code) const;
    void restore() const;

private:
    vtkActor &actor;
    std::array<vtkMapper *, 2> mappers;
};

#if VTK_MAJOR_VERSION >= 9
inline void Shaders::replace(
    vtkShader::Type shader, const std::string &tag, const std::string &code) const
{
    const bool beforeVtk = true;
    const bool everywhere = false;
    vtkShaderProperty *property = actor.GetShaderProperty();
    if (shader == vtkShader::Vertex)
        property->AddVertexShaderReplacement(tag, beforeVtk, code, everywhere);
    else
        property->AddFragmentShaderReplacement(tag, beforeVtk, code, everywhere);
}

inline void Shaders::restore() const
{
    actor.GetShaderProperty()->ClearAllShaderReplacements();
}
#else
inline void Shaders::replace(
    vtkShader::Type shader, const std::string &tag, const std::string &code) const
{
    const bool beforeVtk = true;
    const bool everywhere = false;
    for (vtkMapper *mapper : mappers)
        vtkOpenGLPolyDataMapper::SafeDownCast(mapper)->AddShaderReplacement(
            shader, tag, beforeVtk, code, everywhere);
}

inline void Shaders::restore() const
{
    for (vtkMapper *mapper : mappers)
        vtkOpenGLPolyDataMapper::SafeDownCast(mapper)->ClearAllShaderReplacements();
}
#endif

} // namespace VtkCompatibility
