#pragma once

#include <QElapsedTimer>
#include <QImage>
#include <QObject>
#include <QPointer>
#include <QTimer>
#include <QVector>
#include <QWidget>

#include <chrono>

/// Takes a picture of a window once all 3D views in it show something and have come to rest.
///
/// A viewer converts its buffers on a thread of its own and tells nobody when one is on the screen,
/// so the views are watched until none is of one colour or changes any more.
class WindowShot : public QObject
{
    Q_OBJECT

public:
    /// \param window visible and borrowed; may be deleted at any time
    /// \param patience after which empty or restless views are given up
    WindowShot(QWidget *window, std::chrono::milliseconds patience, QObject *parent);

    void start();

Q_SIGNALS:
    void taken(const QImage &picture);
    /// The window has gone, or a view stayed empty or restless for too long.
    void failed();

private:
    void look();

    QPointer<QWidget> window;
    QTimer timer;
    QElapsedTimer elapsed;
    qint64 longest;
    QVector<QImage> previous;
};
