#include "Gradient.h"

#include "Truncate.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QJsonValue>
#include <QPainter>
#include <QRect>

#include <algorithm>

namespace {

bool isOnAxis(double position)
{
    return position >= 0.0 && position <= 1.0;
}

/// QGradient::stops() answers black and white for a gradient without stops; only adding one tells.
bool hasNoStops(const QLinearGradient &gradient)
{
    if (gradient.stops().size() != 2)
        return false;
    QLinearGradient probe = gradient;
    probe.setColorAt(0.5, Qt::red);
    return probe.stops().size() == 1;
}

QGradientStops stopsOf(const QLinearGradient &gradient)
{
    return hasNoStops(gradient) ? QGradientStops() : gradient.stops();
}

/// Without the stops that Qt would refuse with a warning.
void setStops(QLinearGradient &gradient, QGradientStops stops)
{
    stops.erase(std::remove_if(stops.begin(), stops.end(),
                    [](const QGradientStop &stop) { return !isOnAxis(stop.first); }),
        stops.end());
    gradient.setStops(stops);
}

ColorGradient::Color componentsOf(const QColor &color)
{
    return {color.red(), color.green(), color.blue(), color.alpha()};
}

QColor colorOf(const ColorGradient::Color &color)
{
    return {color.r, color.g, color.b, color.a};
}

QJsonArray toJson(const ColorGradient::Color &color)
{
    return {color.r, color.g, color.b, color.a};
}

ColorGradient::Color colorFromJson(const QJsonValue &json)
{
    const QJsonArray components = json.toArray();
    return {components[0].toInt(0), components[1].toInt(0), components[2].toInt(0),
        components[3].toInt(0)};
}

} // namespace

Gradient::Gradient(unsigned long identifier)
    : id(identifier)
{
    table.clearColorPoints();
}

Gradient::Gradient(const Gradient &other)
    : Gradient(other.id)
{
    copyfromOther(other);
}

Gradient::Gradient(std::shared_ptr<Gradient> other)
    : Gradient()
{
    copyfromOther(std::move(other));
}

Gradient &Gradient::operator=(const Gradient &other)
{
    copyfromOther(other);
    return *this;
}

Gradient &Gradient::operator=(const std::shared_ptr<Gradient> &other)
{
    copyfromOther(other);
    return *this;
}

void Gradient::copyfromOther(const Gradient &other)
{
    name = other.name;
    id = other.id;
    table = other.table;
    qtgrad = other.qtgrad;
    updategrad();
    Q_EMIT updated();
}

void Gradient::copyfromOther(std::shared_ptr<Gradient> other)
{
    if (other)
        copyfromOther(*other);
}

void Gradient::reset()
{
    table.clearColorPoints();
    qtgrad = QLinearGradient();
}

void Gradient::setName(const QString &newName)
{
    name = newName;
    Q_EMIT updated();
}

void Gradient::setMin(double value)
{
    table.setMin(truncated(value));
    Q_EMIT updated();
}

void Gradient::setMin(double value, QColor color)
{
    table.setBelowColor(componentsOf(color));
    setMin(value);
}

void Gradient::setMax(double value)
{
    table.setMax(truncated(value));
    Q_EMIT updated();
}

void Gradient::setMax(double value, QColor color)
{
    table.setAboveColor(componentsOf(color));
    setMax(value);
}

QColor Gradient::getMinColor() const
{
    return colorOf(table.belowColor());
}

QColor Gradient::getMaxColor() const
{
    return colorOf(table.aboveColor());
}

void Gradient::addStop(float position, QColor color)
{
    if (!isOnAxis(static_cast<double>(position)))
        return;
    qtgrad.setColorAt(static_cast<double>(position), color);
    updategrad();
}

void Gradient::removeStop(double position)
{
    QGradientStops stops = stopsOf(qtgrad);
    const auto found = std::find_if(stops.begin(), stops.end(),
        [position](const QGradientStop &stop) { return stop.first == position; });
    if (found != stops.end())
        stops.erase(found);
    setStops(qtgrad, stops);
    updategrad();
}

bool Gradient::moveStop(double from, double to)
{
    QGradientStops stops = stopsOf(qtgrad);
    const bool isTaken = std::any_of(
        stops.cbegin(), stops.cend(), [to](const QGradientStop &stop) { return stop.first == to; });
    if (isTaken)
        return false;

    bool hasMoved = false;
    for (QGradientStop &stop : stops) {
        if (stop.first != from)
            continue;
        stop.first = to;
        hasMoved = true;
    }
    setStops(qtgrad, stops);
    updategrad();
    return hasMoved;
}

bool Gradient::isStop(double position) const
{
    const QGradientStops stops = stopsOf(qtgrad);
    return std::any_of(stops.cbegin(), stops.cend(),
        [position](const QGradientStop &stop) { return qFuzzyCompare(stop.first, position); });
}

void Gradient::updategrad()
{
    table.clearColorPoints();
    const QGradientStops stops = stopsOf(qtgrad);
    for (const auto &[position, color] : stops) {
        table.addColorPoint(static_cast<float>(position), static_cast<float>(color.red()),
            static_cast<float>(color.green()), static_cast<float>(color.blue()),
            static_cast<float>(color.alpha()));
    }
}

void Gradient::getColorFromValue(double value, int &r, int &g, int &b, int &a) const
{
    table.getColorRawValue(static_cast<float>(value), r, g, b, a);
}

void Gradient::paint(QPainter *painter, const QRect &rect, const QPalette &) const
{
    QLinearGradient across = qtgrad;
    across.setStart(rect.topLeft());
    across.setFinalStop(rect.topRight());
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->fillRect(rect, QBrush(across));
    painter->restore();
}

void Gradient::write(QJsonObject &json) const
{
    QJsonArray stops;
    for (const ColorPoint &point : table.colorPoints())
        stops.append(QJsonArray{point.r, point.g, point.b, static_cast<double>(point.val)});
    json["name"] = name;
    json["stops"] = stops;
    json["min"] = table.getMin();
    json["max"] = table.getMax();
    json["minColor"] = toJson(table.belowColor());
    json["maxColor"] = toJson(table.aboveColor());
}

void Gradient::read(const QJsonObject &json)
{
    reset();
    name = json["name"].toString();
    const QJsonArray stops = json["stops"].toArray();
    for (const QJsonValue &value : stops) {
        const QJsonArray stop = value.toArray();
        const auto position = static_cast<double>(static_cast<float>(stop[3].toDouble(0.0)));
        if (isOnAxis(position))
            qtgrad.setColorAt(
                position, QColor(stop[0].toInt(0), stop[1].toInt(0), stop[2].toInt(0)));
    }
    // Once at the end: rebuilding the table for each of thousands of stops takes seconds.
    updategrad();
    table.setMin(json["min"].toInt(0));
    table.setMax(json["max"].toInt(0));
    table.setBelowColor(colorFromJson(json["minColor"]));
    table.setAboveColor(colorFromJson(json["maxColor"]));
}
