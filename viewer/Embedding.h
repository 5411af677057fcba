#pragma once

#include <QObject>
#include <QPointer>

class QGridLayout;
class QWidget;

/// The place of a view in a host's widget: in the widget's layout, as what a window, dock or scroll
/// area shows, as one more pane, page or subwindow, or else in a layout made for it.
///
/// What the host put into its widget stays there. What was made for views goes with the last of
/// them. GUI thread only; host and view may be deleted first.
class Embedding : public QObject
{
public:
    /// Warns when the host has no place for the view.
    Embedding(QWidget &host, QWidget &view);
    ~Embedding() override;
    Q_DISABLE_COPY_MOVE(Embedding)

    /// Before both are hidden: has the host bring a view that is shown now back with itself.
    void returnWithHost();
    /// The view goes soon and stays hidden, whatever the host does.
    void forgetView() { view = nullptr; }

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QWidget *placeIn(QWidget &host);

    QPointer<QWidget> view;
    QPointer<QWidget> made; ///< what the host holds for views alone
    QPointer<QGridLayout> layout; ///< null where the host's own layout took the view
    bool returns = false;
};
