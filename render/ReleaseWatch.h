#pragma once

#include <QObject>
#include <QPointer>
#include <QWidget>

class MouseInteractorStylePP;

/// Ends an interaction whose button was released where the view does not hear of it: while a modal
/// box blocks its window, while it is hidden, or above a menu.
///
/// GUI thread only. Borrows what it is given.
class ReleaseWatch : public QObject
{
public:
    ReleaseWatch(QWidget &view, MouseInteractorStylePP &style);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void onViewEvent(QEvent *event);
    void watchWindow();
    void onPress(Qt::MouseButton button);
    void onMove(Qt::MouseButtons held);

    QWidget &view;
    MouseInteractorStylePP &style;
    QPointer<QWidget> window; ///< the one that holds the view
    Qt::MouseButtons pressed;
    Qt::MouseButtons synthetic; ///< pressed by an event that a program sent
};
