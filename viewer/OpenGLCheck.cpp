#include "OpenGLCheck.h"

#include "VtkCompatibility.h"

#include <QOpenGLContext>
#include <QSurfaceFormat>

bool hasOpenGL32()
{
    QOpenGLContext context;
    context.setFormat(VtkCompatibility::surfaceFormat());
    return context.create() && context.format().version() >= qMakePair(3, 2);
}
