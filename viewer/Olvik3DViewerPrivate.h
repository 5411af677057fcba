#pragma once

#include "ColorMode.h"
#include "Olvik3DViewerExport.h"
#include "OlvikProfileData.h"
#include "StackFrames.h"

#include <QMutex>
#include <QObject>
#include <QPointer>
#include <QString>

#include <memory>

class CloudPMainWindow;
class CloudScaleDailog;
class Embedding;
class GradientTableWidget;
class HeightBuffers;
class Olvik3DViewerWidget;
class OlvikSettings;
class ProcessData;
class QAction;
class QFrame;
class QLabel;
class QMenu;
class QThread;
class QWidget;
class WindowPlace;

/// The viewer behind Olvik3DViewerControl: window, menus, settings and the worker thread.
///
/// GUI thread only. Owned by the control, which deletes it deferred; a parent widget may delete it
/// first.
class OLVIK3DVIEWER_EXPORT Olvik3DViewerPrivate : public QObject
{
    Q_OBJECT

public:
    /// \param parent host's widget to embed the view in, also the object parent; null for an own
    /// window. Without OpenGL 3.2 an own window ends the process with status 255 after a message
    /// box.
    explicit Olvik3DViewerPrivate(QWidget *parent);
    ~Olvik3DViewerPrivate() override;

    void setWindowName(QString name);
    bool isVisible() const;
    ColorMode getColorMode() const;

    /// Submits a record again, also while the worker is busy. The caller holds the mutex.
    void setBuffer(OlvikProfileData data);

    /// Ends the worker thread once it has finished the buffer in work. Buffers are ignored from
    /// then on.
    void stopWorker();

    /// Stops the worker and keeps the settings. Touches no widget: exit() may have begun.
    void halt();

    /// Halts, takes the viewer off the screen and deletes this object, deferred and not before the
    /// stack is free of its frames and those of its widgets.
    void retire();

Q_SIGNALS:
    void pointPicked(double *xyz);
    void distancePicked(double distance);
    /// The window was closed and the worker thread is gone.
    void closed();
    void newProfileData(OlvikProfileData data, bool showZero);

public Q_SLOTS:
    void setBuffer(float *buffer, int width, int height);
    void show();
    void hide();
    void setScale(int scale);
    void setSensorHeight(int sensorHeight);
    void onColorModeChanged();
    /// Marks a colour-mode item; changes neither the mode nor the picture.
    void setMode(ColorMode mode);
    void setshowZero(bool on);
    void onPixelPicked(const double *xyz);
    void onDistance(double distance);
    /// Asks for a file and writes the last buffer into it, zeros included, as ASCII PLY.
    void save();
    void onWindowClosed();
    void onResetWindow();
    void onGradientChanged();

private:
    void buildWindow();
    void buildMenus();
    void addColorModeItems(QMenu &menu);
    void addDataItems(QMenu &menu);
    void askForAxesScale();
    void addCameraItems(QMenu &menu);
    void addAxesModeMenu(QMenu &viewMenu);
    void restoreColoring();
    void saveColoring() const;
    void buildGradientBar();
    void layOutView();
    void startWorker();
    void doWithoutWorker();
    void onAboutToQuit();
    void takeNoMoreBuffers();
    void hideWindows();
    bool isPastEventLoop() const;

    CloudPMainWindow *window = nullptr; ///< null in embedded mode
    std::unique_ptr<WindowPlace> place; ///< null in embedded mode
    QWidget *container = nullptr; ///< holds the view; in embedded mode the host's widget
    QLabel *statusLabel = nullptr;
    QPointer<Olvik3DViewerWidget> viewer;
    std::unique_ptr<Embedding> embedding; ///< null in window mode
    std::unique_ptr<HeightBuffers> heights;
    OlvikProfileData lastProfile;
    bool showZero = true;
    QThread *workerThread = nullptr;
    ProcessData *processData = nullptr; ///< null as soon as no more buffers are taken
    int colorMode = Auto;
    QAction *autoAction = nullptr;
    QAction *gradientAction = nullptr;
    GradientTableWidget *gradientTable = nullptr; ///< a window of its own; null in embedded mode
    QPointer<CloudScaleDailog> scaleDialog; ///< the last one that was opened
    QFrame *gradientBar = nullptr; ///< shown in gradient mode; null in embedded mode
    QString gradientName;
    std::shared_ptr<OlvikSettings> settings;
    QMutex mutex; ///< guards heights, lastProfile, showZero and the hand-over to the worker
    bool hasWarnedOfNullBuffer = false;
    StackFrames frames; ///< of this object and its widgets
    bool isClosing = false; ///< the window was closed
    bool hasQuit = false;
    bool isHalted = false;
};
