#pragma once

#include "GradientCollection.h"
#include "Olvik3DViewerExport.h"

#include <QStyledItemDelegate>

#include <memory>

/// Draws an entry of a gradient combo box, a model row of the same number as the collection's: the
/// gradient in the left half, its name, cut where it is too long, in the right one. GUI thread
/// only.
class OLVIK3DVIEWER_EXPORT GradientComboBoxDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    /// \param gradients shared with the model
    explicit GradientComboBoxDelegate(
        std::shared_ptr<GradientCollection> gradients, QObject *parent = nullptr);
    ~GradientComboBoxDelegate() override;

    /// Draws no gradient in a row that the collection no longer has.
    void paint(QPainter *painter, const QStyleOptionViewItem &option,
        const QModelIndex &index) const override;
    /// Twice the usual size, so that the preview has room.
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;

private:
    std::shared_ptr<GradientCollection> collection;
};
