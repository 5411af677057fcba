#include "Machine.h"

#include <QDate>
#include <QFile>
#include <QSysInfo>
#include <QThread>

#include <cstdlib>

namespace {

QString processorName()
{
    QFile file(QStringLiteral("/proc/cpuinfo"));
    if (!file.open(QIODevice::ReadOnly))
        return QSysInfo::currentCpuArchitecture();
    for (const QByteArray &line : file.readAll().split('\n')) {
        if (line.startsWith("model name"))
            return QString::fromLatin1(line.mid(line.indexOf(':') + 1).trimmed());
    }
    return QSysInfo::currentCpuArchitecture();
}

} // namespace

QString machineText()
{
    double load = 0.0;
    getloadavg(&load, 1);
    return QStringLiteral("%1, %2 cores, load before the run %3, %4, software OpenGL, %5")
        .arg(processorName())
        .arg(QThread::idealThreadCount())
        .arg(load, 0, 'f', 1)
        .arg(QSysInfo::prettyProductName(), QDate::currentDate().toString(Qt::ISODate));
}
