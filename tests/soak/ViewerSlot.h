#pragma once

#include "Choice.h"
#include "CloudPMainWindow.h"
#include "GradientTableWidget.h"
#include "Olvik3DViewerControl.h"
#include "Olvik3DViewerWidget.h"

#include <QPointer>

#include <vtkWeakPointer.h>

#include <memory>
#include <vector>

class Journal;
class vtkObject;

/// One place for a viewer, in its own window or inside a host's widget, which comes and goes. Knows
/// what of it has to be gone together with the control. GUI thread.
class ViewerSlot : public IEvent3DViewerReceiver
{
public:
    explicit ViewerSlot(Journal &journal);
    ~ViewerSlot() override;

    void create(Choice &choice);
    /// What the host's slots do from here on is drawn from it.
    void use(const Choice &choice) { random = choice; }
    /// The host's widget goes, after the control.
    void dropHost();
    /// \param withHost deletes the host's widget instead, which takes an embedded control along
    void remove(bool withHost);

    /// The user closes the window, if there is one. The receiver's call is awaited unless the host
    /// deletes the control at once.
    /// \param deleteWhenTold the host deletes the control from the receiver
    void close(bool deleteWhenTold);

    /// The host's widget goes into another window or out of it, as a dock does: the view gets a new
    /// OpenGL context.
    void move();

    void feed(Choice &choice);
    void viewerClosed(const char *windowName) override;

    bool isAlive() const { return !control.isNull(); }
    bool isInSlot() const { return slotDepth > 0; }
    bool isClosing() const { return awaitsClosing; }
    Olvik3DViewerControl *viewer() const { return control; }
    /// Null in embedded mode, like the gradient table.
    CloudPMainWindow *window() const { return ownWindow; }
    Olvik3DViewerWidget *view() const { return renderWidget; }
    GradientTableWidget *gradients() const { return table; }
    QWidget *topLevel() const;

    /// Whether none of the widgets of past controls is left.
    bool isGone() const;

    /// After the control is gone: reports what outlived it as failures.
    void checkNothingIsLeft();

private:
    void createControl(QWidget *parent);
    void connectSlots();
    void answer(const char *signal);
    void watchParts();

    Journal &journal;
    Choice random{0};
    int slotDepth = 0;
    std::unique_ptr<QWidget> frame; ///< the other window; the host's widget goes before it
    std::unique_ptr<QWidget> host;
    QPointer<Olvik3DViewerControl> control;
    QPointer<CloudPMainWindow> ownWindow;
    QPointer<Olvik3DViewerWidget> renderWidget;
    QPointer<GradientTableWidget> table;
    std::vector<QPointer<QObject>> widgetParts;
    std::vector<vtkWeakPointer<vtkObject>> sceneParts;
    bool awaitsClosing = false;
    bool deletesWhenTold = false;
    bool wasClosed = false;
};
