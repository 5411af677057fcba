#pragma once

#include "Gradient.h"
#include "Olvik3DViewerExport.h"

#include <QString>
#include <QWidget>

#include <memory>

class GradientCollection;
class GradientComboBoxModel;
class GradientTableModel;
class QComboBox;
class QPushButton;
class QTableView;
class QToolBar;
class QWidgetAction;

/// The gradient manager: a table of all gradients with a tool bar to make, duplicate and delete
/// them, and a combo box that chooses the current one. Further selectors for a host's own tool bars
/// follow it and lead it.
///
/// Owns the gradients' file. Failures of saving end in a message to the user. GUI thread only.
class OLVIK3DVIEWER_EXPORT GradientTableWidget : public QWidget
{
    Q_OBJECT

public:
    /// Loads the gradients, or makes the built-in ones where there are none.
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

    /// Another selector, which the caller owns; it may outlive the manager.
    QComboBox *getSelector() const;
    /// An action that opens the manager's window; owned by the manager.
    QWidgetAction *getOpenAction();
    /// A button that opens the manager's window; owned by the manager until it is placed.
    QPushButton *getOpenWidget();

Q_SIGNALS:
    /// Another gradient is current, or the current one may have changed.
    void currentGradientChanged();
    /// All selectors move to this row.
    void comboIndexChanged(int index);

public Q_SLOTS:
    void onNewClick();
    void onDuplicateClick();
    /// The built-in gradients are kept, with a message.
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

private:
    void loadCollection(const QString &fileName);
    void addBuiltIns();
    void buildTable();
    void buildLayout();
    QToolBar *buildToolBar();
    void setUpSelector(QComboBox &selector) const;
    void restoreAfterOtherSelectors() const;
    bool editAndInsert(const std::shared_ptr<Gradient> &gradient);
    QList<int> selectedRows() const;

    QTableView *table = nullptr;
    QString currentName; ///< saved across a reset of the combo model
    QComboBox *combo = nullptr;
    std::shared_ptr<GradientCollection> collection;
    GradientTableModel *tableModel = nullptr;
    /// Shared with the selectors, which may outlive the manager.
    std::shared_ptr<GradientComboBoxModel> comboModel;
    std::shared_ptr<Gradient> currentGradient;
    int min;
    int max;
    bool isSwitching = false;
    bool isResetting = false;
};
