#include "ReleaseWatch.h"

#include "MouseInteractorStylePP.h"

#include <QGuiApplication>
#include <QMouseEvent>

namespace {

Qt::MouseButton buttonOf(const QEvent *event)
{
    return static_cast<const QMouseEvent *>(event)->button();
}

bool isInteractive(Qt::MouseButton button)
{
    return button == Qt::LeftButton || button == Qt::MiddleButton || button == Qt::RightButton;
}

} // namespace

ReleaseWatch::ReleaseWatch(QWidget &watchedView, MouseInteractorStylePP &interactorStyle)
    : view(watchedView)
    , style(interactorStyle)
{
    view.installEventFilter(this);
}

bool ReleaseWatch::eventFilter(QObject *watched, QEvent *event)
{
    // Qt tells only the window itself.
    if (event->type() == QEvent::WindowBlocked)
        style.endInteraction();
    if (watched == &view)
        onViewEvent(event);
    return false;
}

void ReleaseWatch::onViewEvent(QEvent *event)
{
    switch (event->type()) {
    case QEvent::Show:
        watchWindow();
        break;
    case QEvent::Hide:
        style.endInteraction();
        break;
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
        if (isInteractive(buttonOf(event)))
            onPress(buttonOf(event));
        break;
    case QEvent::MouseButtonRelease:
        pressed &= ~buttonOf(event);
        break;
    case QEvent::MouseMove:
        onMove(static_cast<QMouseEvent *>(event)->buttons());
        break;
    case QEvent::HoverMove:
        // Newer versions of VTK turn by these, too.
        onMove(QGuiApplication::mouseButtons() | synthetic);
        break;
    default:
        break;
    }
}

/// A view that is moved to another window is hidden and shown.
void ReleaseWatch::watchWindow()
{
    if (window && window != &view)
        window->removeEventFilter(this);
    window = view.window();
    window->installEventFilter(this);
}

void ReleaseWatch::onPress(Qt::MouseButton button)
{
    pressed |= button;
    synthetic.setFlag(button, !QGuiApplication::mouseButtons().testFlag(button));
}

void ReleaseWatch::onMove(Qt::MouseButtons held)
{
    // Without a button that was pressed here, a finger moves the scene.
    if (!(pressed & ~held))
        return;
    pressed &= held;
    style.endInteraction();
}
