#include "ViewerSlot.h"

#include "Heights.h"
#include "Journal.h"
#include "VtkCompatibility.h"

#include <QtWidgets>

#include <vtkAbstractPicker.h>
#include <vtkActor.h>
#include <vtkCamera.h>
#include <vtkGenericOpenGLRenderWindow.h>
#include <vtkInteractorObserver.h>
#include <vtkMapper.h>
#include <vtkPropCollection.h>
#include <vtkRenderer.h>
#include <vtkRendererCollection.h>
#include <vtkRenderWindowInteractor.h>

#include <algorithm>
#include <utility>

namespace {

template <typename Widget> Widget *newTopLevel(const QWidgetList &before)
{
    for (QWidget *widget : QApplication::topLevelWidgets()) {
        auto *wanted = qobject_cast<Widget *>(widget);
        if (wanted && !before.contains(widget))
            return wanted;
    }
    return nullptr;
}

void runLoopOfTheHost(int kind)
{
    QEventLoop loop;
    QMenu menu;
    switch (kind) {
    case 0:
        QCoreApplication::processEvents();
        break;
    case 1:
        QTimer::singleShot(20, &loop, &QEventLoop::quit);
        loop.exec();
        break;
    default:
        menu.addAction(QStringLiteral("remember"));
        QTimer::singleShot(20, &menu, &QWidget::close);
        menu.exec(QPoint(600, 600));
    }
}

} // namespace

ViewerSlot::ViewerSlot(Journal &journalOfRun)
    : journal(journalOfRun)
{ }

ViewerSlot::~ViewerSlot()
{
    remove(false);
}

void ViewerSlot::create(Choice &choice)
{
    dropHost();
    const int kind = choice.below(3);
    if (kind == 0) {
        createControl(nullptr);
    } else {
        host = std::make_unique<QWidget>();
        host->resize(choice.between(50, 600), choice.between(50, 500));
        if (kind == 1)
            (new QVBoxLayout(host.get()))->addWidget(new QLabel("results", host.get()));
        createControl(host.get());
    }
    if (!choice.oneIn(5))
        control->show();
}

void ViewerSlot::createControl(QWidget *parent)
{
    const QWidgetList before = QApplication::topLevelWidgets();
    control = new Olvik3DViewerControl(QStringLiteral("soak"), parent, this);
    ownWindow = newTopLevel<CloudPMainWindow>(before);
    table = newTopLevel<GradientTableWidget>(before);
    QWidget *around = parent ? parent : ownWindow;
    renderWidget = around->findChild<Olvik3DViewerWidget *>();
    awaitsClosing = false;
    deletesWhenTold = false;
    wasClosed = false;
    watchParts();
    connectSlots();
}

void ViewerSlot::connectSlots()
{
    QObject::connect(
        control, &Olvik3DViewerControl::pointPicked, [this] { answer("pointPicked"); });
    QObject::connect(
        control, &Olvik3DViewerControl::distancePicked, [this] { answer("distancePicked"); });
    QObject::connect(renderWidget, &Olvik3DViewerWidget::axesVisibilityChanged,
        [this] { answer("axesVisibilityChanged"); });
    if (table)
        QObject::connect(table, &GradientTableWidget::currentGradientChanged,
            [this] { answer("currentGradientChanged"); });
}

/// A slot of the host: deletes the control, closes the window, and runs a loop of its own in which
/// that may happen, too.
void ViewerSlot::answer(const char *signal)
{
    constexpr int deepest = 3;
    const int answers = random.below(12);
    if (slotDepth >= deepest || answers > 4)
        return;
    const QScopedValueRollback<int> inside(slotDepth, slotDepth + 1);
    journal.note(QStringLiteral("%1: %2").arg(QLatin1String(signal)).arg(answers));
    const auto end = [this] { random.oneIn(2) ? remove(random.oneIn(2)) : close(random.oneIn(2)); };
    if (answers > 2)
        return end();
    if (random.oneIn(2))
        QTimer::singleShot(0, qApp, end);
    runLoopOfTheHost(answers);
}

/// Added to what earlier controls of this place left to be checked.
void ViewerSlot::watchParts()
{
    for (QObject *part : {static_cast<QObject *>(ownWindow), static_cast<QObject *>(renderWidget),
             static_cast<QObject *>(table)})
        widgetParts.emplace_back(part);

    vtkRenderWindow *scene = VtkCompatibility::renderWindow(*renderWidget);
    vtkRenderer *renderer = scene->GetRenderers()->GetFirstRenderer();
    for (vtkObject *part : std::initializer_list<vtkObject *>{scene, renderer,
             renderer->GetActiveCamera(), scene->GetInteractor(),
             scene->GetInteractor()->GetInteractorStyle(), scene->GetInteractor()->GetPicker()})
        sceneParts.emplace_back(part);
    vtkPropCollection *props = renderer->GetViewProps();
    for (int i = 0; i < props->GetNumberOfItems(); ++i) {
        sceneParts.emplace_back(static_cast<vtkObject *>(props->GetItemAsObject(i)));
        if (auto *actor = vtkActor::SafeDownCast(props->GetItemAsObject(i)))
            sceneParts.emplace_back(actor->GetMapper());
    }
}

void ViewerSlot::dropHost()
{
    host.reset();
    frame.reset();
}

void ViewerSlot::remove(bool withHost)
{
    awaitsClosing = false;
    if (withHost)
        host.reset();
    delete control.data();
}

void ViewerSlot::close(bool deleteWhenTold)
{
    if (!ownWindow || !ownWindow->isVisible())
        return;
    // The receiver is told once.
    awaitsClosing = !std::exchange(wasClosed, true);
    deletesWhenTold = awaitsClosing && deleteWhenTold;
    ownWindow->close();
}

void ViewerSlot::move()
{
    if (!host)
        return;
    if (!frame)
        frame = std::make_unique<QWidget>();
    host->setParent(host->isWindow() ? frame.get() : nullptr);
    host->show();
    frame->setVisible(!host->isWindow());
}

void ViewerSlot::feed(Choice &choice)
{
    if (choice.oneIn(100))
        return control->setBuffer(nullptr, 4, 4);
    Heights heights = randomHeights(choice);
    journal.note(
        QStringLiteral("%1 x %2 %3").arg(heights.width).arg(heights.height).arg(heights.pattern));
    control->setBuffer(heights.values.data(), heights.width, heights.height);
}

void ViewerSlot::viewerClosed(const char *)
{
    awaitsClosing = false;
    if (deletesWhenTold)
        delete control.data();
    answer("viewerClosed");
}

QWidget *ViewerSlot::topLevel() const
{
    return host ? host.get() : static_cast<QWidget *>(ownWindow);
}

bool ViewerSlot::isGone() const
{
    return std::none_of(
        widgetParts.begin(), widgetParts.end(), [](const QPointer<QObject> &part) { return part; });
}

void ViewerSlot::checkNothingIsLeft()
{
    for (const QPointer<QObject> &part : std::exchange(widgetParts, {})) {
        if (part)
            journal.fail(
                QStringLiteral("%1 outlives its viewer").arg(part->metaObject()->className()));
    }
    for (const vtkWeakPointer<vtkObject> &part : std::exchange(sceneParts, {})) {
        if (part)
            journal.fail(QStringLiteral("%1 outlives its viewer").arg(part->GetClassName()));
    }
}
