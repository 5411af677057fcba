#include "GradientRows.h"

#include <QCoreApplication>

QVariant gradientHeader(int section, Qt::Orientation orientation, int role)
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    if (section == gradientNameColumn)
        return QCoreApplication::translate("GradientTableModel", "Name");
    if (section == gradientSchemeColumn)
        return QCoreApplication::translate("GradientTableModel", "Scheme");
    return {};
}

std::shared_ptr<Gradient> gradientInRow(
    const GradientCollection *collection, const QModelIndex &index)
{
    const bool isThere = collection && index.isValid() && index.row() < collection->size();
    return isThere ? collection->getGradientAt(index.row()) : nullptr;
}
