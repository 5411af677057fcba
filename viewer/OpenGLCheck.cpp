#include "OpenGLCheck.h"

#include <QOpenGLContext>
#include <QSurfaceFormat>

#include <QVTKOpenGLNativeWidget.h>

bool hasOpenGL32()
{
    QOpenGLContext context;
    context.setFormat(QVTKOpenGLNativeWidget::defaultFormat());
    return context.create() && context.format().version() >= qMakePair(3, 2);
}
