#include "CloudPMainWindow.h"

#include <QCloseEvent>

CloudPMainWindow::CloudPMainWindow(QWidget *parent)
    : QMainWindow(parent)
{ }

void CloudPMainWindow::closeEvent(QCloseEvent *event)
{
    if (event->type() == QEvent::Close)
        Q_EMIT windowClosed();
}
