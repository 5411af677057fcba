#include "GradientBuilderWidget.h"

#include "Gradient.h"
#include "GradientDialogs.h"
#include "QtCompatibility.h"

#include <QColorDialog>
#include <QFontMetrics>
#include <QPainter>
#include <QPainterPath>
#include <QPointer>
#include <QResizeEvent>
#include <QToolTip>

#include <algorithm>
#include <cmath>

namespace {

/// A negative bound becomes a huge number of steps: a grid too fine to be noticed.
quint64 stepsOf(const std::shared_ptr<Gradient> &gradient)
{
    return gradient ? static_cast<quint64>(static_cast<qint64>(gradient->getMax())) : 0;
}

bool hasStopAt(const QGradientStops &stops, double position)
{
    return std::any_of(stops.cbegin(), stops.cend(),
        [position](const QGradientStop &stop) { return stop.first == position; });
}

bool hasBothEnds(const std::shared_ptr<Gradient> &gradient)
{
    if (!gradient)
        return false;

    const QGradientStops stops = gradient->stops();
    return hasStopAt(stops, 0.0) && hasStopAt(stops, 1.0);
}

bool isEnd(double position)
{
    return position == 0.0 || position == 1.0;
}

QFont labelFont(QFont font, int baseline, int center)
{
    // A bar of a few pixels would ask for size 0, about which QFont complains on the console.
    font.setPointSize(std::max(1, static_cast<int>(0.15 * std::min(baseline, center))));
    return font;
}

} // namespace

GradientBuilderWidget::GradientBuilderWidget(std::shared_ptr<Gradient> edited, QWidget *parent)
    : QFrame(parent)
    , gradient(std::move(edited))
    , granularity(stepsOf(gradient))
{
    if (!hasBothEnds(gradient))
        throw GradientMissingStartEndException();

    setFrameShape(QFrame::WinPanel);
    setFrameShadow(QFrame::Sunken);
    setMouseTracking(true);
}

GradientBuilderWidget::GradientBuilderWidget(unsigned long id, QWidget *parent)
    : GradientBuilderWidget(std::make_shared<Gradient>(id), parent)
{ }

GradientBuilderWidget::~GradientBuilderWidget() = default;

QSize GradientBuilderWidget::sizeHint() const
{
    return preferredSize;
}

void GradientBuilderWidget::addStop(float position, QColor color)
{
    if (position > 1.0F)
        throw GradientOutOfRangeException();

    gradient->addStop(adjustPositionToGranularity(position), color);
    update();
}

void GradientBuilderWidget::removeStopAtPosition(float position)
{
    gradient->removeStop(position);
    update();
}

float GradientBuilderWidget::adjustPositionToGranularity(float position) const
{
    if (granularity == 0)
        return position;

    const auto steps = static_cast<float>(granularity);
    return std::round(position * steps) / steps;
}

double GradientBuilderWidget::findStopHandleForEvent(int x, int y) const
{
    const std::optional<double> position = stopHandleAt({x, y});
    if (!position)
        throw StopHandleNotFoundException();
    return *position;
}

void GradientBuilderWidget::paintEvent(QPaintEvent *event)
{
    QFrame::paintEvent(event);

    QPainter painter(this);
    drawBar(painter);
    const QGradientStops stops = gradient->stops();
    for (const QGradientStop &stop : stops)
        drawHandle(painter, stop.first);
    if (isDragLabelShown())
        drawDragLabel(painter);
}

void GradientBuilderWidget::resizeEvent(QResizeEvent *event)
{
    barGradient.setFinalStop(event->size().width(), 0);
    resize(event->size());
}

void GradientBuilderWidget::mousePressEvent(QMouseEvent *event)
{
    const std::optional<double> position = stopHandleAt(QtCompatibility::position(*event));
    if (!position)
        return;

    if (event->button() == Qt::LeftButton)
        startDrag(*position);
    else if (event->button() == Qt::RightButton)
        askForNewColor(*position);
}

void GradientBuilderWidget::mouseMoveEvent(QMouseEvent *event)
{
    if (dragging)
        dragTo(positionOnBar(QtCompatibility::position(*event).x()));
    else
        showHandleHelp(*event);
}

void GradientBuilderWidget::mouseReleaseEvent(QMouseEvent *event)
{
    Q_UNUSED(event)
    endDrag();
    Q_EMIT gradientUpdated();
}

void GradientBuilderWidget::mouseDoubleClickEvent(QMouseEvent *event)
{
    const QPoint point = QtCompatibility::position(*event);
    const std::optional<double> position = stopHandleAt(point);
    if (!position) {
        askForNewStop(positionOnBar(point.x()));
        return;
    }
    if (isEnd(*position))
        return;

    // As it is: removeStopAtPosition() finds no stop that was set in double precision.
    gradient->removeStop(*position);
    update();
    Q_EMIT gradientUpdated();
}

std::optional<double> GradientBuilderWidget::stopHandleAt(const QPoint &point) const
{
    const QRect contents = contentsRect();
    const int offset = point.y() - contents.top() - contents.height() / 2;
    if (std::abs(offset) > handleHeight)
        return std::nullopt;

    const QGradientStops stops = gradient->stops();
    for (const QGradientStop &stop : stops) {
        const double center = stop.first * contents.width();
        if (std::abs(point.x() - contents.left() - center) <= handleWidth)
            return stop.first;
    }
    return std::nullopt;
}

/// Held to [0, 1]: the mouse may leave the widget while a button is down.
float GradientBuilderWidget::positionOnBar(int x) const
{
    const auto fullWidth = static_cast<float>(std::max(1, width()));
    return std::clamp(static_cast<float>(x) / fullWidth, 0.0F, 1.0F);
}

/// A stop that was set in double precision is on the grid where it is.
double GradientBuilderWidget::placeOnGrid(double position) const
{
    const auto rounded = static_cast<float>(position);
    const float snapped = adjustPositionToGranularity(rounded);
    return snapped == rounded ? position : snapped;
}

/// Opaque, as the dialog offers no alpha.
QColor GradientBuilderWidget::colorAt(double position) const
{
    int r = 0;
    int g = 0;
    int b = 0;
    int a = 0;
    gradient->colorTable().getColorAtValue(static_cast<float>(position), r, g, b, a);
    return {r, g, b};
}

void GradientBuilderWidget::setColorAt(double position, const QColor &color)
{
    gradient->getQtgrad()->setColorAt(position, color);
    gradient->updategrad();
    update();
}

bool GradientBuilderWidget::isDragLabelShown() const
{
    return dragPosition && granularity != 0;
}

void GradientBuilderWidget::drawBar(QPainter &painter)
{
    const QRect contents = contentsRect();
    barGradient.setStops(gradient->stops());
    barGradient.setStart(contents.topLeft());
    barGradient.setFinalStop(contents.topRight());
    painter.fillRect(contents, barGradient);
}

void GradientBuilderWidget::drawHandle(QPainter &painter, double position) const
{
    const QRect contents = contentsRect();
    const double x = contents.width() * position + contents.left();
    const double mid = contents.height() / 2.0;
    painter.setPen(Qt::white);
    painter.drawLine(QPointF(x, mid - handleHeight), QPointF(x, mid + handleHeight));

    QRectF handle(0, 0, handleWidth, handleHeight);
    handle.moveCenter({x, mid});
    handle.setLeft(std::max<double>(handle.left(), contents.left()));
    handle.setRight(std::min<double>(handle.right(), contents.right()));
    painter.setPen(Qt::red);
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(handle);
}

void GradientBuilderWidget::drawDragLabel(QPainter &painter) const
{
    const QRect contents = contentsRect();
    const int baseline = static_cast<int>(contents.height() * 4.5 / 5.0);
    const int center = static_cast<int>(contents.width() * 0.5);
    // In single precision, where 100 x 0.29 is 29; the double product is a little less.
    const float value = static_cast<float>(granularity) * static_cast<float>(*dragPosition);
    const QString text = QString::number(static_cast<quint64>(value));

    painter.setFont(labelFont(painter.font(), baseline, center));
    const int halfWidth = QFontMetrics(painter.font()).horizontalAdvance(text) / 2;
    const QPointF start(center - halfWidth, baseline);
    painter.setPen(Qt::white);
    painter.drawText(start, text);

    QPainterPath outline;
    outline.addText(start, painter.font(), text);
    painter.setPen(Qt::black);
    painter.setBrush(Qt::NoBrush);
    painter.drawPath(outline);
}

void GradientBuilderWidget::startDrag(double position)
{
    if (!isEnd(position))
        dragPosition = position;
    dragging = true;
    update();
}

void GradientBuilderWidget::endDrag()
{
    dragPosition.reset();
    dragging = false;
    update();
}

void GradientBuilderWidget::dragTo(float position)
{
    const float step = granularity == 0 ? 0.001F : 1.0F / static_cast<float>(granularity);
    if (!dragPosition || std::abs(static_cast<float>(*dragPosition) - position) < step)
        return;

    const float snapped = adjustPositionToGranularity(position);
    if (snapped <= 0.0F || snapped >= 1.0F)
        return;

    if (gradient->moveStop(*dragPosition, snapped))
        dragPosition = snapped;
    update();
}

void GradientBuilderWidget::showHandleHelp(const QMouseEvent &event) const
{
    const std::optional<double> position = stopHandleAt(QtCompatibility::position(event));
    if (!position) {
        QToolTip::hideText();
        return;
    }
    if (gradient->isStop(*position))
        QToolTip::showText(QtCompatibility::screenPosition(event),
            tr("Left click & drag: move point\nDouble click: Remove\nRgiht click: Edit"));
}

void GradientBuilderWidget::askForNewColor(double position)
{
    const QGradientStops stops = gradient->stops();
    const auto isMeant = [position](const QGradientStop &stop) {
        return qFuzzyCompare(stop.first, position);
    };
    const auto stop = std::find_if(stops.cbegin(), stops.cend(), isMeant);

    // The dialog takes the release of a left button that is still down.
    endDrag();
    const QPointer<GradientBuilderWidget> self(this);
    const QColor shown = stop == stops.cend() ? QColor(Qt::white) : stop->second;
    const QColor chosen = chosenColor(std::make_unique<QColorDialog>(shown), *this);
    if (self && chosen.isValid())
        setColorAt(placeOnGrid(position), chosen);
}

void GradientBuilderWidget::askForNewStop(float position)
{
    const QPointer<GradientBuilderWidget> self(this);
    const double place = placeOnGrid(position);
    const QColor chosen = chosenColor(std::make_unique<QColorDialog>(colorAt(place)), *this);
    if (self && chosen.isValid())
        setColorAt(place, chosen);
    if (self)
        Q_EMIT gradientUpdated();
}
