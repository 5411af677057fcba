#include "Embedding.h"

#include <QDockWidget>
#include <QEvent>
#include <QGridLayout>
#include <QMainWindow>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QScrollArea>
#include <QSplitter>
#include <QStackedLayout>
#include <QTabWidget>
#include <QToolBar>
#include <QToolBox>
#include <QWidget>

#include <functional>
#include <optional>

namespace {

/// Of the layout that the first viewer made in a host's widget; the last one deletes it.
const QLatin1String layoutName("Olvik3DViewerLayout");

/// Views have no size of their own for docks, panes and subwindows to go by.
class Panel : public QWidget
{
public:
    Panel() { setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding); }
    QSize sizeHint() const override { return {480, 360}; }
    QSize minimumSizeHint() const override { return {160, 120}; }
};

/// Of a widget that shows one other.
struct Content
{
    QWidget *present;
    std::function<void(QWidget *)> set;
};

std::optional<Content> contentOf(QWidget &host)
{
    if (auto *window = qobject_cast<QMainWindow *>(&host))
        return Content{
            window->centralWidget(), [window](QWidget *panel) { window->setCentralWidget(panel); }};
    if (auto *dock = qobject_cast<QDockWidget *>(&host))
        return Content{dock->widget(), [dock](QWidget *panel) { dock->setWidget(panel); }};
    if (auto *window = qobject_cast<QMdiSubWindow *>(&host))
        return Content{window->widget(), [window](QWidget *panel) { window->setWidget(panel); }};
    if (auto *area = qobject_cast<QScrollArea *>(&host))
        return Content{area->widget(), [area](QWidget *panel) {
                           area->setWidgetResizable(true);
                           area->setWidget(panel);
                       }};
    return std::nullopt;
}

/// \return what a host with any number of panes or pages holds for this one; null for other hosts
QWidget *addPage(QWidget &host, QWidget *page)
{
    const QString title = QStringLiteral("3D Viewer");
    page->setWindowTitle(title);
    if (auto *area = qobject_cast<QMdiArea *>(&host)) {
        QWidget *window = area->addSubWindow(page);
        // Its control would be left without a view.
        window->setAttribute(Qt::WA_DeleteOnClose, false);
        window->show();
        return window;
    }
    if (auto *splitter = qobject_cast<QSplitter *>(&host))
        splitter->addWidget(page);
    else if (auto *tabs = qobject_cast<QTabWidget *>(&host))
        tabs->addTab(page, title);
    else if (auto *box = qobject_cast<QToolBox *>(&host))
        box->addItem(page, title);
    else if (auto *stack = qobject_cast<QStackedLayout *>(host.layout()))
        stack->addWidget(page);
    else
        return nullptr;
    return page;
}

} // namespace

Embedding::Embedding(QWidget &host, QWidget &embedded)
    : view(&embedded)
{
    host.installEventFilter(this);
    QWidget *place = placeIn(host);
    if (!place) {
        qWarning("3D viewer: this %s has no place for the view, give it another parent",
            host.metaObject()->className());
        return;
    }
    if (place->layout()) {
        place->layout()->addWidget(view);
        layout = place->findChild<QGridLayout *>(layoutName, Qt::FindDirectChildrenOnly);
        return;
    }
    layout = new QGridLayout(place);
    layout->setObjectName(layoutName);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(view, 1, 0);
}

Embedding::~Embedding()
{
    // By now it may hold another viewer, or what the host put into it.
    if (!layout || layout->count() > 0)
        return;
    delete layout;
    delete made;
}

/// \return the widget that is to hold the view, null where there is none
QWidget *Embedding::placeIn(QWidget &host)
{
    if (qobject_cast<QToolBar *>(&host))
        return nullptr;
    if (const std::optional<Content> content = contentOf(host)) {
        made = dynamic_cast<Panel *>(content->present);
        if (content->present)
            return made;
        made = new Panel;
        content->set(made);
        made->show();
        return made;
    }
    auto page = std::make_unique<Panel>();
    made = addPage(host, page.get());
    return made ? page.release() : &host;
}

void Embedding::returnWithHost()
{
    returns = returns || (view && !view->isHidden());
}

bool Embedding::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::ShowToParent && returns && view) {
        returns = false;
        view->show();
    }
    return QObject::eventFilter(watched, event);
}
