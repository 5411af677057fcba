#include "GradientComboBoxModel.h"

#include "GradientRows.h"

#include <stdexcept>
#include <utility>

GradientComboBoxModel::GradientComboBoxModel(
    std::shared_ptr<GradientCollection> gradients, QObject *parent)
    : QAbstractListModel(parent)
    , collection(std::move(gradients))
{
    if (collection) {
        connect(collection.get(), &GradientCollection::gradientUpdated, this,
            &GradientComboBoxModel::onGradientCollectionChange);
        connect(collection.get(), &GradientCollection::aboutToRefresh, this, [this] {
            isRefreshing = true;
            beginResetModel();
        });
    }
}

GradientComboBoxModel::~GradientComboBoxModel() = default;

int GradientComboBoxModel::rowCount(const QModelIndex &parent) const
{
    return collection && !parent.isValid() ? collection->size() : 0;
}

int GradientComboBoxModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : gradientColumnCount;
}

QVariant GradientComboBoxModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    return gradientHeader(section, orientation, role);
}

QVariant GradientComboBoxModel::data(const QModelIndex &index, int role) const
{
    const std::shared_ptr<Gradient> gradient = gradientInRow(collection.get(), index);
    if (!gradient)
        return {};

    switch (role) {
    case Qt::TextAlignmentRole:
        return gradientTextAlignment;
    case Qt::DisplayRole:
        return gradient->getName();
    case Qt::UserRole:
        return QVariant::fromValue(gradient);
    default:
        return {};
    }
}

std::shared_ptr<Gradient> GradientComboBoxModel::getGradientAt(int index) const
{
    if (index < 0 || index >= rowCount())
        throw std::invalid_argument("Index out of bounds");

    return collection->getGradientAt(index);
}

void GradientComboBoxModel::onGradientCollectionChange()
{
    if (!std::exchange(isRefreshing, false))
        beginResetModel();
    endResetModel();
}
