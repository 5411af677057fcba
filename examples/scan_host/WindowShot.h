#pragma once

#include <QElapsedTimer>
#include <QImage>
#include <QObject>
#include <QPointer>
#include <QTimer>
#include <QWidget>

#include <chrono>

/// Takes a picture of a window once the 3D view in it shows something and has come to rest.
///
/// A viewer converts its buffers on a thread of its own and tells nobody when one is on the screen,
/// so the view is watched until it is no longer of one colour and does not change any more.
class WindowShot : public QObject
{
    Q_OBJECT

public:
    /// \param window visible and borrowed; may be deleted at any time
    /// \param patience after which an empty or restless view is given up
    WindowShot(QWidget *window, std::chrono::milliseconds patience, QObject *parent);

    void start();

Q_SIGNALS:
    void taken(const QImage &picture);
    /// The window has gone, or its view stayed empty or restless for too long.
    void failed();

private:
    void look();

    QPointer<QWidget> window;
    QTimer timer;
    QElapsedTimer elapsed;
    qint64 longest;
    QImage previous;
};
