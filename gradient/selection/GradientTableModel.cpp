#include "GradientTableModel.h"

#include "GradientRows.h"

#include <QMessageBox>

#include <exception>
#include <utility>

namespace {

void tellNameIsTaken()
{
    QMessageBox box(QMessageBox::Critical, GradientTableModel::tr("Error"),
        GradientTableModel::tr("Gradient name already exists."), QMessageBox::Ok);
    box.setDefaultButton(QMessageBox::Ok);
    box.exec();
}

} // namespace

GradientTableModel::GradientTableModel(
    std::shared_ptr<GradientCollection> gradients, QObject *parent)
    : QAbstractTableModel(parent)
    , collection(std::move(gradients))
{
    if (collection)
        followRefreshes();
}

GradientTableModel::~GradientTableModel() = default;

int GradientTableModel::rowCount(const QModelIndex &parent) const
{
    return collection && !parent.isValid() ? collection->size() : 0;
}

int GradientTableModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : gradientColumnCount;
}

QVariant GradientTableModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    return gradientHeader(section, orientation, role);
}

QVariant GradientTableModel::data(const QModelIndex &index, int role) const
{
    const std::shared_ptr<Gradient> gradient = gradientInRow(collection.get(), index);
    if (!gradient)
        return {};
    if (role == Qt::TextAlignmentRole)
        return gradientTextAlignment;
    if (role != Qt::DisplayRole)
        return {};
    if (index.column() == gradientNameColumn)
        return gradient->getName();
    if (index.column() == gradientSchemeColumn)
        return QVariant::fromValue(gradient);
    return {};
}

Qt::ItemFlags GradientTableModel::flags(const QModelIndex &index) const
{
    const Qt::ItemFlags base = QAbstractTableModel::flags(index);
    const bool isName = index.isValid() && index.column() == gradientNameColumn;
    return isName ? base | Qt::ItemIsEditable : base;
}

bool GradientTableModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    const std::shared_ptr<Gradient> gradient = gradientInRow(collection.get(), index);
    if (!gradient || role != Qt::EditRole)
        return false;

    try {
        if (index.column() == gradientNameColumn)
            collection->renameEntry(gradient, value.toString());
    } catch (const GradientCollection::NameAlreadyExistsException &) {
        tellNameIsTaken();
        return false;
    }
    mydataChanged(index);
    return true;
}

bool GradientTableModel::removeRows(int row, int count, const QModelIndex &parent)
{
    if (row < 0 || row >= rowCount(parent) || count < 1)
        return false;

    bool isSaved = true;
    beginRemoveRows(QModelIndex(), row, row + qMin(count, rowCount() - row) - 1);
    try {
        collection->remove(row);
    } catch (const GradientCollection::FileErrorException &) {
        // The views have been told that rows go: they have to hear that they went.
        isSaved = false;
    }
    endRemoveRows();
    return isSaved;
}

bool GradientTableModel::insertGradient(std::shared_ptr<Gradient> gradient)
{
    if (!collection || !gradient)
        return true;

    const int row = rowCount();
    beginInsertRows(QModelIndex(), row, row);
    const bool isSaved = add(gradient);
    endInsertRows();
    return isSaved;
}

void GradientTableModel::mydataChanged(const QModelIndex &index)
{
    Q_EMIT dataChanged(index, index);
}

/// The collection's own changes are announced as rows.
void GradientTableModel::followRefreshes()
{
    connect(collection.get(), &GradientCollection::aboutToRefresh, this, [this] {
        isRefreshing = true;
        beginResetModel();
    });
    connect(collection.get(), &GradientCollection::gradientUpdated, this, [this] {
        if (std::exchange(isRefreshing, false))
            endResetModel();
    });
}

/// False when the file could not be written. Throws nothing: the views wait for the end of the
/// insertion.
bool GradientTableModel::add(const std::shared_ptr<Gradient> &gradient)
{
    try {
        if (gradient->getName().isEmpty())
            gradient->setName(collection->generateUniqueGradientName());
        collection->add(gradient);
    } catch (const GradientCollection::FileErrorException &) {
        return false;
    } catch (const std::exception &) {
        return true;
    }
    return true;
}
