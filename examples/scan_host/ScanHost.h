#pragma once

#include "CommandLine.h"
#include "ConsoleReceiver.h"
#include "Feeder.h"

#include <QObject>
#include <QPointer>

#include <memory>

class FrameSource;
class HostWindow;
class Olvik3DViewerControl;
class QIODevice;
class QSaveFile;
class QWidget;
class ViewSetup;

/// One viewer, fed and listened to until it is closed, the frames are over or its picture is taken;
/// then the application ends.
class ScanHost : public QObject
{
    Q_OBJECT

public:
    /// \param events where the viewer's events are printed; borrowed
    ScanHost(const Options &options, std::unique_ptr<FrameSource> source, QIODevice &events);
    ~ScanHost() override;

    /// \param file opened file to write one picture to; borrowed
    void setPicture(QSaveFile *file) { picture = file; }

    void start();

private:
    void createViewer();
    void showFrame(HeightMap &frame, int count);
    void finish();
    void takePicture();
    void savePicture(const QImage &image);
    void fail(const QString &reason, int status);
    QWidget *viewerWindow() const;

    const Options options;
    const QString name;
    QSaveFile *picture = nullptr;
    int exitStatus = 0;
    ConsoleReceiver receiver;
    Feeder feeder;
    std::unique_ptr<HostWindow> hostWindow;
    std::unique_ptr<Olvik3DViewerControl> viewer;
    QPointer<ViewSetup> viewSetup; ///< goes with the view
};
