#pragma once

#include "Olvik3DViewerExport.h"

#include <QFrame>
#include <QLinearGradient>
#include <QSize>

#include <exception>
#include <memory>
#include <optional>

class Gradient;
class QColor;
class QPoint;

/// A bar that shows a gradient and edits its stops in place: double-click between the handles adds
/// a stop, double-click on a handle removes it, right-click recolours it, dragging moves it. The
/// stops at 0 and 1 stay where they are.
///
/// Shares the gradient with its creator and draws what it finds there at each paint. GUI thread
/// only.
class OLVIK3DVIEWER_EXPORT GradientBuilderWidget : public QFrame
{
    Q_OBJECT

public:
    class OLVIK3DVIEWER_EXPORT GradientMissingStartEndException : public std::exception
    { };
    class OLVIK3DVIEWER_EXPORT GradientOutOfRangeException : public std::exception
    { };
    class OLVIK3DVIEWER_EXPORT StopHandleNotFoundException : public std::exception
    { };

    /// Stops snap to whole values between 0 and the gradient's upper bound of now; with a bound of
    /// 0 they do not snap, with a negative one not noticeably.
    /// \throws GradientMissingStartEndException unless there are stops at exactly 0 and exactly 1
    GradientBuilderWidget(std::shared_ptr<Gradient> gradient, QWidget *parent);
    /// A new gradient of its own, which has no stops.
    /// \throws GradientMissingStartEndException always
    GradientBuilderWidget(unsigned long id, QWidget *parent);
    ~GradientBuilderWidget() override;

    /// 600 x 200.
    QSize sizeHint() const override;

    /// Snaps the position, then sets the colour there. Emits nothing.
    /// \param position in [0, 1]; a negative one or NaN changes nothing
    /// \throws GradientOutOfRangeException when \a position is above 1
    void addStop(float position, QColor color);

    /// Removes the stop at exactly this position, if any. Emits nothing.
    void removeStopAtPosition(float position);

    /// The nearest position on the grid, half a step away from zero.
    float adjustPositionToGranularity(float position) const;

    /// The first stop whose handle, with half its size around it, lies under the point.
    /// \param x,y pixels in the widget
    /// \return position in [0, 1]
    /// \throws StopHandleNotFoundException when there is no such handle
    double findStopHandleForEvent(int x, int y) const;

Q_SIGNALS:
    /// The user let go of a mouse button, removed a stop or closed the colour dialog of a new stop,
    /// confirmed or not.
    void gradientUpdated();

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;

private:
    std::optional<double> stopHandleAt(const QPoint &point) const;
    float positionOnBar(int x) const;
    double placeOnGrid(double position) const;
    QColor colorAt(double position) const;
    void setColorAt(double position, const QColor &color);
    bool isDragLabelShown() const;

    void drawBar(QPainter &painter);
    void drawHandle(QPainter &painter, double position) const;
    void drawDragLabel(QPainter &painter) const;

    void startDrag(double position);
    void endDrag();
    void dragTo(float position);
    void showHandleHelp(const QMouseEvent &event) const;
    void askForNewColor(double position);
    void askForNewStop(float position);

    const QSize preferredSize{600, 200};
    const int handleHeight = 20;
    const int handleWidth = 20;
    QLinearGradient barGradient;
    std::shared_ptr<Gradient> gradient;
    std::optional<double> dragPosition;
    quint64 granularity;
    bool dragging = false;
};
