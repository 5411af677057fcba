#include "Olvik3DViewerControl.h"

#include "LiveViewers.h"
#include "Olvik3DViewerPrivate.h"

#include <QApplication>
#include <QThread>
#include <QWidget>

#include <string>
#include <utility>

Olvik3DViewerControl::Olvik3DViewerControl(
    QString name, QWidget *parent, IEvent3DViewerReceiver *closingReceiver)
    : QObject(parent)
    , receiver(closingReceiver)
    , d(new Olvik3DViewerPrivate(parent))
{
    connect(d, &Olvik3DViewerPrivate::pointPicked, this, &Olvik3DViewerControl::pointPicked);
    connect(d, &Olvik3DViewerPrivate::distancePicked, this, &Olvik3DViewerControl::distancePicked);
    connect(d, &Olvik3DViewerPrivate::closed, this, &Olvik3DViewerControl::onDeleteViewer);
    d->setWindowName(name);
    windowName = std::move(name);
}

Olvik3DViewerControl::~Olvik3DViewerControl()
{
    // Where another thread calls exit(), the GUI thread may be in the middle of the viewer.
    if (!d || LiveViewers::hasThreadEnded() || d->thread() != QThread::currentThread())
        return;
    disconnect(d, nullptr, this, nullptr);
    d->retire();
}

void Olvik3DViewerControl::setWindowName(QString name)
{
    if (d)
        d->setWindowName(std::move(name));
}

bool Olvik3DViewerControl::isVisible()
{
    return d && d->isVisible();
}

void Olvik3DViewerControl::setBuffer(float *buffer, int width, int height)
{
    if (d)
        d->setBuffer(buffer, width, height);
}

void Olvik3DViewerControl::setSensorHeight(int sensorHeight)
{
    if (d)
        d->setSensorHeight(sensorHeight);
}

void Olvik3DViewerControl::show()
{
    if (d)
        d->show();
}

void Olvik3DViewerControl::hide()
{
    if (d)
        d->hide();
}

void Olvik3DViewerControl::setScale(int scale)
{
    if (d)
        d->setScale(scale);
}

void Olvik3DViewerControl::exec()
{
    QApplication::exec();
}

void Olvik3DViewerControl::onDeleteViewer()
{
    if (!receiver)
        return;
    const std::string name = windowName.toStdString();
    receiver->viewerClosed(name.c_str());
}
