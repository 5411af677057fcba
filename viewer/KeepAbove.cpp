#include "KeepAbove.h"

#include <QEvent>
#include <QWidget>
#include <QWindow>

#include <optional>

namespace {

/// The native windows come with the first show and may be made anew later.
class TransientParent : public QObject
{
public:
    TransientParent(QWidget &window, const QWidget &parent)
        : QObject(&window)
        , base(parent)
    { }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        auto *window = static_cast<QWidget *>(watched);
        if (event->type() == QEvent::Hide)
            place = window->geometry().topLeft();
        if (event->type() == QEvent::Show)
            prepare(*window);
        return QObject::eventFilter(watched, event);
    }

private:
    /// The event comes before the window is on screen, after which X11 is not told any more.
    void prepare(QWidget &window) const
    {
        window.windowHandle()->setTransientParent(base.windowHandle());
        // Window managers put a window above its parent's middle that does not say where it was.
        if (place)
            window.windowHandle()->setPosition(*place);
    }

    const QWidget &base;
    std::optional<QPoint> place; ///< where it was hidden
};

} // namespace

void keepAbove(QWidget &window, const QWidget &base)
{
    // Qt's X11 plugin tells window managers of the parents of dialogs alone.
    window.setWindowFlag(Qt::Dialog);
    window.installEventFilter(new TransientParent(window, base));
}
