#include "GradientColor.h"

GradientColor::GradientColor(QWidget *parent)
    : QFrame(parent)
{ }

void GradientColor::mouseDoubleClickEvent(QMouseEvent *event)
{
    Q_UNUSED(event)
    Q_EMIT doubleClick();
}
