#include "GradientComboBoxDelegate.h"

#include "GradientRows.h"

#include <QApplication>
#include <QFontMetrics>
#include <QPainter>
#include <QStyle>

#include <utility>

namespace {

QRect previewRect(const QRect &item, int margin)
{
    return QRect(item.left() + margin, item.top() + margin, item.width() / 2 - 2 * margin,
        item.height() - 2 * margin);
}

} // namespace

GradientComboBoxDelegate::GradientComboBoxDelegate(
    std::shared_ptr<GradientCollection> gradients, QObject *parent)
    : QStyledItemDelegate(parent)
    , collection(std::move(gradients))
{ }

GradientComboBoxDelegate::~GradientComboBoxDelegate() = default;

void GradientComboBoxDelegate::paint(
    QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    QStyleOptionViewItem item = option;
    initStyleOption(&item, index);
    item.text =
        QFontMetrics(item.font).elidedText(item.text, Qt::ElideRight, item.rect.width() / 2);
    const QStyle *style = item.widget ? item.widget->style() : QApplication::style();
    const int margin = painter->pen().width();
    style->drawControl(QStyle::CE_ItemViewItem, &item, painter, item.widget);
    // On top, or the selection's background would hide the gradient that the user is about to
    // choose.
    if (const auto gradient = gradientInRow(collection.get(), index))
        gradient->paint(painter, previewRect(item.rect, margin), item.palette);
}

QSize GradientComboBoxDelegate::sizeHint(
    const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    return QStyledItemDelegate::sizeHint(option, index) * 2.0;
}
