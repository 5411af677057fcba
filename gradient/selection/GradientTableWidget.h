#pragma once

#include "Gradient.h"
#include "Olvik3DViewerExport.h"

#include <QString>
#include <QWidget>

#include <memory>

class FileWatch;
class GradientCollection;
class GradientComboBoxModel;
class GradientTableDelegate;
class GradientTableModel;
class QComboBox;
class QPushButton;
class QTableView;
class QToolBar;
class QWidgetAction;
class StackFrames;

/// The gradient manager: a table of all gradients with a tool bar to make, duplicate and delete
/// them, and a combo box that chooses the current one. Further selectors for a host's own tool bars
/// follow it and lead it.
///
/// Failures of saving end in a message to the user. What another window or process changes in the
/// gradients' file is taken up in a moment, or when the dialog or the name that is being edited is
/// closed. GUI thread only.
///
/// It may be deleted while a dialog is open that the tool bar, a key or a slot opened; the dialog
/// then ends in nothing. Not so while a dialog is open from a click into the table, or a message
/// about a name that was edited there, as Qt goes on using the table's view: hide the manager then,
/// and delete it when the dialog has been closed.
class OLVIK3DVIEWER_EXPORT GradientTableWidget : public QWidget
{
    Q_OBJECT

public:
    /// Loads the gradients, or makes the built-in ones where there are none. A file that cannot be
    /// read stays as it is: until it can be, the built-in ones stand in and nothing is saved.
    /// \param fileName name in the application's data folder; ".json" is added when it is missing
    /// \param min,max bounds of the built-in and of new gradients
    GradientTableWidget(QString fileName, int min, int max, QWidget *parent);
    ~GradientTableWidget() override;

    /// Shared with the collection: changes are seen everywhere. Null only while there is none at
    /// all.
    std::shared_ptr<Gradient> getCurrentGradient() const { return currentGradient; }
    QString getCurrentName() const;

    /// Bounds of the gradients made from now on.
    void setMinMax(int min, int max);

    /// Chooses a gradient; the first one when there is none of that name.
    void setGradientByName(QString name);

    /// Internal: counts what opens dialogs, and what hosts are told in, among the frames.
    void countIn(const StackFrames &counting);

    /// Another selector, which the caller owns; it may outlive the manager.
    QComboBox *getSelector() const;
    /// An action that opens the manager's window or brings it to the front; owned by the manager.
    QWidgetAction *getOpenAction();
    /// A button that does the same; owned by the manager until it is placed.
    QPushButton *getOpenWidget();

Q_SIGNALS:
    /// Another gradient is current, or the current one may have changed.
    void currentGradientChanged();
    /// All selectors move to this row.
    void comboIndexChanged(int index);

public Q_SLOTS:
    /// Opens the builder again when the gradient cannot be saved, until it is in the list or the
    /// user cancels.
    void onNewClick();
    void onDuplicateClick();
    /// The built-in gradients are kept, with a message. After the current gradient the first one
    /// becomes current.
    void onDeleteClick();
    /// Makes the gradient of a row the current one. Rows past the end change nothing; a negative
    /// one clears the selectors but keeps the current gradient.
    void onComboIndexChanged(int index);
    void onAboutToResetModel();
    void onModelReset();

protected:
    /// Lets the user edit a gradient. \return true when confirmed
    bool editNewGradient(std::shared_ptr<Gradient> gradient);
    void resizeEvent(QResizeEvent *event) override;
    /// Escape hides a manager that is a window of its own.
    void keyPressEvent(QKeyEvent *event) override;

private:
    void loadCollection(const QString &fileName);
    void takeUpFile();
    bool isEditing() const;
    void buildTable();
    void buildLayout();
    QToolBar *buildToolBar();
    void setUpKeys(GradientTableDelegate &delegate);
    void setUpSelector(QComboBox &selector) const;
    void restoreAfterOtherSelectors() const;
    void bringToFront();
    bool runBuilder(const std::shared_ptr<Gradient> &gradient);
    bool editAndInsert(const std::shared_ptr<Gradient> &gradient);
    bool insert(const std::shared_ptr<Gradient> &gradient);
    void forgetMissingRows();
    void remove(int row);
    QList<int> selectedRows() const;

    std::unique_ptr<StackFrames> frames;
    QTableView *table = nullptr;
    QString currentName; ///< saved across a reset of the combo model
    QComboBox *combo = nullptr;
    std::shared_ptr<GradientCollection> collection;
    FileWatch *fileWatch = nullptr;
    GradientTableModel *tableModel = nullptr;
    /// Shared with the selectors, which may outlive the manager.
    std::shared_ptr<GradientComboBoxModel> comboModel;
    std::shared_ptr<Gradient> currentGradient;
    int min;
    int max;
    bool isSwitching = false;
    bool isResetting = false;
};
