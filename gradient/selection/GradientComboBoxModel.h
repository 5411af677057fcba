#pragma once

#include "GradientCollection.h"
#include "Olvik3DViewerExport.h"

#include <QAbstractListModel>

#include <memory>

/// The gradients of a collection for combo boxes: the name to read, the gradient itself as
/// Qt::UserRole. One model may serve many boxes. GUI thread only.
///
/// Resets whenever the collection announces a change, which a removal is not: until the next reset
/// a view may ask for rows that are gone, and gets invalid values.
class OLVIK3DVIEWER_EXPORT GradientComboBoxModel : public QAbstractListModel
{
    Q_OBJECT

public:
    /// \param gradients shared; null shows no rows
    GradientComboBoxModel(std::shared_ptr<GradientCollection> gradients, QObject *parent);
    ~GradientComboBoxModel() override;

    int rowCount(const QModelIndex &parent = {}) const override;
    /// 2, of which a combo box shows the first.
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant headerData(
        int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;

    /// \throws std::invalid_argument when there is no such row
    std::shared_ptr<Gradient> getGradientAt(int index) const;

public Q_SLOTS:
    void onGradientCollectionChange();

private:
    std::shared_ptr<GradientCollection> collection;
    bool isRefreshing = false;
};
