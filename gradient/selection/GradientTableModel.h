#pragma once

#include "GradientCollection.h"
#include "Olvik3DViewerExport.h"

#include <QAbstractTableModel>

#include <memory>

/// The gradients of a collection as a table: a name that can be edited and the gradient itself, a
/// std::shared_ptr<Gradient>. GUI thread only.
///
/// A view without a memory of its own: it resets when the collection takes up changes of its file;
/// other changes that do not pass through the model are not announced, and rows that are gone give
/// invalid values.
class OLVIK3DVIEWER_EXPORT GradientTableModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    /// \param gradients shared; null shows no rows
    GradientTableModel(std::shared_ptr<GradientCollection> gradients, QObject *parent);
    ~GradientTableModel() override;

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant headerData(
        int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;

    /// Renames the gradient in the name column, and no other of the same name. A name that is taken
    /// is refused in a message box.
    /// \throws GradientCollection::FileErrorException when saving fails; the name stays
    bool setData(const QModelIndex &index, const QVariant &value, int role = Qt::EditRole) override;

    /// Takes one gradient out of the collection, the first of the rows, however many of those that
    /// exist it announces: ask for one.
    /// \return false when there is no such row, or when the file could not be written: then the row
    /// has gone all the same, and comes back with the next load() unless a later save succeeds
    bool removeRows(int row, int count, const QModelIndex &parent = {}) override;

    /// Adds a gradient as the last row, under a name of its own if it has none. A gradient whose
    /// name is taken is dropped silently, and its row announced nevertheless.
    /// \return false when the file could not be written: the gradient is not added, and the caller
    /// should tell the user
    bool insertGradient(std::shared_ptr<Gradient> gradient);

    /// Announces a change that was made to the gradient itself.
    void mydataChanged(const QModelIndex &index);

private:
    void followRefreshes();
    bool add(const std::shared_ptr<Gradient> &gradient);

    std::shared_ptr<GradientCollection> collection;
    bool isRefreshing = false;
};
