#include "GradientFactory.h"

namespace {

Gradient twoStops(const QColor &first, const QColor &last)
{
    Gradient gradient;
    gradient.addStop(0.0f, first);
    gradient.addStop(1.0f, last);
    return gradient;
}

} // namespace

Gradient GradientFactory::WhiteAndBlack()
{
    return twoStops(Qt::white, Qt::black);
}

Gradient GradientFactory::BlackAndWhite()
{
    return twoStops(Qt::black, Qt::white);
}
