#include "GradientSelector.h"

#include "GradientComboBoxDelegate.h"

#include <QAbstractItemView>
#include <QFontMetrics>

namespace {

constexpr int popupCharacters = 40;

int popupWidth(const QWidget &widget)
{
    return popupCharacters * widget.fontMetrics().averageCharWidth();
}

} // namespace

GradientSelector::GradientSelector(
    const std::shared_ptr<GradientCollection> &collection, QWidget *parent)
    : QComboBox(parent)
{
    setItemDelegate(new GradientComboBoxDelegate(collection, this));
    // The names need half of each row; the box itself may be narrow.
    view()->setMinimumWidth(popupWidth(*this));
}

QSize GradientSelector::sizeHint() const
{
    return bounded(QComboBox::sizeHint());
}

QSize GradientSelector::minimumSizeHint() const
{
    return bounded(QComboBox::minimumSizeHint());
}

QSize GradientSelector::bounded(QSize hint) const
{
    hint.setWidth(qMin(hint.width(), popupWidth(*this)));
    return hint;
}
