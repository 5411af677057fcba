#pragma once

#include "IEvent3DViewerReceiver.h"

#include <QObject>

class QIODevice;

/// Prints what the viewer reports, one line an event.
class ConsoleReceiver : public QObject, public IEvent3DViewerReceiver
{
    Q_OBJECT

public:
    /// \param lines where to print; borrowed
    explicit ConsoleReceiver(QIODevice &lines);

    void viewerClosed(const char *windowName) override;

public Q_SLOTS:
    void printPoint(double *xyz);
    void printDistance(double distance);

Q_SIGNALS:
    void closed();

private:
    void print(const QByteArray &line);

    QIODevice &out;
};
