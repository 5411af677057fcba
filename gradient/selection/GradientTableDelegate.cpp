#include "GradientTableDelegate.h"

#include "GradientBuilding.h"
#include "GradientMessages.h"
#include "GradientRows.h"
#include "StackFrames.h"

#include <QAbstractItemView>
#include <QDebug>
#include <QItemSelectionModel>
#include <QMetaProperty>
#include <QMouseEvent>
#include <QPainter>
#include <QPersistentModelIndex>
#include <QPointer>

#include <exception>
#include <memory>
#include <utility>

namespace {

/// Views leave the selection out of the option that comes with an event.
bool isSelected(const QStyleOptionViewItem &option, const QModelIndex &index)
{
    if (option.state.testFlag(QStyle::State_Selected))
        return true;

    const auto *view = qobject_cast<const QAbstractItemView *>(option.widget);
    return view && view->selectionModel() && view->selectionModel()->isSelected(index);
}

bool asksForBuilder(
    const QEvent &event, const QStyleOptionViewItem &option, const QModelIndex &index)
{
    const bool isDoubleClick = event.type() == QEvent::MouseButtonDblClick;
    if (!isDoubleClick && event.type() != QEvent::MouseButtonPress)
        return false;

    const auto &mouse = static_cast<const QMouseEvent &>(event);
    return mouse.button() == Qt::LeftButton && (isDoubleClick || isSelected(option, index));
}

} // namespace

GradientTableDelegate::GradientTableDelegate(
    std::shared_ptr<GradientCollection> gradients, QWidget *parent)
    : QStyledItemDelegate(parent)
    , collection(std::move(gradients))
    , frames(std::make_unique<StackFrames>())
{ }

GradientTableDelegate::~GradientTableDelegate() = default;

void GradientTableDelegate::paint(
    QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    const std::shared_ptr<Gradient> gradient = gradientInRow(collection.get(), index);
    if (!gradient || !index.data().canConvert<std::shared_ptr<Gradient>>()) {
        QStyledItemDelegate::paint(painter, option, index);
        return;
    }

    if (option.state.testFlag(QStyle::State_Selected))
        painter->fillRect(option.rect, option.palette.highlight());
    gradient->paint(painter, option.rect, option.palette);
}

void GradientTableDelegate::countIn(const StackFrames &counting)
{
    *frames = counting;
}

void GradientTableDelegate::setModelData(
    QWidget *editor, QAbstractItemModel *model, const QModelIndex &index) const
{
    const StackFrames::Hold hold(*frames);
    const QVariant shown = index.data();
    // As the base class does it, whose code is built without regard to exceptions and leaks.
    const QVariant edited =
        shown.canConvert<Gradient>() ? shown : editor->metaObject()->userProperty().read(editor);
    // The editor opens empty: left so, it asks for nothing.
    if (edited.toString().isEmpty() && !shown.canConvert<Gradient>())
        return;
    try {
        model->setData(index, edited, Qt::EditRole);
    } catch (const std::exception &) {
        tellGradientNotRenamed(nullptr);
    }
}

void GradientTableDelegate::commitAndCloseEditor()
{
    qDebug("commitAndCloseEditor()");
    Q_EMIT commitData(qobject_cast<QWidget *>(sender()));
}

bool GradientTableDelegate::editorEvent(QEvent *event, QAbstractItemModel *model,
    const QStyleOptionViewItem &option, const QModelIndex &index)
{
    const bool isThere = gradientInRow(collection.get(), index) != nullptr;
    if (!isThere || !asksForBuilder(*event, option, index))
        return QStyledItemDelegate::editorEvent(event, model, option, index);

    edit(model, index);
    return true;
}

void GradientTableDelegate::edit(QAbstractItemModel *model, const QModelIndex &index)
{
    if (!gradientInRow(collection.get(), index))
        return;
    const StackFrames::Hold hold(*frames);
    try {
        runBuilderOn(model, index);
    } catch (const GradientCollection::FileErrorException &) {
        tellGradientsNotSaved(nullptr);
    } catch (const std::exception &) {
        tellGradientLacksAnEnd(nullptr);
    }
}

void GradientTableDelegate::runBuilderOn(QAbstractItemModel *model, const QModelIndex &index)
{
    // The dialog lets events through that may remove the row, or all of this.
    const QPointer<GradientTableDelegate> self(this);
    const QPersistentModelIndex edited = index;
    const QString name = index.sibling(index.row(), gradientNameColumn).data().toString();
    if (!buildGradient(collection, collection->getGradientAt(index.row()), name) || !self)
        return;

    if (edited.isValid())
        Q_EMIT model->dataChanged(edited, edited);
    Q_EMIT currentGradientChanged();
}
