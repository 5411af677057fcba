#include "Olvik3DViewerPrivate.h"

#include "ActionSeparator.h"
#include "AxesFly.h"
#include "CloudPMainWindow.h"
#include "CloudScaleDailog.h"
#include "DataConverter.h"
#include "Embedding.h"
#include "GradientTableWidget.h"
#include "HeightBuffers.h"
#include "KeepAbove.h"
#include "LiveViewers.h"
#include "Olvik3DViewerWidget.h"
#include "OlvikSettings.h"
#include "OpenGLCheck.h"
#include "PlyWriter.h"
#include "ProcessData.h"
#include "QtCompatibility.h"
#include "ViewerSettingsKeys.h"
#include "WaitCursor.h"
#include "WindowPlace.h"

#include <QAction>
#include <QActionGroup>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QMutexLocker>
#include <QPushButton>
#include <QShortcut>
#include <QStandardPaths>
#include <QStatusBar>
#include <QThread>

#include <cstdlib>
#include <exception>
#include <utility>

namespace {

namespace Keys = ViewerSettingsKeys;

constexpr int newGradientMin = 0;
constexpr int newGradientMax = 1000;

/// Ends the worker thread, which fills the view, before the view goes: the host may delete it,
/// alone or by clearing a layout. QObject::destroyed would come too late.
class WatchedView : public CountedWidget<Olvik3DViewerWidget>
{
public:
    WatchedView(const StackFrames &counting, QWidget *parent, Olvik3DViewerPrivate *viewOwner)
        : CountedWidget(counting, parent)
        , owner(viewOwner)
    { }
    /// For layouts that go by what their widgets would like; the scene itself fits any size.
    QSize sizeHint() const override { return {480, 360}; }
    ~WatchedView() override
    {
        if (owner)
            owner->stopWorker();
    }
    Q_DISABLE_COPY_MOVE(WatchedView)

private:
    QPointer<Olvik3DViewerPrivate> owner;
};

void ensureApplication()
{
    if (QCoreApplication::instance())
        return;
    // QApplication keeps a reference to its argument count. It is not deleted here: other viewers
    // may use it by the time that this one goes.
    static int argc = 0;
    [[maybe_unused]] static const QApplication *kept = nullptr;
    kept = new QApplication(argc, nullptr);
}

/// Without holding the mutex: large clouds take a while. One that does not fit into memory is not
/// written; an exception in Qt's event loop would end the host.
bool writeCloud(const OlvikProfileData &profile, const QString &path)
{
    const WaitCursor wait;
    try {
        const vtkSmartPointer<vtkPolyData> cloud = DataConverter::convertToPolyData(
            profile.GetRawPtr(), profile.GetWidth(), profile.GetHeight());
        return writePly(*cloud, path);
    } catch (const std::exception &) {
        return false;
    }
}

/// The dialog has asked about the name as it was typed, which may lack the suffix that the file
/// gets.
bool mayReplaceFile(const QString &path)
{
    const QString target = plyTarget(path);
    if (path.isEmpty() || target == path || !QFileInfo::exists(target))
        return true;
    return QMessageBox::warning(nullptr, Olvik3DViewerPrivate::tr("save Cloud of Points"),
               Olvik3DViewerPrivate::tr("%1 already exists.\nDo you want to replace it?")
                   .arg(QFileInfo(target).fileName()),
               QMessageBox::Yes | QMessageBox::No, QMessageBox::No)
        == QMessageBox::Yes;
}

QAction *addCheckable(QMenu &menu, QActionGroup &group, const QString &text)
{
    auto *action = new QAction(text, &group);
    action->setCheckable(true);
    menu.addAction(action);
    return action;
}

} // namespace

Olvik3DViewerPrivate::Olvik3DViewerPrivate(QWidget *parent)
    : QObject(parent)
    , container(parent)
    , heights(std::make_unique<HeightBuffers>())
    , settings(OlvikSettings::Instance())
{
    qRegisterMetaType<OlvikProfileData>("OlvikProfileData");
    if (!parent)
        buildWindow();
    viewer = new WatchedView(frames, container, this);
    if (window) {
        buildMenus();
        restoreColoring();
    }
    layOutView();

    connect(viewer, &Olvik3DViewerWidget::pointPicked, this, &Olvik3DViewerPrivate::pointPicked);
    connect(
        viewer, &Olvik3DViewerWidget::distancePicked, this, &Olvik3DViewerPrivate::distancePicked);
    if (window) {
        connect(
            viewer, &Olvik3DViewerWidget::pointPicked, this, &Olvik3DViewerPrivate::onPixelPicked);
        connect(
            viewer, &Olvik3DViewerWidget::distancePicked, this, &Olvik3DViewerPrivate::onDistance);
    }
    connect(qApp, &QCoreApplication::aboutToQuit, this, &Olvik3DViewerPrivate::onAboutToQuit);
    startWorker();
    LiveViewers::add(this);
}

Olvik3DViewerPrivate::~Olvik3DViewerPrivate()
{
    LiveViewers::remove(this);
    halt();
    if (!window) {
        delete viewer;
        return;
    }
    delete gradientTable;
    delete window;
}

void Olvik3DViewerPrivate::saveColoring() const
{
    if (!window)
        return;
    const std::shared_ptr<OlvikSettings> store = OlvikSettings::Instance();
    store->setValue(Keys::colorMode(), colorMode);
    store->setValue(Keys::gradientName(), gradientName);
}

void Olvik3DViewerPrivate::buildWindow()
{
    ensureApplication();
    if (!hasOpenGL32()) {
        QMessageBox::critical(nullptr, tr("Bad OpenGl"),
            tr("No suitable OpenGL version was found!\nVersion 3.2 or grater is required\nPlease "
               "Upgrade the GPU drivers"));
        std::exit(-1);
    }

    window = new CountedWidget<CloudPMainWindow>(frames, nullptr);
    window->setWindowTitle(QStringLiteral("3D Viewer"));
    place = std::make_unique<WindowPlace>(*window, settings);
    place->restore();
    window->hide();
    container = new QWidget(window);
    auto *statusBar = new QStatusBar(window);
    statusLabel = new QLabel(window);
    statusBar->addWidget(statusLabel);
    window->setStatusBar(statusBar);
}

void Olvik3DViewerPrivate::buildMenus()
{
    auto *file = new CountedWidget<QMenu>(frames, tr("File"), container);
    window->menuBar()->addMenu(file);
    QAction *saveItem = file->addAction(tr("Save"));
    saveItem->setShortcut(QKeySequence::Save);
    connect(saveItem, &QAction::triggered, this, &Olvik3DViewerPrivate::save);

    auto *view = new CountedWidget<QMenu>(frames, QStringLiteral("View"), container);
    window->menuBar()->addMenu(view);
    addColorModeItems(*view);
    addDataItems(*view);
    view->addSeparator();
    addCameraItems(*view);
    view->addSeparator();
    addAxesModeMenu(*view);

    // The menus' texts are fixed, without mnemonics: the usual key opens the first of them.
    auto *key = new QShortcut(Qt::Key_F10, window);
    connect(key, &QShortcut::activated, file,
        [bar = window->menuBar(), file] { bar->setActiveAction(file->menuAction()); });
}

void Olvik3DViewerPrivate::addColorModeItems(QMenu &menu)
{
    menu.addAction(new ActionSeparator(QStringLiteral("Color Mode"), window));
    auto *group = new QActionGroup(this);
    autoAction = addCheckable(menu, *group, QStringLiteral("Auto"));
    gradientAction = addCheckable(menu, *group, QStringLiteral("Gradient"));
    menu.addSeparator();
    setMode(static_cast<ColorMode>(settings->value(Keys::checkedColorMode(), Auto).toInt()));
    connect(group, &QActionGroup::triggered, this, &Olvik3DViewerPrivate::onColorModeChanged);
}

void Olvik3DViewerPrivate::addDataItems(QMenu &menu)
{
    showZero = settings->value(Keys::showZero(), true).toBool();
    QAction *zeroItem = menu.addAction(tr("Show Zero data"));
    zeroItem->setCheckable(true);
    zeroItem->setChecked(showZero);
    connect(zeroItem, &QAction::triggered, this, &Olvik3DViewerPrivate::setshowZero);

    QAction *axesItem = menu.addAction(tr("Show Axes"));
    axesItem->setCheckable(true);
    axesItem->setChecked(true);
    connect(axesItem, &QAction::triggered, viewer, &Olvik3DViewerWidget::toggleShowAxes);
    connect(viewer, &Olvik3DViewerWidget::axesVisibilityChanged, axesItem, &QAction::setChecked);

    connect(menu.addAction(QStringLiteral("Set axes scale")), &QAction::triggered, this,
        &Olvik3DViewerPrivate::askForAxesScale);
}

void Olvik3DViewerPrivate::askForAxesScale()
{
    scaleDialog = new CloudScaleDailog(
        viewer->getScale_x(), viewer->getScale_y(), viewer->getScale_z(), nullptr);
    scaleDialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(
        scaleDialog, &CloudScaleDailog::scaleAccepted, viewer, &Olvik3DViewerWidget::setAxesScale);
    connect(this, &QObject::destroyed, scaleDialog, &QObject::deleteLater);
    scaleDialog->show();
}

void Olvik3DViewerPrivate::addCameraItems(QMenu &menu)
{
    connect(menu.addAction(tr("Reset Zoom")), &QAction::triggered, viewer,
        &Olvik3DViewerWidget::resetCamera);
    connect(menu.addAction(tr("Reset Window")), &QAction::triggered, this,
        &Olvik3DViewerPrivate::onResetWindow);
}

void Olvik3DViewerPrivate::addAxesModeMenu(QMenu &viewMenu)
{
    auto *menu = new CountedWidget<QMenu>(frames, tr("Axes Mode"), &viewMenu);
    viewMenu.addMenu(menu);
    auto *group = new QActionGroup(this);
    const auto flyMode = static_cast<AxesFly>(
        settings->value(Keys::flyMode(), static_cast<int>(AxesFly::Dynamic)).toInt());
    const std::pair<QString, AxesFly> items[] = {{tr("Fixed"), AxesFly::Fixed},
        {tr("Dynamic"), AxesFly::Dynamic}, {tr("Bounding Box"), AxesFly::BoundingBox}};
    for (const auto &[text, mode] : items) {
        QAction *item = addCheckable(*menu, *group, text);
        item->setChecked(mode == flyMode);
        connect(item, &QAction::triggered, viewer,
            [view = viewer.data(), mode = mode] { view->setAxesFly(mode); });
    }
    viewer->setAxesFly(flyMode);
}

void Olvik3DViewerPrivate::restoreColoring()
{
    colorMode =
        settings->value(Keys::colorMode(), Auto).toInt() == UserGradient ? UserGradient : Auto;
    gradientName = settings->value(Keys::gradientName(), QStringLiteral("Default")).toString();
    buildGradientBar();
    if (!gradientName.isEmpty())
        gradientTable->setGradientByName(gradientName);
    viewer->setGradient(Gradient(gradientTable->getCurrentGradient()));
    viewer->setColorMode(static_cast<ColorMode>(colorMode));
    connect(gradientTable, &GradientTableWidget::currentGradientChanged, this,
        &Olvik3DViewerPrivate::onGradientChanged);
}

void Olvik3DViewerPrivate::buildGradientBar()
{
    gradientTable = new GradientTableWidget(
        QStringLiteral("3DGradients"), newGradientMin, newGradientMax, nullptr);
    gradientTable->countIn(frames);
    gradientTable->hide();
    gradientTable->setAttribute(Qt::WA_QuitOnClose, false);
    keepAbove(*gradientTable, *window);
    QComboBox *selector = gradientTable->getSelector();
    selector->setMinimumWidth(120);
    selector->setMaximumWidth(250);

    gradientBar = new QFrame(container);
    gradientBar->setFrameStyle(QFrame::NoFrame);
    gradientBar->setStyleSheet(QStringLiteral("background-color:rgb(230,230,230);"));
    gradientBar->setFixedHeight(40);
    gradientBar->setVisible(colorMode == UserGradient);
    auto *row = new QHBoxLayout(gradientBar);
    // The height is fixed: margins that grow with the font would cut off what the bar holds.
    const QMargins margins = row->contentsMargins();
    row->setContentsMargins(margins.left(), 0, margins.right(), 0);
    row->addWidget(new QLabel(QStringLiteral("Gradient")));
    row->addWidget(selector);
    row->addWidget(gradientTable->getOpenWidget());
    row->addStretch();
}

void Olvik3DViewerPrivate::layOutView()
{
    if (!window) {
        embedding = std::make_unique<Embedding>(*container, *viewer);
        return;
    }
    auto *layout = new QGridLayout(container);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(gradientBar, 0, 0);
    layout->addWidget(viewer, 1, 0);
    viewer->resize(window->size());
    window->setCentralWidget(container);
}

void Olvik3DViewerPrivate::startWorker()
{
    processData = new ProcessData(viewer, nullptr);
    // Without a parent: the thread may be in the middle of its own destruction when it announces
    // that, and a receiver that then deletes the viewer must not delete it a second time.
    workerThread = new QThread;
    processData->moveToThread(workerThread);
    connect(this, &Olvik3DViewerPrivate::newProfileData, processData,
        &ProcessData::onNewProfileData, Qt::QueuedConnection);

    if (window) {
        connect(window, &CloudPMainWindow::windowClosed, workerThread, &QThread::quit);
        connect(
            window, &CloudPMainWindow::windowClosed, this, &Olvik3DViewerPrivate::onWindowClosed);
    }
    connect(workerThread, &QThread::finished, processData, &QObject::deleteLater);
    connect(processData, &QObject::destroyed, workerThread, &QObject::deleteLater);
    connect(workerThread, &QObject::destroyed, this, [this] {
        const StackFrames::Hold hold(frames);
        workerThread = nullptr;
        Q_EMIT closed();
    });
    workerThread->start();
    if (!workerThread->isRunning())
        doWithoutWorker();
}

/// The system starts no more threads. Nobody would take the buffers, nor tell of the closing.
void Olvik3DViewerPrivate::doWithoutWorker()
{
    qWarning("3D viewer: buffers are ignored, no thread could be started for them");
    disconnect(processData, nullptr, workerThread, nullptr);
    delete std::exchange(processData, nullptr);
    if (window)
        connect(window, &CloudPMainWindow::windowClosed, workerThread, &QObject::deleteLater);
}

void Olvik3DViewerPrivate::stopWorker()
{
    takeNoMoreBuffers();
    QThread *thread = std::exchange(workerThread, nullptr);
    if (!thread)
        return;
    thread->disconnect(this);
    thread->quit();
    // The worker never waits for this thread, so this ends with the conversion in work.
    thread->wait();
    delete thread;
}

void Olvik3DViewerPrivate::takeNoMoreBuffers()
{
    const QMutexLocker lock(&mutex);
    processData = nullptr;
}

void Olvik3DViewerPrivate::onAboutToQuit()
{
    // The application quits with its last window, before the closing chain could run in its event
    // loop.
    if (isClosing && workerThread) {
        workerThread->wait();
        delete workerThread;
    }
    hasQuit = true;
    // The host may leave the rest to exit().
    saveColoring();
}

void Olvik3DViewerPrivate::halt()
{
    stopWorker();
    // Not once more when this object goes, later: another viewer may have kept its own by then.
    if (!std::exchange(isHalted, true))
        saveColoring();
}

void Olvik3DViewerPrivate::retire()
{
    // At once: where no event loop runs any more, nothing deferred does.
    halt();
    hideWindows();
    frames.deleteAfterLast(this);
    if (isPastEventLoop())
        QCoreApplication::sendPostedEvents(this, QEvent::DeferredDelete);
}

void Olvik3DViewerPrivate::hideWindows()
{
    if (embedding)
        embedding->forgetView();
    if (viewer)
        viewer->hide();
    if (scaleDialog)
        scaleDialog->close();
    if (!window)
        return;
    window->hide();
    gradientTable->hide();
}

/// The application's event loop has ended: nothing deferred will run any more.
bool Olvik3DViewerPrivate::isPastEventLoop() const
{
    return hasQuit && QThread::currentThread()->loopLevel() == 0;
}

void Olvik3DViewerPrivate::setWindowName(QString name)
{
    if (window)
        window->setWindowTitle(name);
}

bool Olvik3DViewerPrivate::isVisible() const
{
    return window ? window->isVisible() : viewer && viewer->isVisible();
}

ColorMode Olvik3DViewerPrivate::getColorMode() const
{
    return !autoAction || autoAction->isChecked() ? Auto : UserGradient;
}

void Olvik3DViewerPrivate::setMode(ColorMode mode)
{
    QAction *item = mode == Auto ? autoAction : gradientAction;
    if (item)
        item->setChecked(true);
}

void Olvik3DViewerPrivate::onColorModeChanged()
{
    const ColorMode mode = getColorMode();
    if (mode == colorMode)
        return;
    gradientBar->setVisible(mode == UserGradient);
    colorMode = mode;
    viewer->setColorMode(mode);
}

void Olvik3DViewerPrivate::onGradientChanged()
{
    viewer->setGradient(Gradient(gradientTable->getCurrentGradient()));
    gradientName = gradientTable->getCurrentName();
}

void Olvik3DViewerPrivate::setBuffer(float *buffer, int width, int height)
{
    if (!buffer) {
        if (!std::exchange(hasWarnedOfNullBuffer, true))
            qWarning("3D viewer: null buffers are ignored");
        return;
    }
    const QMutexLocker lock(&mutex);
    if (!processData || processData->isProcessingData())
        return;
    lastProfile = heights->copyOf(buffer, width, height);
    Q_EMIT newProfileData(lastProfile, showZero);
}

void Olvik3DViewerPrivate::setBuffer(OlvikProfileData data)
{
    Q_EMIT newProfileData(std::move(data), showZero);
}

void Olvik3DViewerPrivate::setshowZero(bool on)
{
    const QMutexLocker lock(&mutex);
    showZero = on;
    settings->setValue(Keys::showZero(), on);
    if (lastProfile.GetRawPtr())
        setBuffer(lastProfile);
}

void Olvik3DViewerPrivate::show()
{
    const StackFrames::Hold hold(frames);
    if (window) {
        place->prepareShow();
        window->show();
        window->raise();
        QtCompatibility::activate(*window);
    }
    container->show();
    if (viewer)
        viewer->show();
}

void Olvik3DViewerPrivate::hide()
{
    const StackFrames::Hold hold(frames);
    if (window) {
        window->hide();
        gradientTable->hide();
    } else {
        embedding->returnWithHost();
    }
    container->hide();
    if (viewer)
        viewer->hide();
}

void Olvik3DViewerPrivate::setScale(int scale)
{
    if (viewer)
        viewer->setScale(scale);
}

void Olvik3DViewerPrivate::setSensorHeight(int sensorHeight)
{
    if (viewer)
        viewer->setSensorHeight(sensorHeight);
}

void Olvik3DViewerPrivate::onPixelPicked(const double *xyz)
{
    statusLabel->setText(
        QStringLiteral("Point picked X: %1 Y: %2 Z: %3").arg(xyz[0]).arg(xyz[1]).arg(xyz[2]));
}

void Olvik3DViewerPrivate::onDistance(double distance)
{
    statusLabel->setText(QStringLiteral("Distance %1").arg(distance));
}

void Olvik3DViewerPrivate::save()
{
    const StackFrames::Hold hold(frames);
    OlvikProfileData profile;
    {
        const QMutexLocker lock(&mutex);
        profile = lastProfile;
    }
    const QString folder =
        QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation) + "/Output";
    // The dialog takes the last part of a missing folder for the name of the file.
    QDir().mkpath(folder);
    const QUrl url = QFileDialog::getSaveFileUrl(nullptr, tr("save Cloud of Points"),
        QUrl::fromLocalFile(folder), tr("Cloud of Points (*.ply)"));
    const QString path = url.toLocalFile();
    if (!mayReplaceFile(path) || writeCloud(profile, path))
        return;
    QMessageBox::critical(nullptr, tr("Error Saving File"),
        QStringLiteral("Unable to save file %1 , please check folder permisions").arg(path));
}

void Olvik3DViewerPrivate::onWindowClosed()
{
    // The worker goes on its own from here; see startWorker.
    takeNoMoreBuffers();
    isClosing = true;
    // Open, it would keep the application from ending with its last window.
    gradientTable->hide();
    place->save();
    settings->setValue(Keys::flyMode(), static_cast<int>(viewer->getAxesFly()));
}

void Olvik3DViewerPrivate::onResetWindow()
{
    place->reset();
}
