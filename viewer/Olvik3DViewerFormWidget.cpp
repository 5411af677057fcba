#include "Olvik3DViewerFormWidget.h"

#include "Olvik3DViewerControl.h"

#include <QPainter>

Olvik3DViewerFormWidget::Olvik3DViewerFormWidget(QWidget *parent, Kind kind)
    : QWidget(parent)
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    if (kind == Placeholder)
        return;
    viewer = new Olvik3DViewerControl(QString(), this, nullptr);
    // The view starts hidden for its own sake; it follows this widget from here.
    for (QWidget *view : findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly))
        view->setVisible(true);
}

void Olvik3DViewerFormWidget::paintEvent(QPaintEvent *event)
{
    QWidget::paintEvent(event);
    if (viewer)
        return;
    QPainter painter(this);
    painter.fillRect(rect(), Qt::black);
    painter.setPen(Qt::white);
    painter.drawText(rect(), Qt::AlignCenter, objectName());
}
