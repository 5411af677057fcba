#pragma once

#include "GradientCollection.h"
#include "Olvik3DViewerExport.h"

#include <QStyledItemDelegate>

#include <memory>

class StackFrames;

/// Shows the gradients of a GradientTableModel in colour and opens the builder dialog for the row
/// that is clicked again or double-clicked. GUI thread only.
///
/// Views call it from the event loop, so it throws nothing: what could not be saved or opened it
/// tells the user in a message box. While the dialog is open, or a message about a name that was
/// edited in the view, neither the delegate nor the view may be deleted: Qt is in the middle of
/// both.
class OLVIK3DVIEWER_EXPORT GradientTableDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    /// \param gradients shared with the model
    GradientTableDelegate(std::shared_ptr<GradientCollection> gradients, QWidget *parent);
    ~GradientTableDelegate() override;

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
        const QModelIndex &index) const override;
    void setModelData(
        QWidget *editor, QAbstractItemModel *model, const QModelIndex &index) const override;

    /// Opens the builder for the gradient of a row and tells the user what fails; nothing happens
    /// for a row that the collection does not have. The delegate may be deleted meanwhile.
    void edit(QAbstractItemModel *model, const QModelIndex &index);

    /// Internal: counts what opens dialogs among the frames.
    void countIn(const StackFrames &counting);

Q_SIGNALS:
    /// The user accepted the changes to a gradient, be it the current one or not.
    void currentGradientChanged();

public Q_SLOTS:
    /// Leaves the editor open.
    void commitAndCloseEditor();

protected:
    bool editorEvent(QEvent *event, QAbstractItemModel *model, const QStyleOptionViewItem &option,
        const QModelIndex &index) override;

private:
    void runBuilderOn(QAbstractItemModel *model, const QModelIndex &index);

    std::shared_ptr<GradientCollection> collection;
    std::unique_ptr<StackFrames> frames;
};
