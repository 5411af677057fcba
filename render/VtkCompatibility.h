#pragma once

#include <QOpenGLContext>
#include <QOpenGLFunctions>
#include <QScopeGuard>
#include <QSurfaceFormat>
#include <QVTKOpenGLNativeWidget.h>
#include <vtkActor.h>
#include <vtkCallbackCommand.h>
#include <vtkCubeAxesActor.h>
#include <vtkGenericOpenGLRenderWindow.h>
#include <vtkInteractorStyle.h>
#include <vtkNew.h>
#include <vtkOpenGLPolyDataMapper.h>
#include <vtkOpenGLState.h>
#include <vtkShader.h>
#include <vtkVersionMacros.h>

#if VTK_MAJOR_VERSION >= 9
#include <vtkShaderProperty.h>
#endif

#include <array>
#include <string>

/// Everything that is written differently for different versions of VTK, 8.2 and later.
namespace VtkCompatibility {

/// What VTK's widgets need of OpenGL.
inline QSurfaceFormat surfaceFormat()
{
    QSurfaceFormat format = QVTKOpenGLNativeWidget::defaultFormat();
    // 8.2 would draw with eight samples for each pixel, whatever its window is told.
    format.setSamples(0);
    // Some builds of 9.6 ask for a debugging context, which costs time and writes to the console.
    format.setOption(QSurfaceFormat::DebugContext, false);
    return format;
}

#if VTK_MAJOR_VERSION < 9 || (VTK_MAJOR_VERSION == 9 && VTK_MINOR_VERSION < 4)
/// VTK has OpenGL's functions found by GLEW, which looks for those of GLX last. It finds none where
/// contexts are EGL's, as on Wayland: VTK takes that for a failure of all, complains on the console
/// and begins again with each picture.
class EglAwareWindow : public vtkGenericOpenGLRenderWindow
{
public:
    vtkTypeMacro(EglAwareWindow, vtkGenericOpenGLRenderWindow)

    void OpenGLInitContext() override
    {
        const vtkNew<vtkCallbackCommand> silence;
        const unsigned long observer = this->AddObserver(vtkCommand::ErrorEvent, silence);
        const auto loud = qScopeGuard([&] { this->RemoveObserver(observer); });
        this->Superclass::OpenGLInitContext();
        if (!this->Initialized)
            finishWithoutGlx();
    }

private:
    void finishWithoutGlx()
    {
        const QOpenGLContext *context = QOpenGLContext::currentContext();
        // What a lost context does not say is all that GLEW asks for before it finds functions.
        if (!context || !context->functions()->glGetString(GL_VERSION))
            return;
        GLfloat widths[] = {1.0f, 1.0f};
        context->functions()->glGetFloatv(GL_ALIASED_LINE_WIDTH_RANGE, widths);
        this->MaximumHardwareLineWidth = widths[1];
        this->Initialized = true;
#if VTK_MAJOR_VERSION >= 9
        this->GlewInitValid = true;
#else
        this->SetContextSupportsOpenGL32(true);
#endif
    }
};
#else
using EglAwareWindow = vtkGenericOpenGLRenderWindow;
#endif

/// A render window that gets over a picture that broke off.
class PictureWindow : public EglAwareWindow
{
public:
    vtkTypeMacro(PictureWindow, EglAwareWindow)

    using vtkGenericOpenGLRenderWindow::ReleaseGraphicsResources; // protected in 8.2

protected:
    /// What VTK does at the end of a picture; without it there would never be another.
    void endPicture();
};

#if VTK_MAJOR_VERSION >= 9
inline QVTKInteractor *interactor(const QVTKOpenGLNativeWidget &widget)
{
    return widget.interactor();
}

inline vtkRenderWindow *renderWindow(const QVTKOpenGLNativeWidget &widget)
{
    return widget.renderWindow();
}

inline void setRenderWindow(QVTKOpenGLNativeWidget &widget, vtkGenericOpenGLRenderWindow *window)
{
    widget.setRenderWindow(window);
}

/// Makes \a device draw with the shaders of \a actor.
/// \return whether actors have shaders
inline bool shareShaders(vtkActor &actor, vtkActor &device)
{
    device.SetShaderProperty(actor.GetShaderProperty());
    return true;
}

/// Whether a drawing shows on top of the last one.
constexpr bool keepsLastPicture = true;

/// A widget whose OpenGL is refused does not set VTK up.
inline void refuseOpenGL(QVTKOpenGLNativeWidget &) { }

inline void PictureWindow::endPicture()
{
    this->ClearInRenderStatus();
    this->End();
    this->GetState()->Pop();
}
#else
inline QVTKInteractor *interactor(QVTKOpenGLNativeWidget &widget)
{
    return widget.GetInteractor();
}

inline vtkRenderWindow *renderWindow(QVTKOpenGLNativeWidget &widget)
{
    return widget.GetRenderWindow();
}

inline void setRenderWindow(QVTKOpenGLNativeWidget &widget, vtkGenericOpenGLRenderWindow *window)
{
    widget.SetRenderWindow(window);
    widget.setEnableHiDPI(true); // as of itself since 9.0
}

/// The mappers hold the replacements.
inline bool shareShaders(vtkActor &, vtkActor &)
{
    return false;
}

/// The widget draws and shows one and the same buffer, and starts anew when it is asked for a part.
constexpr bool keepsLastPicture = false;

/// Each change of its size would set VTK up without asking.
inline void refuseOpenGL(QVTKOpenGLNativeWidget &widget)
{
    QObject::disconnect(&widget, SIGNAL(resized()), &widget, SLOT(recreateFBO()));
}

inline void PictureWindow::endPicture()
{
    this->ClearInRenderStatus();
    this->RestoreGLState();
}
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
    [[maybe_unused]] std::array<vtkMapper *, 2> mappers; ///< of no use from VTK 9.0 on
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
