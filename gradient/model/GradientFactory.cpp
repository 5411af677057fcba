#include "GradientFactory.h"

namespace {

Gradient fromTo(const QColor &first, const QColor &last)
{
    Gradient gradient(0);
    gradient.addStop(0.0f, first);
    gradient.addStop(1.0f, last);
    return gradient;
}

} // namespace

Gradient GradientFactory::WhiteAndBlack()
{
    return fromTo(Qt::white, Qt::black);
}

Gradient GradientFactory::BlackAndWhite()
{
    return fromTo(Qt::black, Qt::white);
}
