#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>
#include <QVector>

#include <memory>

class OlvikSettings;
class QWidget;

/// The place of a window of this size that was stored at this position: the same while enough of it
/// is on one of the screens to take hold of it, else the nearest such place. No larger than all
/// screens together.
QRect reachablePlace(const QPoint &position, const QSize &size, const QVector<QRect> &screens);

/// The place of the viewer's window, kept from one start to the next. GUI thread only; the window
/// outlives it.
class WindowPlace
{
public:
    WindowPlace(QWidget &placed, std::shared_ptr<OlvikSettings> store);

    /// Where and as large as stored; the default size at the system's choice without that.
    void restore();
    /// Maximises what was closed maximised, before the first show() and not earlier: until then the
    /// window has the place that it will return to.
    void prepareShow();
    /// Of a maximised window the place that it would return to, which is of use without the state,
    /// too.
    void save();
    /// To the default size, in the middle of the screen; forgets what was stored.
    void reset();

private:
    QWidget &window;
    std::shared_ptr<OlvikSettings> settings;
    bool opensMaximized = false;
    QRect unframed; ///< what Qt takes for the normal geometry of a window that opened maximised
};
