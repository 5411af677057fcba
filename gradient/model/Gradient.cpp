#include "Gradient.h"

#include <QBrush>
#include <QJsonArray>
#include <QJsonObject>
#include <QPainter>
#include <QRect>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

/// False for NaN.
bool isOnAxis(double position)
{
    return position >= 0.0 && position <= 1.0;
}

int wholeBound(double bound)
{
    constexpr double lowest = std::numeric_limits<int>::min();
    constexpr double highest = std::numeric_limits<int>::max();
    return std::isnan(bound) ? 0 : static_cast<int>(std::clamp(bound, lowest, highest));
}

BoundColor boundColor(const QColor &color)
{
    return {color.red(), color.green(), color.blue(), color.alpha()};
}

BoundColor boundColor(const QJsonArray &json)
{
    return {json.at(0).toInt(), json.at(1).toInt(), json.at(2).toInt(), json.at(3).toInt()};
}

QColor qColor(const BoundColor &color)
{
    return QColor(color.r, color.g, color.b, color.a);
}

QJsonArray toJson(const BoundColor &color)
{
    return {color.r, color.g, color.b, color.a};
}

QGradientStop stopFromJson(const QJsonArray &json)
{
    const auto position = static_cast<float>(json.at(3).toDouble());
    return {position, QColor(json.at(0).toInt(), json.at(1).toInt(), json.at(2).toInt())};
}

QGradientStops stopsFromJson(const QJsonArray &json)
{
    const auto count = static_cast<int>(std::min<qint64>(json.size(), Gradient::maxStopsRead));
    QGradientStops stops;
    stops.reserve(count);
    for (qint64 number = 0; number < count; ++number) {
        const qint64 taken =
            count == json.size() ? number : number * (json.size() - 1) / (count - 1);
        stops.append(stopFromJson(json.at(static_cast<int>(taken)).toArray()));
    }
    return stops;
}

} // namespace

Gradient::Gradient(unsigned long number)
    : id(number)
{
    colors.clear();
}

Gradient::Gradient(const Gradient &other)
    : Gradient()
{
    copyfromOther(other);
}

Gradient::Gradient(const std::shared_ptr<Gradient> &other)
    : Gradient()
{
    copyfromOther(other);
}

Gradient::~Gradient() = default;

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
    colors = other.colors;
    qtgrad = other.qtgrad;
    updategrad();
    Q_EMIT updated();
}

void Gradient::copyfromOther(const std::shared_ptr<Gradient> &other)
{
    if (other)
        copyfromOther(*other);
}

void Gradient::reset()
{
    colors.clear();
    qtgrad = QLinearGradient();
}

void Gradient::setName(const QString &newName)
{
    name = newName;
    Q_EMIT updated();
}

void Gradient::setMin(double bound)
{
    colors.setMin(wholeBound(bound));
    Q_EMIT updated();
}

void Gradient::setMax(double bound)
{
    colors.setMax(wholeBound(bound));
    Q_EMIT updated();
}

void Gradient::setMin(double bound, const QColor &color)
{
    colors.setBelowColor(boundColor(color));
    setMin(bound);
}

void Gradient::setMax(double bound, const QColor &color)
{
    colors.setAboveColor(boundColor(color));
    setMax(bound);
}

double Gradient::getMin() const
{
    return colors.getMin();
}

double Gradient::getMax() const
{
    return colors.getMax();
}

QColor Gradient::getMinColor() const
{
    return qColor(colors.belowColor());
}

QColor Gradient::getMaxColor() const
{
    return qColor(colors.aboveColor());
}

void Gradient::addStop(float position, const QColor &color)
{
    // Qt ignores a position off the axis with a warning, except NaN, which it takes as a stop.
    qtgrad.setColorAt(std::isnan(position) ? -1.0F : position, color);
    updategrad();
}

void Gradient::removeStop(double position)
{
    QGradientStops kept = stops();
    const auto isThere = [position](const QGradientStop &stop) { return stop.first == position; };
    const auto found = std::find_if(kept.begin(), kept.end(), isThere);
    if (found != kept.end())
        kept.erase(found);
    setStops(kept);
}

bool Gradient::moveStop(double from, double to)
{
    QGradientStops moved = stops();
    const auto isTaken = [to](const QGradientStop &stop) { return stop.first == to; };
    if (std::any_of(moved.cbegin(), moved.cend(), isTaken))
        return false;

    bool hasMoved = false;
    for (QGradientStop &stop : moved) {
        if (stop.first != from)
            continue;
        stop.first = to;
        hasMoved = true;
    }
    setStops(moved);
    return hasMoved;
}

bool Gradient::isStop(double position) const
{
    const QGradientStops existing = stops();
    return std::any_of(existing.cbegin(), existing.cend(),
        [position](const QGradientStop &stop) { return qFuzzyCompare(stop.first, position); });
}

QGradientStops Gradient::stops() const
{
    // QGradient::stops() shows black and white for an empty list. Only an empty list has a single
    // stop after one was set that is not among the two.
    const QGradientStops shown = qtgrad.stops();
    if (shown.size() != 2)
        return shown;

    QGradient probe = qtgrad;
    probe.setColorAt(0.5, Qt::black);
    return probe.stops().size() == 1 ? QGradientStops() : shown;
}

void Gradient::updategrad()
{
    colors.clear();
    for (const QGradientStop &stop : stops()) {
        const BoundColor color = boundColor(stop.second);
        colors.addColorPoint(static_cast<float>(stop.first), static_cast<float>(color.r),
            static_cast<float>(color.g), static_cast<float>(color.b), static_cast<float>(color.a));
    }
}

void Gradient::getColorFromValue(double value, int &r, int &g, int &b, int &a) const
{
    colors.getColorRawValue(static_cast<float>(value), r, g, b, a);
}

void Gradient::paint(QPainter *painter, const QRect &rect, const QPalette &palette) const
{
    Q_UNUSED(palette)
    QLinearGradient drawn = qtgrad;
    drawn.setStart(rect.topLeft());
    drawn.setFinalStop(rect.topRight());

    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->fillRect(rect, QBrush(drawn));
    painter->restore();
}

void Gradient::write(QJsonObject &json) const
{
    QJsonArray stopArray;
    for (const ColorPoint &point : colors.colorPoints())
        stopArray.append(QJsonArray{point.r, point.g, point.b, static_cast<double>(point.val)});
    json["name"] = name;
    json["stops"] = stopArray;
    json["min"] = colors.getMin();
    json["max"] = colors.getMax();
    json["minColor"] = toJson(colors.belowColor());
    json["maxColor"] = toJson(colors.aboveColor());
}

void Gradient::read(const QJsonObject &json)
{
    reset();
    name = json["name"].toString();
    setStops(stopsFromJson(json["stops"].toArray()));

    colors.setMin(json["min"].toInt());
    colors.setMax(json["max"].toInt());
    colors.setBelowColor(boundColor(json["minColor"].toArray()));
    colors.setAboveColor(boundColor(json["maxColor"].toArray()));
}

/// At once, because every single change rebuilds the colour table. A later stop at the position of
/// an earlier one replaces its colour.
void Gradient::setStops(const QGradientStops &wanted)
{
    // QGradient would drop the others too, but with a line on the host's console for each.
    QGradientStops onAxis;
    std::copy_if(wanted.cbegin(), wanted.cend(), std::back_inserter(onAxis),
        [](const QGradientStop &stop) { return isOnAxis(stop.first); });
    qtgrad.setStops(onAxis);
    updategrad();
}
