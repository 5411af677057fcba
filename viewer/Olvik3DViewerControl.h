#pragma once

#include "IEvent3DViewerReceiver.h"
#include "Olvik3DViewerExport.h"

#include <QObject>
#include <QPointer>
#include <QString>

class Olvik3DViewerPrivate;
class QWidget;

/// A 3D viewer for height profiles: the one class that a host needs.
///
/// \code
/// Olvik3DViewerControl viewer("Scanner 1", nullptr, &receiver);
/// viewer.show();
/// viewer.setBuffer(heights, valuesPerProfile, profiles); // at the sensor's rate
/// \endcode
///
/// Without a parent widget the viewer opens a window of its own, with menus and a status bar, and
/// creates a QApplication where there is none. With a parent widget only the 3D view is placed into
/// that widget: in a layout of its own or at the end of the widget's, as the content of a main
/// window, dock or scroll area, or as one more pane, page or subwindow.
///
/// All members are called on the GUI thread. The host owns the control and may delete it at any
/// moment; what it built is deleted a little later, by the event loop, once the stack holds no event
/// handler, signal or dialog of it. With the QApplication the viewer ends, and a control that is left
/// does nothing.
class OLVIK3DVIEWER_EXPORT Olvik3DViewerControl : public QObject
{
    Q_OBJECT

public:
    /// \param windowName title of the viewer's window and the name given to the receiver
    /// \param parent widget to embed the 3D view in and parent of this object; null for an own
    ///        window
    /// \param receiver borrowed, may be null
    ///
    /// Ends the process with status 255 after a message box when the machine has no OpenGL 3.2 and
    /// an own window was asked for.
    Olvik3DViewerControl(QString windowName, QWidget *parent, IEvent3DViewerReceiver *receiver);
    ~Olvik3DViewerControl() override;

    /// Changes the title only: the receiver is still told the name given to the constructor.
    void setWindowName(QString name);

    bool isVisible();

Q_SIGNALS:
    /// The user clicked a point.
    /// \param xyz three doubles: column, profile and height in scene units (scaled as displayed);
    ///        valid during the emission only
    void pointPicked(double *xyz);

    /// The user Ctrl-clicked two points.
    /// \param distance straight distance between them in scene units
    void distancePicked(double distance);

public Q_SLOTS:
    /// Shows a buffer of heights. It is copied before this returns and converted on a worker
    /// thread; a buffer that arrives while the worker is busy is dropped, so the picture never lags
    /// behind. Buffers are ignored once the window was closed, null buffers always.
    ///
    /// \param buffer width * height heights, row-major, one profile per row
    /// \param width values per profile
    /// \param height number of profiles
    /// \throws std::bad_array_new_length when width * height is negative in 32-bit arithmetic
    /// \throws std::bad_alloc when there is no memory for the copy
    void setBuffer(float *buffer, int width, int height);

    /// Fixes the top of the height axis for the buffers to come; 0, the default, lets it follow the
    /// data.
    void setSensorHeight(int sensorHeight);

    void show();

    /// In embedded mode the parent widget is shown and hidden together with the view. Shown again by
    /// the host, the parent brings the view back.
    void hide();

    /// Carried with each frame and kept for hosts; the picture does not depend on it. Default 1.
    void setScale(int scale);

    /// Runs the application's event loop and returns when it ends.
    void exec();

    /// Tells the receiver that the viewer has closed. Called by the viewer itself.
    void onDeleteViewer();

private:
    IEvent3DViewerReceiver *receiver;
    QString windowName;
    // Guarded, because a parent widget may delete the private object before the control.
    QPointer<Olvik3DViewerPrivate> d;
};
