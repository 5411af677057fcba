#include "ScanHost.h"

#include "FrameSource.h"
#include "HostWindow.h"
#include "Olvik3DViewerControl.h"
#include "Report.h"
#include "ViewSetup.h"
#include "WindowShot.h"

#include <Olvik3DViewerWidget.h>

#include <QApplication>
#include <QFileInfo>
#include <QImage>
#include <QSaveFile>

#include <algorithm>

namespace {

int framesToFeed(const Options &options)
{
    if (options.frames > 0)
        return options.frames;
    const bool isStill = !options.file.isEmpty() || !options.screenshot.isEmpty()
        || !options.view.cloudFile.isEmpty();
    return isStill ? 1 : 0;
}

} // namespace

ScanHost::ScanHost(
    const Options &hostOptions, std::unique_ptr<FrameSource> source, QIODevice &events)
    : options(hostOptions)
    , name(hostOptions.file.isEmpty() ? tr("Simulated line scanner")
                                      : QFileInfo(hostOptions.file).fileName())
    , receiver(events)
    , feeder(std::move(source), hostOptions.rate, framesToFeed(hostOptions))
{
    createViewer();
    connect(&feeder, &Feeder::frameReady, this, &ScanHost::showFrame);
    connect(&feeder, &Feeder::finished, this, &ScanHost::finish);
    // The viewer stores its settings when the event loop deletes what is behind the control, and
    // the last chance for that is when the loop ends.
    connect(qApp, &QCoreApplication::aboutToQuit, this, [this] { viewer.reset(); });
}

ScanHost::~ScanHost() = default;

void ScanHost::createViewer()
{
    if (options.embed)
        hostWindow = std::make_unique<HostWindow>(name);
    else
        QApplication::setQuitOnLastWindowClosed(false); // the receiver hears of the closing later

    QWidget *parent = hostWindow ? hostWindow->viewerPlace() : nullptr;
    viewer = std::make_unique<Olvik3DViewerControl>(name, parent, &receiver);
    connect(
        viewer.get(), &Olvik3DViewerControl::pointPicked, &receiver, &ConsoleReceiver::printPoint);
    connect(viewer.get(), &Olvik3DViewerControl::distancePicked, &receiver,
        &ConsoleReceiver::printDistance);
    connect(&receiver, &ConsoleReceiver::closed, qApp, &QCoreApplication::quit);
}

void ScanHost::start()
{
    if (hostWindow)
        hostWindow->show();
    viewer->show();
    viewSetup = new ViewSetup(viewerWindow()->findChild<Olvik3DViewerWidget *>(), options.view);
    connect(viewSetup, &ViewSetup::frameIsInvisible, this, [this] {
        reportError(
            tr("%1: none of its heights can be shown: are they all zero, the same or no numbers?")
                .arg(name));
    });
    connect(viewSetup, &ViewSetup::cloudIsInvisible, this, [this] {
        fail(tr("%1: none of its points can be shown").arg(options.view.cloudFile), NothingShown);
    });
    feeder.start();
}

void ScanHost::showFrame(HeightMap &frame, int count)
{
    if (count == 1)
        viewSetup->useRangeOf(frame);
    viewer->setBuffer(frame.heights.data(), frame.width, frame.height);
    if (hostWindow)
        hostWindow->showBufferCount(count);
}

void ScanHost::finish()
{
    if (picture)
        takePicture();
    else if (options.frames > 0)
        QCoreApplication::exit(exitStatus);
}

void ScanHost::takePicture()
{
    auto *shot = new WindowShot(viewerWindow(), std::chrono::seconds(20), this);
    connect(shot, &WindowShot::taken, this, &ScanHost::savePicture);
    connect(shot, &WindowShot::failed, this, [this] {
        fail(tr("the viewer shows nothing that could be written to a picture"), NothingShown);
    });
    shot->start();
}

void ScanHost::savePicture(const QImage &image)
{
    if (!image.save(picture, "PNG") || !picture->commit()) {
        fail(tr("%1: %2").arg(options.screenshot, picture->errorString()), WrongInput);
        return;
    }
    QCoreApplication::exit(exitStatus);
}

void ScanHost::fail(const QString &reason, int status)
{
    reportError(reason);
    exitStatus = status;
    QCoreApplication::exit(exitStatus);
}

// The control does not hand out its window.
QWidget *ScanHost::viewerWindow() const
{
    if (hostWindow)
        return hostWindow.get();
    const QWidgetList windows = QApplication::topLevelWidgets();
    const auto found = std::find_if(windows.begin(), windows.end(), [this](const QWidget *window) {
        return window->isVisible() && window->windowTitle() == name;
    });
    return found == windows.end() ? nullptr : *found;
}
