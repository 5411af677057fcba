#include "GradientTableWidget.h"

#include "FileWatch.h"
#include "GradientBuilderDialog.h"
#include "GradientBuilding.h"
#include "GradientCollection.h"
#include "GradientComboBoxModel.h"
#include "GradientDialogs.h"
#include "GradientMessages.h"
#include "GradientSelector.h"
#include "GradientTableDelegate.h"
#include "GradientTableModel.h"
#include "OpenedGradients.h"
#include "QtCompatibility.h"
#include "StackFrames.h"

#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDebug>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMainWindow>
#include <QPointer>
#include <QPushButton>
#include <QResizeEvent>
#include <QScopedValueRollback>
#include <QShortcut>
#include <QTableView>
#include <QToolBar>
#include <QVBoxLayout>
#include <QWidgetAction>

#include <algorithm>
#include <exception>

namespace {

constexpr QSize openIconSize{22, 22};
constexpr QSize firstSize{480, 420};

QIcon icon(const char *name)
{
    return QIcon(QStringLiteral(":/gradient/images/") + QLatin1String(name));
}

QIcon wheelIcon()
{
    return icon("icons8-color-wheel-96.png");
}

bool isBuiltIn(const QString &name)
{
    return name == QLatin1String("Default") || name == QLatin1String("Default Color");
}

} // namespace

GradientTableWidget::GradientTableWidget(QString fileName, int lower, int upper, QWidget *parent)
    : QWidget(parent)
    , frames(std::make_unique<StackFrames>())
    , min(lower)
    , max(upper)
{
    setWindowTitle(tr("Gradients"));
    resize(firstSize);
    loadCollection(fileName);
    buildTable();
    comboModel = std::make_shared<GradientComboBoxModel>(collection, nullptr);
    combo = new GradientSelector(collection, this);
    setUpSelector(*combo);
    buildLayout();
    connect(comboModel.get(), &QAbstractItemModel::modelAboutToBeReset, this,
        &GradientTableWidget::onAboutToResetModel);
    onComboIndexChanged(0);
}

GradientTableWidget::~GradientTableWidget() = default;

void GradientTableWidget::loadCollection(const QString &fileName)
{
    const QString path = gradientsPath(fileName);
    collection = openGradients(path, min, max);
    fileWatch = new FileWatch(path, this);
    connect(fileWatch, &FileWatch::changed, this, &GradientTableWidget::takeUpFile);
}

void GradientTableWidget::takeUpFile()
{
    if (isSwitching || isEditing()) {
        fileWatch->tellLater();
        return;
    }
    const QPointer<GradientTableWidget> self(this);
    const std::shared_ptr<GradientCollection> kept = collection;
    const QList<int> rows = selectedRows();
    const std::shared_ptr<Gradient> selected =
        rows.isEmpty() ? nullptr : kept->getGradientAt(rows.first());
    // The row may stay where it was and hold another gradient, of which no selector would tell.
    isSwitching = true;
    bool isNew = true;
    try {
        isNew = kept->refresh();
    } catch (const std::exception &) {
        // A receiver has failed. The changes are taken up, and this may be the event loop.
    }
    if (!self)
        return;
    isSwitching = false;
    if (!isNew)
        return;
    if (kept->indexOf(selected) >= 0)
        table->selectRow(kept->indexOf(selected));
    // The name that the selectors went by may have changed.
    const int chosen = kept->indexOf(currentGradient);
    onComboIndexChanged(chosen < 0 ? combo->currentIndex() : chosen);
}

/// What the user is at has to stay under the dialog or the editor until it is closed.
bool GradientTableWidget::isEditing() const
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    return QApplication::activePopupWidget() || table->indexWidget(table->currentIndex())
        || std::any_of(windows.cbegin(), windows.cend(), [](const QWidget *window) {
               return window->isVisible() && qobject_cast<const GradientBuilderDialog *>(window);
           });
}

void GradientTableWidget::buildTable()
{
    tableModel = new GradientTableModel(collection, this);
    auto *delegate = new GradientTableDelegate(collection, this);
    connect(delegate, &GradientTableDelegate::currentGradientChanged, this,
        &GradientTableWidget::currentGradientChanged);

    table = new QTableView;
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setSelectionMode(QAbstractItemView::SingleSelection);
    table->setSortingEnabled(false);
    table->setModel(tableModel);
    table->setItemDelegate(delegate);
    // The delegate takes both kinds of click for the dialog; the key is the way to a name in place.
    table->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::SelectedClicked
        | QAbstractItemView::EditKeyPressed);
    table->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    table->verticalHeader()->hide();
    setUpKeys(*delegate);
}

void GradientTableWidget::setUpKeys(GradientTableDelegate &delegate)
{
    table->setTabKeyNavigation(false);
    for (const int key : {Qt::Key_Return, Qt::Key_Enter}) {
        // Not the view's activated(), which a single click may send, too. With the focus in a name
        // that is edited in place the key stays there.
        auto *shortcut = new QShortcut(key, table);
        shortcut->setContext(Qt::WidgetShortcut);
        connect(shortcut, &QShortcut::activated, &delegate,
            [this, &delegate] { delegate.edit(tableModel, table->currentIndex()); });
    }
}

QToolBar *GradientTableWidget::buildToolBar()
{
    auto *toolBar = new QToolBar;
    toolBar->setMovable(false);
    toolBar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    const auto add = [&](const char *image, const QString &text,
                         void (GradientTableWidget::*slot)(), const QKeySequence &key = {}) {
        auto *action = new QAction(icon(image), text, this);
        action->setShortcut(key);
        action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
        connect(action, &QAction::triggered, this, slot);
        toolBar->addAction(action);
        return action;
    };
    addAction(add("new.png", tr("&New"), &GradientTableWidget::onNewClick, QKeySequence::New));
    add("copy.png", tr("&Duplicate"), &GradientTableWidget::onDuplicateClick);
    // The key deletes only where the selected row has the focus, not from the combo box.
    table->addAction(
        add("delete.png", tr("&Delete"), &GradientTableWidget::onDeleteClick, Qt::Key_Delete));
    return toolBar;
}

void GradientTableWidget::buildLayout()
{
    auto *frame = new QMainWindow;
    frame->addToolBar(buildToolBar());
    frame->setCentralWidget(table);
    frame->setContextMenuPolicy(Qt::NoContextMenu);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(frame);
    layout->addWidget(combo);
}

void GradientTableWidget::setUpSelector(QComboBox &selector) const
{
    selector.setModel(comboModel.get());
    connect(&selector, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
        &GradientTableWidget::onComboIndexChanged);
    connect(this, &GradientTableWidget::comboIndexChanged, &selector, &QComboBox::setCurrentIndex);
    // After a removal the row may be the same and hold another gradient.
    connect(this, &GradientTableWidget::comboIndexChanged, &selector,
        QOverload<>::of(&QWidget::update));
    // Holds the model as long as the selector shows it.
    connect(&selector, &QObject::destroyed, &selector, [model = comboModel] { Q_UNUSED(model) });
    restoreAfterOtherSelectors();
}

/// A selector forgets its row in a reset. Restored before the last of them has, the others would be
/// dragged along when that one does.
void GradientTableWidget::restoreAfterOtherSelectors() const
{
    disconnect(comboModel.get(), &QAbstractItemModel::modelReset, this,
        &GradientTableWidget::onModelReset);
    connect(comboModel.get(), &QAbstractItemModel::modelReset, this,
        &GradientTableWidget::onModelReset);
}

QString GradientTableWidget::getCurrentName() const
{
    return combo->currentText();
}

void GradientTableWidget::setMinMax(int lower, int upper)
{
    min = lower;
    max = upper;
}

void GradientTableWidget::countIn(const StackFrames &counting)
{
    *frames = counting;
    static_cast<GradientTableDelegate *>(table->itemDelegate())->countIn(counting);
}

void GradientTableWidget::setGradientByName(QString name)
{
    if (!name.isEmpty() && collection->checkNameExists(name)) {
        currentGradient = collection->getGradient(name);
        onComboIndexChanged(collection->indexOf(currentGradient));
    } else if (collection->size() > 0) {
        currentGradient = collection->getGradientAt(0);
        onComboIndexChanged(0);
    }
}

QComboBox *GradientTableWidget::getSelector() const
{
    auto *selector = new GradientSelector(collection, nullptr);
    setUpSelector(*selector);
    return selector;
}

QWidgetAction *GradientTableWidget::getOpenAction()
{
    auto *action = new QWidgetAction(this);
    action->setIcon(wheelIcon());
    action->setText(tr("Gradient"));
    connect(action, &QAction::triggered, this, &GradientTableWidget::bringToFront,
        Qt::DirectConnection);
    return action;
}

QPushButton *GradientTableWidget::getOpenWidget()
{
    auto *button = new QPushButton(this);
    button->setIcon(wheelIcon());
    button->setIconSize(openIconSize);
    button->setToolTip(tr("Gradient"));
    button->setFlat(true);
    connect(button, &QPushButton::clicked, this, &GradientTableWidget::bringToFront);
    return button;
}

void GradientTableWidget::bringToFront()
{
    show();
    window()->setWindowState(window()->windowState() & ~Qt::WindowMinimized);
    window()->raise();
    QtCompatibility::activate(*window());
}

void GradientTableWidget::onComboIndexChanged(int index)
{
    if (isResetting || isSwitching || index >= comboModel->rowCount())
        return;
    const StackFrames::Hold hold(*frames);
    {
        const QScopedValueRollback<bool> switching(isSwitching, true);
        Q_EMIT comboIndexChanged(index);
    }
    try {
        currentGradient = comboModel->getGradientAt(index);
        Q_EMIT currentGradientChanged();
    } catch (...) {
        // No row, or a receiver that failed: the choice stands, and this may be the event loop.
    }
}

void GradientTableWidget::onAboutToResetModel()
{
    currentName = combo->currentText();
    isResetting = true;
}

void GradientTableWidget::onModelReset()
{
    isResetting = false;
    const int row = qMax(0,
        combo->findData(currentName, Qt::DisplayRole, Qt::MatchExactly | Qt::MatchCaseSensitive));
    const QPointer<GradientTableWidget> self(this);
    combo->setCurrentIndex(row);
    // In a reset a box without a selection takes the first row by itself, unheard.
    if (self && row < collection->size() && collection->getGradientAt(row) != currentGradient)
        onComboIndexChanged(row);
}

bool GradientTableWidget::editNewGradient(std::shared_ptr<Gradient> gradient)
{
    return buildGradient(collection, gradient, gradient->getName());
}

/// Called from the event loop, which lets no exception through. False when the user cancels, and
/// when the host has deleted the manager meanwhile.
bool GradientTableWidget::runBuilder(const std::shared_ptr<Gradient> &gradient)
{
    const QPointer<GradientTableWidget> self(this);
    try {
        return editNewGradient(gradient) && self;
    } catch (const std::exception &) {
        tellGradientLacksAnEnd(self);
        return false;
    }
}

/// Again and again: what the user has made is not lost with a full disk.
bool GradientTableWidget::editAndInsert(const std::shared_ptr<Gradient> &gradient)
{
    const QPointer<GradientTableWidget> self(this);
    while (self && runBuilder(gradient)) {
        if (insert(gradient))
            return true;
    }
    return false;
}

/// Tells the user what fails; the manager may be gone afterwards.
bool GradientTableWidget::insert(const std::shared_ptr<Gradient> &gradient)
{
    const QPointer<GradientTableWidget> self(this);
    takeUpFile();
    if (!self)
        return false;
    const bool isSaved = tableModel->insertGradient(gradient);
    if (!self)
        return false;
    // Another program may have taken the name in this very moment.
    const bool isKept = collection->getGradients().contains(gradient);
    forgetMissingRows();
    if (!isSaved)
        tellGradientsNotSaved(this);
    return isSaved && isKept;
}

/// The model announces a row even when the collection has refused its gradient.
void GradientTableWidget::forgetMissingRows()
{
    if (table->verticalHeader()->count() == tableModel->rowCount())
        return;

    const QModelIndexList selected = table->selectionModel()->selectedRows();
    const QModelIndex current = table->currentIndex();
    table->verticalHeader()->reset();
    table->reset();
    table->setCurrentIndex(current);
    if (selected.isEmpty())
        table->clearSelection();
}

void GradientTableWidget::onNewClick()
{
    const StackFrames::Hold hold(*frames);
    const std::shared_ptr<Gradient> gradient = collection->newGradientShared();
    gradient->setMax(max);
    gradient->setMin(min);
    editAndInsert(gradient);
}

void GradientTableWidget::onDuplicateClick()
{
    const StackFrames::Hold hold(*frames);
    const QPointer<GradientTableWidget> self(this);
    for (const int row : selectedRows()) {
        const bool isDone = editAndInsert(collection->getGradientAt(row));
        if (!self)
            return;
        // The edits are in the gradient itself, which may be the one on screen.
        if (isDone)
            Q_EMIT currentGradientChanged();
    }
}

void GradientTableWidget::onDeleteClick()
{
    const StackFrames::Hold hold(*frames);
    const QPointer<GradientTableWidget> self(this);
    for (const int row : selectedRows()) {
        const QString name = collection->getGradientAt(row)->getName();
        qDebug() << name;
        if (isBuiltIn(name))
            showGradientMessage(this, QMessageBox::Information, tr("Cannot delete"),
                tr("The Default gradient cannot be deleted"));
        else
            remove(row);
        if (!self)
            return;
    }
}

void GradientTableWidget::remove(int row)
{
    const bool isSaved = tableModel->removeRow(row);
    // The selectors are not told of a removal: they show what has moved into their row.
    onComboIndexChanged(qMax(0, collection->indexOf(currentGradient)));
    if (!isSaved)
        tellGradientsNotSaved(this);
}

/// Only rows that the collection has: a refused insertion is announced nevertheless.
QList<int> GradientTableWidget::selectedRows() const
{
    QList<int> rows;
    const QModelIndexList selected = table->selectionModel()->selectedRows();
    for (const QModelIndex &index : selected) {
        if (index.row() < collection->size())
            rows.append(index.row());
    }
    return rows;
}

void GradientTableWidget::resizeEvent(QResizeEvent *event)
{
    table->resize(event->size());
    // The table's place beside tool bar and selector is the layout's business again.
    table->updateGeometry();
}

void GradientTableWidget::keyPressEvent(QKeyEvent *event)
{
    if (isWindow() && event->matches(QKeySequence::Cancel))
        hide();
    else
        QWidget::keyPressEvent(event);
}
