// Any changes of a gradient, then its record and its colours.
#include "FuzzSupport.h"

#include "Gradient.h"

#include <QImage>
#include <QPainter>
#include <QPalette>

#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>

namespace {

template <typename Float> Float anyBits(FuzzedDataProvider &input)
{
    Float value = 0;
    input.ConsumeData(&value, sizeof value);
    return value;
}

QColor anyColor(FuzzedDataProvider &input)
{
    return QColor::fromRgba(input.ConsumeIntegral<QRgb>());
}

/// Qt warns of a position off the axis, and may warn of no other.
void addStopAnywhere(Gradient &gradient, FuzzedDataProvider &input)
{
    const float position = anyBits<float>(input);
    if (position >= 0.0F && position <= 1.0F)
        return gradient.addStop(position, anyColor(input));

    const auto ignore = [](QtMsgType, const QMessageLogContext &, const QString &) {};
    const QtMessageHandler strict = qInstallMessageHandler(ignore);
    gradient.addStop(position, anyColor(input));
    qInstallMessageHandler(strict);
}

void change(Gradient &gradient, FuzzedDataProvider &input)
{
    const QGradientStops stops = gradient.stops();
    // The record keeps single precision, like addStop().
    const auto position = [&] {
        const bool isKnown = !stops.isEmpty() && input.ConsumeBool();
        return isKnown ? stops[input.ConsumeIntegralInRange(0, stops.size() - 1)].first
                       : anyBits<float>(input);
    };
    switch (input.ConsumeIntegralInRange(0, 5)) {
    case 0:
        return gradient.addStop(input.ConsumeProbability<float>(), anyColor(input));
    case 1:
        return addStopAnywhere(gradient, input);
    case 2:
        return gradient.removeStop(position());
    case 3:
        gradient.moveStop(position(), position());
        return;
    case 4:
        return gradient.setMin(anyBits<double>(input), anyColor(input));
    default:
        return gradient.setMax(anyBits<double>(input), anyColor(input));
    }
}

QJsonObject recordOf(const Gradient &gradient)
{
    QJsonObject record;
    gradient.write(record);
    return record;
}

void checkStops(const Gradient &gradient)
{
    const QGradientStops stops = gradient.stops();
    const auto isBefore = [](const auto &a, const auto &b) { return a.first < b.first; };
    require(std::is_sorted(stops.begin(), stops.end(), isBefore), "stops ascend");
    for (const QGradientStop &stop : stops)
        require(stop.first >= 0.0 && stop.first <= 1.0, "stops lie on the axis");
}

void checkColor(const Gradient &gradient, double value)
{
    int color[4] = {};
    gradient.getColorFromValue(value, color[0], color[1], color[2], color[3]);
    for (const int component : color)
        require(component >= 0 && component <= 255, "colours are colours");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, std::size_t size)
{
    static const QString folder = startFuzzing();
    FuzzedDataProvider input(data, size);
    Gradient gradient;
    while (input.remaining_bytes() > 8) {
        change(gradient, input);
        checkStops(gradient);
    }
    for (const double value : {anyBits<double>(input), gradient.getMin(), gradient.getMax(),
             (gradient.getMin() + gradient.getMax()) / 3})
        checkColor(gradient, value);

    Gradient copy;
    copy.read(recordOf(gradient));
    require(recordOf(copy) == recordOf(gradient), "a record survives its way");

    QImage image(16, 2, QImage::Format_ARGB32);
    QPainter painter(&image);
    copy.paint(&painter, image.rect(), QPalette());
    return 0;
}
