#include "Report.h"

#include <cstdio>

void reportError(const QString &message)
{
    // Names of files may contain line ends.
    const QByteArray line = "scan_host: " + message.simplified().toLocal8Bit() + '\n';
    std::fputs(line.constData(), stderr);
}
