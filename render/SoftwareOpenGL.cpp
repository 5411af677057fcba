#include "SoftwareOpenGL.h"

#include <QByteArray>
#include <QOpenGLContext>
#include <QOpenGLFunctions>

#include <algorithm>

bool isDrawnInSoftware()
{
    const auto *name = reinterpret_cast<const char *>(
        QOpenGLContext::currentContext()->functions()->glGetString(GL_RENDERER));
    const QByteArray renderer = QByteArray(name).toLower();
    const auto drivers = {"llvmpipe", "softpipe", "swrast", "software", "gdi generic"};
    return std::any_of(drivers.begin(), drivers.end(),
        [&renderer](const char *driver) { return renderer.contains(driver); });
}
