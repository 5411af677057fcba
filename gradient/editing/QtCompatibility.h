#pragma once

#include <QGuiApplication>
#include <QMouseEvent>
#include <QWidget>

/// Everything that is written differently for Qt 5 and Qt 6, or for Qt's platforms.
namespace QtCompatibility {

inline bool isOnWayland()
{
    return QGuiApplication::platformName().startsWith(QLatin1String("wayland"));
}

#if QT_VERSION_MAJOR >= 6
/// In the widget's own pixels.
inline QPoint position(const QMouseEvent &event)
{
    return event.position().toPoint();
}

inline QPoint screenPosition(const QMouseEvent &event)
{
    return event.globalPosition().toPoint();
}

/// Asks for the keyboard.
inline void activate(QWidget &window)
{
    window.activateWindow();
}
#else
inline QPoint position(const QMouseEvent &event)
{
    return event.localPos().toPoint();
}

inline QPoint screenPosition(const QMouseEvent &event)
{
    return event.globalPos();
}

/// On Wayland programs cannot ask for it, of which the platform's plugin complains on the console.
inline void activate(QWidget &window)
{
    if (!isOnWayland())
        window.activateWindow();
}
#endif

} // namespace QtCompatibility
