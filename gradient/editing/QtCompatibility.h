#pragma once

#include <QMouseEvent>

/// Everything that is written differently for Qt 5 and Qt 6.
namespace QtCompatibility {

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
#else
inline QPoint position(const QMouseEvent &event)
{
    return event.localPos().toPoint();
}

inline QPoint screenPosition(const QMouseEvent &event)
{
    return event.globalPos();
}
#endif

} // namespace QtCompatibility
