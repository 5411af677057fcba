#include "WindowShot.h"

#include <QOpenGLWidget>

#include <algorithm>

namespace {

constexpr int lookEvery = 500;

bool isEmpty(const QImage &image)
{
    if (image.isNull())
        return true;
    const QRgb first = image.pixel(0, 0);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixel(x, y) != first)
                return false;
        }
    }
    return true;
}

} // namespace

WindowShot::WindowShot(QWidget *shotWindow, std::chrono::milliseconds patience, QObject *parent)
    : QObject(parent)
    , window(shotWindow)
    , longest(patience.count())
{
    timer.setInterval(lookEvery);
    connect(&timer, &QTimer::timeout, this, &WindowShot::look);
}

void WindowShot::start()
{
    elapsed.start();
    timer.start();
}

void WindowShot::look()
{
    if (!window || elapsed.elapsed() > longest) {
        timer.stop();
        Q_EMIT failed();
        return;
    }

    QVector<QImage> current;
    for (QOpenGLWidget *view : window->findChildren<QOpenGLWidget *>())
        current.append(view->grabFramebuffer());
    const bool isDone = !current.isEmpty() && current == previous
        && std::none_of(current.begin(), current.end(), isEmpty);
    previous = current;
    if (!isDone)
        return;
    timer.stop();
    Q_EMIT taken(window->grab().toImage());
}
