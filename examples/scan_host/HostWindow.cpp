#include "HostWindow.h"

#include <QLabel>
#include <QStatusBar>

HostWindow::HostWindow(const QString &title)
    : status(new QLabel(this))
{
    setWindowTitle(title);
    setCentralWidget(new QWidget(this));
    statusBar()->addWidget(status);
    showBufferCount(0);
    resize(800, 600);
}

void HostWindow::showBufferCount(int count)
{
    status->setText(tr("Buffers: %1").arg(count));
}
