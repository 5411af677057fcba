#include "ConsoleReceiver.h"

#include <QByteArray>
#include <QIODevice>

namespace {

QByteArray text(double value)
{
    return QByteArray::number(value, 'g', 10);
}

} // namespace

ConsoleReceiver::ConsoleReceiver(QIODevice &lines)
    : out(lines)
{ }

void ConsoleReceiver::viewerClosed(const char *windowName)
{
    print(QByteArray("closed ") + windowName);
    Q_EMIT closed();
}

void ConsoleReceiver::printPoint(double *xyz)
{
    print("picked " + text(xyz[0]) + ' ' + text(xyz[1]) + ' ' + text(xyz[2]));
}

void ConsoleReceiver::printDistance(double distance)
{
    print("distance " + text(distance));
}

void ConsoleReceiver::print(const QByteArray &line)
{
    out.write(line + '\n');
}
