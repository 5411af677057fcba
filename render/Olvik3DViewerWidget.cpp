#include "Olvik3DViewerWidget.h"

#include "AxesLayout.h"
#include "AxisExtents.h"
#include "BusyFlag.h"
#include "CloudActor.h"
#include "CloudMapper.h"
#include "CloudPicker.h"
#include "CloudPoints.h"
#include "ColorLookup.h"
#include "DataConverter.h"
#include "DistanceMarker.h"
#include "HeightShader.h"
#include "IndividualBound.h"
#include "MouseInteractorStylePP.h"
#include "PlyReader.h"
#include "Refinement.h"
#include "ReleaseWatch.h"
#include "ScanPreparer.h"
#include "SceneWindow.h"
#include "VtkCompatibility.h"
#include "vtkShaderCallback.h"
#include "WaitCursor.h"

#include <QFileDialog>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMessageBox>
#include <QMutexLocker>
#include <QOpenGLContext>
#include <QPainter>
#include <QPointer>
#include <QResizeEvent>
#include <QStandardPaths>
#include <QSurfaceFormat>
#include <QThread>
#include <QWindow>

#include <QVTKInteractor.h>
#include <vtkCubeAxesActor.h>
#include <vtkOpenGLCamera.h>
#include <vtkOpenGLRenderer.h>
#include <vtkPointData.h>
#include <vtkProperty.h>
#include <vtkTextProperty.h>

#include <cmath>
#include <exception>
#include <utility>

namespace {

constexpr double viewAngle = 30.0; ///< in degrees: VTK's own
constexpr double framingZoom = 0.8;

bool isFlat(const Scan &scan)
{
    return scan.bounds[5] - scan.bounds[4] == 0.0;
}

/// For what the event loop calls, which takes no exception.
template <class Work> void dropPictureOnFailure(const Work &work)
{
    try {
        work();
    } catch (const std::exception &error) {
        qWarning("3D viewer: a picture was dropped: %s", error.what());
    }
}

} // namespace

Olvik3DViewerWidget::Olvik3DViewerWidget(QWidget *parent)
    : QVTKOpenGLNativeWidget(parent)
    , preparer(std::make_unique<ScanPreparer>())
    , distanceMarker(std::make_unique<DistanceMarker>())
{
    qRegisterMetaType<RenderData>("RenderData");
    // For widgets to come; this one took the host's default when its base was built.
    QSurfaceFormat::setDefaultFormat(VtkCompatibility::surfaceFormat());
    setFormat(VtkCompatibility::surfaceFormat());

    state.colors = std::make_shared<const ColorLookup>(Gradient(0).colorTable());
    state.lastData.polyData = emptyCloud;
    connect(this, &Olvik3DViewerWidget::mRender, this, &Olvik3DViewerWidget::onRender,
        Qt::QueuedConnection);

    // It starts with any press of a mouse button, for nothing that the view does, and Qt complains when
    // the view is deleted before it ends.
    ungrabGesture(Qt::TapAndHoldGesture);

    hide();
    buildScene();
    buildInteraction();
}

Olvik3DViewerWidget::~Olvik3DViewerWidget()
{
    releaseAxisLabels(*cubeAxes);
    removeHeightShader();
    refinement.reset();
    renderer->RemoveObservers(vtkCommand::StartEvent);
    // VTK counts the style, so it must be neither deleted as a child of this object nor told of
    // events while this object goes.
    interactorStyle->setParent(nullptr);
    VtkCompatibility::interactor(*this)->SetInteractorStyle(nullptr);
    makeCurrent();
    sceneWindow->ReleaseGraphicsResources(sceneWindow);
}

void Olvik3DViewerWidget::buildScene()
{
    VtkCompatibility::setRenderWindow(*this, sceneWindow);
    sceneWindow->AddRenderer(renderer);
    sceneWindow->SetMultiSamples(0);

    setmapper();
    ensureFloatPoints(*emptyCloud);
    mapper->SetInputData(emptyCloud);
    actor->SetMapper(mapper);
    actor->GetProperty()->BackfaceCullingOn();
    cubeAxes->SetCamera(camera);
    cubeAxes->SetVisibility(0);
    cubeAxes->PickableOff();
    titleAxes();
    // The labels of the pixels and profiles are whole numbers, not multiples of a power of ten.
    cubeAxes->SetLabelScaling(false, 0, 0, 0);
    renderer->AddObserver(vtkCommand::StartEvent, this, &Olvik3DViewerWidget::onStartOfDrawing);

    renderer->SetBackground(0.0, 0.0, 0.0);
    renderer->SetActiveCamera(camera);
    camera->SetFocalPoint(0.0, 0.0, 0.0);
    camera->Zoom(framingZoom);

    refinement = std::make_unique<Refinement>(*sceneWindow, *renderer, *actor);
    renderer->AddActor(actor);
    renderer->AddActor(cubeAxes);
    renderer->ResetCamera();
    distanceMarker->addTo(*renderer);
}

void Olvik3DViewerWidget::titleAxes()
{
    // The scene's y axis runs along the profiles and its z axis is the height, which operators know
    // as Y.
    cubeAxes->SetXTitle("X");
    cubeAxes->SetXUnits("pixels");
    cubeAxes->SetYTitle("z");
    cubeAxes->SetYUnits("profiles");
    cubeAxes->SetZTitle("Y");
    cubeAxes->SetZUnits("pixels");
    // VTK 9.6 scales the texts by it: 12 stands for the size that is asked for.
    constexpr int neutralFontSize = 12;
    for (int axis = 0; axis < 3; ++axis) {
        cubeAxes->GetTitleTextProperty(axis)->SetFontSize(neutralFontSize);
        cubeAxes->GetLabelTextProperty(axis)->SetFontSize(neutralFontSize);
    }
}

void Olvik3DViewerWidget::onStartOfDrawing()
{
    // As large on screens of any density, or dense ones would show the gaps between points.
    actor->GetProperty()->SetPointSize(static_cast<float>(devicePixelRatioF()));
    layOutAxes(*cubeAxes, *renderer, devicePixelRatioF());
}

void Olvik3DViewerWidget::buildInteraction()
{
    constexpr double framesPerSecond = 20.0;
    interactorStyle.TakeReference(new MouseInteractorStylePP(this));
    connect(interactorStyle, &MouseInteractorStylePP::pixelPicked, this,
        &Olvik3DViewerWidget::onPixelPicked);

    QVTKInteractor *interactor = VtkCompatibility::interactor(*this);
    interactor->SetDesiredUpdateRate(framesPerSecond);
    interactor->SetPicker(pointPicker);
    interactor->SetRenderWindow(sceneWindow);
    interactor->SetInteractorStyle(interactorStyle);
    releaseWatch = std::make_unique<ReleaseWatch>(*this, *interactorStyle);
}

void Olvik3DViewerWidget::setmapper()
{
    removeHeightShader();
    // Without shift and scale the shader sees the cloud's real coordinates.
    mapper->SetVBOShiftScaleMethod(0);
    if (!installHeightShader({*actor, cloudMappers()}))
        return;

    shaderCallback.TakeReference(vtkShaderCallback::New());
    shaderCallback->data = shown;
    for (vtkMapper *each : cloudMappers())
        each->AddObserver(vtkCommand::UpdateShaderEvent, shaderCallback);
}

std::array<vtkMapper *, 2> Olvik3DViewerWidget::cloudMappers() const
{
    return {mapper, &actor->coarseMapper()};
}

void Olvik3DViewerWidget::removeHeightShader()
{
    if (!shaderCallback)
        return;
    VtkCompatibility::Shaders(*actor, cloudMappers()).restore();
    for (vtkMapper *each : cloudMappers())
        each->RemoveObserver(shaderCallback);
    shaderCallback = nullptr;
}

void Olvik3DViewerWidget::onRenderNoCamera()
{
    const QMutexLocker lock(&renderMutex);
    mapper->Update();
    sceneWindow->Render();
}

void Olvik3DViewerWidget::show()
{
    QWidget::show();
}

void Olvik3DViewerWidget::hide()
{
    QWidget::hide();
}

Olvik3DViewerWidget::State Olvik3DViewerWidget::sharedState() const
{
    const QMutexLocker lock(&stateMutex);
    return state;
}

template <class T> T Olvik3DViewerWidget::read(T State::*member) const
{
    const QMutexLocker lock(&stateMutex);
    return state.*member;
}

int Olvik3DViewerWidget::getScale() const
{
    return read(&State::scale);
}

float Olvik3DViewerWidget::getScale_x() const
{
    return read(&State::scaleX);
}

float Olvik3DViewerWidget::getScale_y() const
{
    return read(&State::scaleY);
}

float Olvik3DViewerWidget::getScale_z() const
{
    return read(&State::scaleZ);
}

ColorMode Olvik3DViewerWidget::getColorMode() const
{
    return read(&State::colorMode);
}

AxesFly Olvik3DViewerWidget::getAxesFly() const
{
    return axesFly;
}

bool Olvik3DViewerWidget::getAxisVisibility() const
{
    return cubeAxes->GetVisibility() != 0;
}

void Olvik3DViewerWidget::loadPolyData(vtkSmartPointer<vtkPolyData> polyData,
    std::array<double, 6> boundsAll, std::array<double, 2> boundsNoZero)
{
    if (!polyData)
        return;
    Scan scan;
    scan.cloud = polyData;
    scan.bounds = boundsAll;
    scan.heightRange = boundsNoZero;
    loadScan(scan);
}

void Olvik3DViewerWidget::loadScan(const Scan &scan)
{
    if (busy.exchange(true))
        return;

    BusyFlag guard(busy);
    // Any other thread leaves this to onRender: the actor is in the scene.
    if (QThread::currentThread() == thread())
        actor->SetOrientation(0.0, 0.0, 0.0);
    submit(scan);
    // A request that a host blocks never comes to the end that clears the flag.
    if (!signalsBlocked())
        guard.handOver();
}

void Olvik3DViewerWidget::submit(const Scan &scan)
{
    // What the frame works with, whatever the GUI thread changes meanwhile.
    State current = sharedState();
    current.extents = nextExtents(current, scan);
    if (isFlat(scan)) {
        submitFlat(current.extents);
        return;
    }

    const ScanPreparer::Result prepared = preparer->prepare(scan, current.sceneScale());
    RenderData request = renderRequest(current);
    request.scan = prepared.drawn;
    request.unscaled = prepared.unscaled;
    if (current.colorMode == UserGradient)
        color(request, current.colors);
    request.polyData = scan.isHandedOver ? prepared.drawn->cloud : finished(scan.cloud, request);
    store(request, current.extents);
    Q_EMIT mRender(request);
}

/// Clears the screen, but for the axes.
void Olvik3DViewerWidget::submitFlat(const Extents &extents)
{
    RenderData last;
    {
        const QMutexLocker lock(&stateMutex);
        state.extents = extents;
        last = state.lastData;
    }
    Q_EMIT mRender(last);
}

/// The caller's cloud as the drawn one looks, which stays this widget's alone.
vtkSmartPointer<vtkPolyData> Olvik3DViewerWidget::finished(
    const vtkSmartPointer<vtkPolyData> &cloud, const RenderData &request)
{
    scalePoints(*cloud, request.factors);
    if (request.coloredBy)
        cloud->GetPointData()->SetScalars(request.scan->cloud->GetPointData()->GetScalars());
    return cloud;
}

void Olvik3DViewerWidget::store(const RenderData &request, const Extents &extents)
{
    const QMutexLocker lock(&stateMutex);
    state.extents = extents;
    state.scan = request.unscaled;
    state.lastData = request;
    state.lastData.polyData = emptyCloud;
    state.lastData.scan = state.lastData.unscaled = nullptr;
}

Olvik3DViewerWidget::Extents Olvik3DViewerWidget::nextExtents(
    const State &current, const Scan &scan)
{
    Extents next{scan.bounds, scan.heightRange, current.extents.axisBounds};
    if (!isFlat(scan))
        next.axisBounds = nextAxisExtents(next.axisBounds, scan.bounds, current.sensorHeight);
    return next;
}

void Olvik3DViewerWidget::color(
    RenderData &request, const std::shared_ptr<const ColorLookup> &colors) const
{
    preparer->color(*request.scan, *request.unscaled, *colors);
    request.coloredBy = colors;
}

Olvik3DViewerWidget::RenderData Olvik3DViewerWidget::renderRequest(const State &current) const
{
    const auto &[boundsAll, boundsNoZero, box] = current.extents;
    const std::array<float, 3> factors = current.sceneScale();

    RenderData request;
    request.factors = factors;
    request.bounds[1] = factors[0] * box[1];
    request.bounds[3] = factors[1] * box[3];
    request.bounds[4] = factors[2] * box[4];
    request.bounds[5] = factors[2] * box[5];
    request.xRange[1] = box[1];
    request.yRange[1] = box[3];
    request.zRange[0] = box[4];
    request.zRange[1] = box[5];
    request.scaleFactor = static_cast<float>(1.0 / (boundsAll[5] - boundsAll[4]));
    request.min = static_cast<float>(boundsNoZero[0]);
    request.max = static_cast<float>(boundsNoZero[1]);
    request.scale = static_cast<float>(current.scale);
    return request;
}

void Olvik3DViewerWidget::onRender(RenderData request)
{
    dropPictureOnFailure([&] { draw(request); });
    // The scale changed while the cloud was on its way.
    if (request.scan && request.factors != sharedState().sceneScale())
        showStoredCloud();
}

void Olvik3DViewerWidget::draw(RenderData &request)
{
    busy = true;
    const BusyFlag guard(busy);

    actor->SetOrientation(0.0, 0.0, 0.0);
    colorByCurrentGradient(request);
    shown = request;
    if (shaderCallback)
        shaderCallback->data = request;
    if (request.polyData)
        showCloud(request);
    showAxesOf(request);
    mapper->Update();
    if (resetCameraPending)
        frameCloud();
    // A scanner that starts before the part arrives sends frames without a single point.
    resetCameraPending = resetCameraPending && mapper->GetInput()->GetNumberOfPoints() == 0;
    // The view stays, but nothing of a higher or deeper cloud is cut off.
    renderer->ResetCameraClippingRange();
    if (sceneWindow->renderOnScreen(*this))
        refinement->onNewCloud();
    else
        refinement->stop();
}

/// A cloud that set out before the mode or the gradient changed: drawn as it is, it would flash
/// white or bring the old colours back, because the re-render for the change met a busy widget.
void Olvik3DViewerWidget::colorByCurrentGradient(RenderData &request) const
{
    const State current = sharedState();
    const bool isOutdated =
        current.colorMode == UserGradient && request.coloredBy != current.colors;
    if (isOutdated && request.unscaled)
        color(request, current.colors);
}

void Olvik3DViewerWidget::showCloud(const RenderData &request)
{
    if (request.scan) {
        actor->show(*request.scan, *mapper);
    } else {
        Scan unknown;
        unknown.cloud = request.polyData;
        unknown.box = finiteBounds(*request.polyData);
        actor->show(unknown, *mapper);
    }
}

void Olvik3DViewerWidget::showAxesOf(const RenderData &request)
{
    // An axis of infinite length would take the whole scene out of view.
    if (isFinite(request.bounds)) {
        const auto &box = request.bounds;
        cubeAxes->SetBounds(box[0], box[1], box[2], box[3], box[4], box[5]);
        cubeAxes->SetXAxisRange(request.xRange[0], request.xRange[1]);
        cubeAxes->SetYAxisRange(request.yRange[0], request.yRange[1]);
        cubeAxes->SetZAxisRange(request.zRange[0], request.zRange[1]);
    }
    cubeAxes->SetVisibility(axesVisible);
}

void Olvik3DViewerWidget::resetCamera()
{
    frameCloud();
    onRenderNoCamera();
}

void Olvik3DViewerWidget::frameCloud()
{
    actor->SetPosition(0.0, 0.0, 0.0);
    camera->SetFocalPoint(0.0, 0.0, 0.0);
    // Zoom widens the view angle each time, which VTK resets only when there is something to see.
    camera->SetViewAngle(viewAngle);
    renderer->ResetCamera();
    camera->Zoom(framingZoom);
}

void Olvik3DViewerWidget::showStoredCloud()
{
    const State current = sharedState();
    if (!current.scan || current.scan->cloud->GetNumberOfPoints() == 0)
        return;
    Scan again = *current.scan;
    again.bounds = current.extents.boundsAll;
    again.heightRange = current.extents.boundsNoZero;
    dropPictureOnFailure([&] { loadScan(again); });
}

void Olvik3DViewerWidget::setColorMode(const ColorMode &colorMode)
{
    {
        const QMutexLocker lock(&stateMutex);
        if (colorMode == state.colorMode)
            return;
        state.colorMode = colorMode;
    }
    if (colorMode == Auto)
        setmapper();
    else
        removeHeightShader();
    showStoredCloud();
}

void Olvik3DViewerWidget::setGradient(const Gradient &currentGradient)
{
    auto colors = std::make_shared<const ColorLookup>(currentGradient.colorTable());
    {
        const QMutexLocker lock(&stateMutex);
        state.colors = std::move(colors);
    }
    showStoredCloud();
}

void Olvik3DViewerWidget::load()
{
    // The host may delete the view while it is asked for a file.
    const QPointer<Olvik3DViewerWidget> self(this);
    const QUrl documents =
        QUrl::fromLocalFile(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation));
    const QUrl file = QFileDialog::getOpenFileUrl(
        nullptr, tr("Load Cloud of Points"), documents, tr("Cloud of Points (*.ply)"));

    QMessageBox question;
    question.setWindowTitle(tr("Load Cloud of Points"));
    question.setText(QStringLiteral("Would you like to swap Z and Y axis?"));
    question.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
    question.setDefaultButton(QMessageBox::No);
    const bool swap = question.exec() == QMessageBox::Yes;
    if (self)
        load(file.toLocalFile(), swap);
}

void Olvik3DViewerWidget::load(QString path, bool swap)
{
    const WaitCursor wait;
    actor->SetOrientation(0.0, 0.0, 0.0);
    Scan scan;
    scan.cloud = readPly(path);
    scan.isHandedOver = true;
    if (swap)
        DataConverter::swapzy(scan.cloud);
    setInvertedaxis(swap);
    const Extents extents = read(&State::extents);
    scan.bounds = extents.boundsAll;
    scan.heightRange = extents.boundsNoZero;
    dropPictureOnFailure([&] { loadScan(scan); });
}

void Olvik3DViewerWidget::setInvertedaxis(bool inverted)
{
    if (inverted == invertedAxis)
        return;
    invertedAxis = inverted;
    actor->RotateX(inverted ? 90.0 : -90.0);
    cubeAxes->SetYTitle(inverted ? "Z" : "Y");
    cubeAxes->SetYUnits(inverted ? "pixels" : "profiles");
    cubeAxes->SetZTitle(inverted ? "Y" : "Z");
    cubeAxes->SetZUnits(inverted ? "profiles" : "pixels");
}

void Olvik3DViewerWidget::showAxes(bool show)
{
    if (show == axesVisible)
        return;
    // The host may delete the view in answer.
    const QPointer<Olvik3DViewerWidget> self(this);
    axesVisible = show;
    cubeAxes->SetVisibility(show);
    Q_EMIT axesVisibilityChanged(getAxisVisibility());
    if (self)
        sceneWindow->Render();
}

void Olvik3DViewerWidget::toggleShowAxes()
{
    showAxes(!axesVisible);
}

void Olvik3DViewerWidget::setAxesFly(AxesFly flymode)
{
    switch (flymode) {
    case AxesFly::Dynamic:
        cubeAxes->SetFlyModeToOuterEdges();
        break;
    case AxesFly::Fixed:
        cubeAxes->SetFlyModeToStaticTriad();
        break;
    case AxesFly::BoundingBox:
        cubeAxes->SetFlyModeToStaticEdges();
        break;
    }
    sceneWindow->Render();
    axesFly = flymode;
}

void Olvik3DViewerWidget::setAxesScale(float x, float y, float z)
{
    for (float *factor : {&x, &y, &z}) {
        if (!(*factor > 0.0f) || std::isinf(*factor))
            *factor = 1.0f;
    }
    {
        const QMutexLocker lock(&stateMutex);
        if (qFuzzyCompare(state.scaleX, x) && qFuzzyCompare(state.scaleY, y)
            && qFuzzyCompare(state.scaleZ, z))
            return;
        state.scaleX = x;
        state.scaleY = y;
        state.scaleZ = z;
    }
    showStoredCloud();
}

void Olvik3DViewerWidget::setScale(int value)
{
    const QMutexLocker lock(&stateMutex);
    state.scale = state.scale < 1 ? 1 : value;
}

void Olvik3DViewerWidget::setSensorHeight(int sensorH)
{
    const QMutexLocker lock(&stateMutex);
    state.sensorHeight = sensorH;
}

void Olvik3DViewerWidget::myscale(vtkSmartPointer<vtkPolyData> polyData, float scale)
{
    if (!polyData)
        return;
    const State current = sharedState();
    scalePoints(
        *polyData, {current.scaleX * scale, current.scaleY * scale, current.scaleZ * scale});
}

void Olvik3DViewerWidget::userScale(vtkSmartPointer<vtkPolyData> polyData)
{
    if (polyData)
        scalePoints(*polyData, sharedState().sceneScale());
}

std::array<double, 6> Olvik3DViewerWidget::computeBounds(vtkSmartPointer<vtkPolyData> polyData)
{
    if (!polyData)
        return {};
    vtkPoints *points = ensureFloatPoints(*polyData);
    return interleavedBounds(
        static_cast<const float *>(points->GetVoidPointer(0)), 3 * points->GetNumberOfPoints());
}

std::vector<float> Olvik3DViewerWidget::computeIndividualBound(
    float *points, std::int64_t size, int init)
{
    const std::array<float, 2> bound = individualBound(points, size, init, 3);
    return {bound.begin(), bound.end()};
}

void Olvik3DViewerWidget::onPixelPicked(const double *coords)
{
    std::array<double, 3> point{coords[0], coords[1], coords[2]};
    if (!(QGuiApplication::keyboardModifiers() & Qt::ControlModifier)) {
        Q_EMIT pointPicked(point.data());
        return;
    }
    pickedPoints.append(point);
    if (pickedPoints.size() != 2)
        return;
    const double distance = distanceMarker->show(pickedPoints[0], pickedPoints[1]);
    pickedPoints.clear();
    Q_EMIT distancePicked(distance);
}

void Olvik3DViewerWidget::initializeGL()
{
    // VTK would end the process with the first function that an older version lacks.
    hasOpenGL = context()->format().version() >= qMakePair(3, 2);
    if (!hasOpenGL) {
        sceneWindow->SetReadyForRendering(false);
        VtkCompatibility::refuseOpenGL(*this);
        return;
    }
    // A view that moves to another window gets a new context. Qt deletes the old one while it is
    // not current, and what VTK releases then would stay on the graphics card: 2 MB for a small
    // window.
    connect(context(), &QOpenGLContext::aboutToBeDestroyed, this, [this] { makeCurrent(); });
    QVTKOpenGLNativeWidget::initializeGL();
}

void Olvik3DViewerWidget::paintGL()
{
    if (hasOpenGL) {
        if (!sceneWindow->canDraw() || !hasBuffer())
            return;
        sceneWindow->renderMissed();
        QVTKOpenGLNativeWidget::paintGL();
        return;
    }
    QPainter painter(this);
    painter.fillRect(rect(), Qt::black);
    painter.setPen(Qt::white);
    painter.drawText(rect(), Qt::AlignCenter,
        tr("No suitable OpenGL version was found!\nVersion 3.2 or grater is required\nPlease "
           "Upgrade the GPU drivers"));
}

/// While the context is lost Qt makes no buffer for a new size, and after that none before the next.
bool Olvik3DViewerWidget::hasBuffer()
{
    const bool isMissing = defaultFramebufferObject() == 0;
    if (isMissing && !isBufferMissing)
        QCoreApplication::postEvent(this, new QResizeEvent(size(), size()));
    isBufferMissing = isMissing;
    return !isMissing;
}

void Olvik3DViewerWidget::resizeEvent(QResizeEvent *event)
{
    QVTKOpenGLNativeWidget::resizeEvent(event);
    if (isValid() || event->size().isEmpty())
        return;
    QOpenGLContext newer;
    newer.setFormat(format());
    if (newer.create())
        return;
    // GLX gives an older version instead, EGL nothing. Asked for, it shows the reason, and the host's
    // window, which Qt puts together in a context of the window's format.
    QSurfaceFormat older = format();
    older.setVersion(2, 0);
    older.setProfile(QSurfaceFormat::NoProfile);
    setFormat(older);
    if (QWindow *handle = window()->windowHandle())
        handle->setFormat(older);
    QVTKOpenGLNativeWidget::resizeEvent(event);
}

void Olvik3DViewerWidget::showEvent(QShowEvent *event)
{
    QVTKOpenGLNativeWidget::showEvent(event);
    // Qt shows the picture from before the hide as long as nobody asks for another.
    update();
}

bool Olvik3DViewerWidget::event(QEvent *event)
{
    // VTK's own key bindings (wireframe, stereo, fly-to, exit) have no place in a measuring
    // application.
    const bool isKey = event->type() == QEvent::KeyPress || event->type() == QEvent::KeyRelease;
    if (isKey)
        return QOpenGLWidget::event(event); // NOLINT(bugprone-parent-virtual-call): past VTK
    if (event->type() != QEvent::MouseButtonRelease)
        return QVTKOpenGLNativeWidget::event(event);

    const vtkSmartPointer<MouseInteractorStylePP> style = interactorStyle;
    const QPointer<Olvik3DViewerWidget> self(this);
    style->holdPick();
    const bool isHandled = QVTKOpenGLNativeWidget::event(event);
    const bool isReported = style->reportPick();
    if (!self) {
        // Or Qt would offer it to the parents of a view that is gone.
        event->accept();
        return true;
    }
    if (isReported && style->hasSceneChanged())
        sceneWindow->Render();
    return isHandled;
}

void Olvik3DViewerWidget::keyPressEvent(QKeyEvent *event)
{
    if (event->key() != Qt::Key_Escape)
        return;
    distanceMarker->hide();
    onRenderNoCamera();
}

void Olvik3DViewerWidget::keyReleaseEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Control)
        pickedPoints.clear();
}

void Olvik3DViewerWidget::focusOutEvent(QFocusEvent *event)
{
    // Whoever has the focus now hears of the release of Ctrl.
    pickedPoints.clear();
    QVTKOpenGLNativeWidget::focusOutEvent(event);
}
