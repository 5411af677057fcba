#include "Plot.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>

namespace {

constexpr QSize pictureSize(1280, 960);
constexpr QRectF frame(110, 90, 1130, 640);
constexpr QRectF legend(110, 825, 1130, 110);
constexpr int textSize = 20;

struct Curve
{
    QString title;
    QColor color;
    Qt::PenStyle style;
    std::vector<QPointF> points; ///< million points, milliseconds
};

/// Both axes logarithmic.
struct Axes
{
    double left;
    double right;
    double bottom;
    double top;

    double x(double millions) const
    {
        return frame.left() + frame.width() * std::log(millions / left) / std::log(right / left);
    }
    double y(double ms) const
    {
        return frame.bottom() - frame.height() * std::log(ms / bottom) / std::log(top / bottom);
    }
};

double millionsOf(int side)
{
    return side * double(side) / (1 << 20);
}

Curve curveOf(const Results &results, const char *figure, const char *viewer, const Curve &look)
{
    Curve curve = look;
    for (const int side : results.sidesOf(figure)) {
        const double ms = results.value({figure, viewer, side});
        if (ms > 0.0)
            curve.points.emplace_back(millionsOf(side), ms);
    }
    return curve;
}

Curve memoryLimit(const Results &results, int mainSide)
{
    constexpr double traffic = 16.0; // bytes for each point
    const Task task{"bandwidth", {}, mainSide};
    const double gigabytesPerSecond =
        std::max(results.value(task, "copy_1_thread"), results.value(task, "copy_2_threads"));
    Curve curve{"memory limit: 16 bytes for each point", Qt::darkGray, Qt::DotLine, {}};
    for (const int side : results.sidesOf("shown"))
        curve.points.emplace_back(
            millionsOf(side), traffic * side * side / gigabytesPerSecond / 1e6);
    return curve;
}

std::vector<Curve> curvesOf(const Results &results, int mainSide)
{
    const QColor plain(200, 80, 20);
    const QColor ours(20, 90, 180);
    return {curveOf(results, "shown", "plain",
                {"plain: handed over to on screen", plain, Qt::SolidLine, {}}),
        curveOf(results, "update", "plain", {"plain: apart from drawing", plain, Qt::DashLine, {}}),
        memoryLimit(results, mainSide),
        curveOf(
            results, "shown", "ours", {"ours: handed over to on screen", ours, Qt::SolidLine, {}}),
        curveOf(results, "update", "ours", {"ours: apart from drawing", ours, Qt::DashLine, {}})};
}

Axes axesAround(const std::vector<Curve> &curves)
{
    Axes axes{HUGE_VAL, 0.0, HUGE_VAL, 0.0};
    for (const Curve &curve : curves) {
        for (const QPointF &point : curve.points) {
            axes.left = std::min(axes.left, point.x());
            axes.right = std::max(axes.right, point.x());
            axes.bottom = std::min(axes.bottom, point.y());
            axes.top = std::max(axes.top, point.y());
        }
    }
    axes.bottom = std::pow(10.0, std::floor(std::log10(axes.bottom)));
    axes.top = std::pow(10.0, std::ceil(std::log10(axes.top)));
    return axes;
}

QString tickText(double value)
{
    return QString::number(value, 'g', 6);
}

void drawVerticalGrid(QPainter &painter, const Axes &axes)
{
    for (double millions = axes.left; millions < axes.right * 1.01; millions *= 2.0) {
        const double x = axes.x(millions);
        painter.setPen(QPen(QColor(215, 215, 215), 1));
        painter.drawLine(QPointF(x, frame.top()), QPointF(x, frame.bottom()));
        painter.setPen(Qt::black);
        painter.drawText(
            QRectF(x - 60, frame.bottom() + 8, 120, 30), Qt::AlignHCenter, tickText(millions));
    }
}

void drawHorizontalGrid(QPainter &painter, const Axes &axes)
{
    for (double decade = axes.bottom; decade < axes.top * 1.01; decade *= 10.0) {
        for (int step = 1; step < 10 && decade * step < axes.top * 1.01; ++step) {
            const double y = axes.y(decade * step);
            painter.setPen(QPen(step == 1 ? QColor(190, 190, 190) : QColor(235, 235, 235), 1));
            painter.drawLine(QPointF(frame.left(), y), QPointF(frame.right(), y));
        }
        painter.setPen(Qt::black);
        painter.drawText(QRectF(0, axes.y(decade) - 15, frame.left() - 10, 30),
            Qt::AlignRight | Qt::AlignVCenter, tickText(decade));
    }
}

void drawTitles(QPainter &painter)
{
    painter.setPen(Qt::black);
    painter.drawText(QRectF(frame.left(), frame.bottom() + 45, frame.width(), 40), Qt::AlignHCenter,
        "size of the cloud, million points (1 million = 1024 \u00d7 1024)");
    painter.save();
    painter.rotate(-90);
    painter.drawText(QRectF(-frame.bottom(), 8, frame.height(), 40), Qt::AlignHCenter,
        "time for one buffer, milliseconds");
    painter.restore();
    QFont large = painter.font();
    large.setPixelSize(28);
    painter.save();
    painter.setFont(large);
    painter.drawText(QRectF(frame.left(), 25, frame.width(), 50), Qt::AlignHCenter,
        "Cost of an update against its size");
    painter.restore();
}

QPen penOf(const Curve &curve)
{
    return QPen(curve.color, 3, curve.style, Qt::RoundCap, Qt::RoundJoin);
}

void drawMarker(QPainter &painter, const Curve &curve, const QPointF &at)
{
    if (curve.style == Qt::DotLine)
        return;
    painter.setPen(QPen(curve.color, 3));
    painter.setBrush(curve.style == Qt::SolidLine ? curve.color : QColor(Qt::white));
    painter.drawEllipse(at, 5, 5);
    painter.setBrush(Qt::NoBrush);
}

void drawCurve(QPainter &painter, const Axes &axes, const Curve &curve)
{
    QPolygonF line;
    for (const QPointF &point : curve.points)
        line.append(QPointF(axes.x(point.x()), axes.y(point.y())));
    painter.setPen(penOf(curve));
    painter.drawPolyline(line);
    for (const QPointF &at : line)
        drawMarker(painter, curve, at);
}

void drawLegendEntry(QPainter &painter, const Curve &curve, const QRectF &place)
{
    const QPointF from(place.left(), place.center().y());
    const QPointF to(from.x() + 70, from.y());
    painter.setPen(penOf(curve));
    painter.drawLine(from, to);
    drawMarker(painter, curve, (from + to) / 2);
    painter.setPen(Qt::black);
    painter.drawText(place.adjusted(85, 0, 0, 0), Qt::AlignVCenter, curve.title);
}

/// Below the plot, filled column by column: the curves cover all of the frame.
void drawLegend(QPainter &painter, const std::vector<Curve> &curves)
{
    constexpr std::size_t columns = 2;
    const std::size_t lines = (curves.size() + columns - 1) / columns;
    const QSizeF size(legend.width() / columns, legend.height() / static_cast<double>(lines));
    for (std::size_t i = 0; i < curves.size(); ++i) {
        const QPointF place(static_cast<double>(i / lines) * size.width(),
            static_cast<double>(i % lines) * size.height());
        drawLegendEntry(painter, curves[i], QRectF(legend.topLeft() + place, size));
    }
}

} // namespace

QImage plotOf(const Results &results, int mainSide)
{
    const std::vector<Curve> curves = curvesOf(results, mainSide);
    const Axes axes = axesAround(curves);
    QImage picture(pictureSize, QImage::Format_RGB32);
    picture.fill(Qt::white);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(textSize);
    painter.setFont(font);
    drawVerticalGrid(painter, axes);
    drawHorizontalGrid(painter, axes);
    painter.setPen(QPen(Qt::black, 1));
    painter.drawRect(frame);
    drawTitles(painter);
    for (const Curve &curve : curves)
        drawCurve(painter, axes, curve);
    drawLegend(painter, curves);
    return picture;
}
