#pragma once

#include "Olvik3DViewerWidget.h"
#include "VtkCompatibility.h"

#include <QImage>

#include <vtkCamera.h>
#include <vtkPoints.h>
#include <vtkRenderer.h>
#include <vtkRendererCollection.h>
#include <vtkRenderWindow.h>

inline vtkRenderer *rendererOf(Olvik3DViewerWidget &view)
{
    return VtkCompatibility::renderWindow(view)->GetRenderers()->GetFirstRenderer();
}

/// Looks at a shown render widget from outside: where a scene point lies on the widget, and which
/// colour is drawn there.
class SceneProbe
{
public:
    explicit SceneProbe(Olvik3DViewerWidget &view)
        : widget(view)
        , renderer(rendererOf(view))
    { }

    /// Looks straight down, so that columns and rows of the cloud are columns and rows on the
    /// screen.
    void lookFromAbove(double width, double height)
    {
        vtkCamera *camera = renderer->GetActiveCamera();
        camera->ParallelProjectionOn();
        camera->SetFocalPoint(width / 2, height / 2, 0);
        camera->SetPosition(width / 2, height / 2, 10000);
        camera->SetViewUp(0, 1, 0);
        camera->SetParallelScale(height * 0.6);
        renderer->ResetCameraClippingRange();
        widget.onRenderNoCamera();
    }

    /// In the widget's own coordinates, as the mouse has them.
    QPoint pixelOf(double x, double y, double z) const
    {
        return inWidget(devicePixelOf(x, y, z, 0.5));
    }

    /// Where to click for a scene position: VTK picks at the corner of a pixel, not in its middle.
    QPoint clickOn(double x, double y, double z) const
    {
        return inWidget(devicePixelOf(x, y, z, 0.0));
    }

    /// Colour of the point drawn at a scene position, give or take one pixel; black where there is
    /// none.
    QColor colorAt(double x, double y, double z) const
    {
        const QImage picture = widget.grabFramebuffer();
        const QPoint centre = devicePixelOf(x, y, z, 0.5);
        for (const QPoint offset : {QPoint(0, 0), QPoint(1, 0), QPoint(0, 1), QPoint(-1, 0),
                 QPoint(0, -1), QPoint(1, 1), QPoint(-1, -1)}) {
            const QColor color = picture.pixelColor(centre + offset);
            if (color != QColor(Qt::black))
                return color;
        }
        return Qt::black;
    }

    /// Number of pixels that are not background.
    int litPixels() const
    {
        const QImage picture = widget.grabFramebuffer();
        int lit = 0;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x)
                lit += picture.pixelColor(x, y) != QColor(Qt::black);
        }
        return lit;
    }

private:
    QPoint inWidget(const QPoint &devicePixel) const
    {
        const double ratio = widget.devicePixelRatioF();
        return {int(devicePixel.x() / ratio), int(devicePixel.y() / ratio)};
    }

    /// \param middle place inside a pixel that stands for all of it
    QPoint devicePixelOf(double x, double y, double z, double middle) const
    {
        renderer->SetWorldPoint(x, y, z, 1.0);
        renderer->WorldToDisplay();
        const double *display = renderer->GetDisplayPoint();
        const int height = VtkCompatibility::renderWindow(widget)->GetSize()[1];
        return {qRound(display[0] - middle), height - 1 - qRound(display[1] - middle)};
    }

    Olvik3DViewerWidget &widget;
    vtkRenderer *renderer;
};

/// Whether two colours differ by at most what blending and rounding may add.
inline bool isNear(const QColor &actual, const QColor &expected, int tolerance = 3)
{
    return qAbs(actual.red() - expected.red()) <= tolerance
        && qAbs(actual.green() - expected.green()) <= tolerance
        && qAbs(actual.blue() - expected.blue()) <= tolerance;
}

/// Columns x rows points whose height is the column.
inline vtkSmartPointer<vtkPolyData> rampCloud(int columns, int rows)
{
    vtkNew<vtkPoints> points;
    for (int i = 0; i < columns * rows; ++i)
        points->InsertNextPoint(i % columns, i / columns, i % columns);
    auto cloud = vtkSmartPointer<vtkPolyData>::New();
    cloud->SetPoints(points);
    return cloud;
}
