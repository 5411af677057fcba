#include "WindowPlace.h"

#include "OlvikSettings.h"
#include "QtCompatibility.h"
#include "ViewerSettingsKeys.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

#include <limits>
#include <utility>

namespace {

namespace Keys = ViewerSettingsKeys;

constexpr QSize defaultSize{640, 360};
/// Of a window, so much stays on the screen to take hold of.
constexpr int grip = 40;

/// In 64 bits: a damaged file's position may be anywhere.
qint64 distance(const QPoint &a, const QPoint &b)
{
    return qAbs(qint64(a.x()) - b.x()) + qAbs(qint64(a.y()) - b.y());
}

QPoint reachablePosition(const QPoint &position, int width, const QRect &screen)
{
    // A window without a size becomes larger once it is shown; its corner counts.
    const QPoint first = screen.topLeft() - QPoint(qMax(0, width - grip), 0);
    const QPoint last = screen.bottomRight() - QPoint(grip, grip);
    return {qBound(first.x(), position.x(), last.x()), qBound(first.y(), position.y(), last.y())};
}

} // namespace

QRect reachablePlace(const QPoint &position, const QSize &size, const QVector<QRect> &screens)
{
    QRect desktop;
    for (const QRect &screen : screens)
        desktop |= screen;
    // A damaged file's size would take all memory, or overflow where it is negative.
    const QSize bounded = size.boundedTo(desktop.size()).expandedTo(QSize());
    QPoint nearest;
    qint64 shortest = std::numeric_limits<qint64>::max();
    for (const QRect &screen : screens) {
        const QPoint candidate = reachablePosition(position, bounded.width(), screen);
        if (distance(candidate, position) >= shortest)
            continue;
        nearest = candidate;
        shortest = distance(candidate, position);
    }
    return {nearest, bounded};
}

WindowPlace::WindowPlace(QWidget &placed, std::shared_ptr<OlvikSettings> store)
    : window(placed)
    , settings(std::move(store))
{ }

void WindowPlace::restore()
{
    window.resize(defaultSize);
    if (!settings->contains(Keys::position()))
        return;
    QVector<QRect> screens;
    for (const QScreen *screen : QGuiApplication::screens())
        screens += screen->geometry();
    const QRect place = reachablePlace(settings->value(Keys::position()).toPoint(),
        settings->value(Keys::size()).toSize(), screens);
    window.resize(place.size());
    window.move(place.topLeft());
    opensMaximized = settings->value(Keys::maximized()).toBool();
}

void WindowPlace::prepareShow()
{
    if (!std::exchange(opensMaximized, false))
        return;
    unframed = window.geometry();
    window.setWindowState(window.windowState() | Qt::WindowMaximized);
}

void WindowPlace::save()
{
    const QRect place = window.normalGeometry();
    const QPoint frame = place == unframed ? QPoint() : window.geometry().topLeft() - window.pos();
    // On Wayland nobody knows where a window is: the last that was known stays, for a session on X11.
    // Without one the size would not come back.
    if (!QtCompatibility::isOnWayland() || !settings->contains(Keys::position()))
        settings->setValue(Keys::position(), place.topLeft() - frame);
    settings->setValue(Keys::size(), place.size());
    if (opensMaximized || window.isMaximized())
        settings->setValue(Keys::maximized(), true);
    else
        settings->remove(Keys::maximized());
}

void WindowPlace::reset()
{
    opensMaximized = false;
    window.setWindowState(window.windowState() & ~Qt::WindowMaximized);
    window.resize(defaultSize);
    const QRect screen = QGuiApplication::primaryScreen()->geometry();
    const QRect frame = window.geometry();
    window.move((screen.right() - screen.left()) / 2 - (frame.right() - frame.left()) / 2,
        (screen.bottom() - screen.top()) / 2 - (frame.bottom() - frame.top()) / 2);
    settings->remove(Keys::position());
    settings->remove(Keys::size());
    settings->remove(Keys::maximized());
}
