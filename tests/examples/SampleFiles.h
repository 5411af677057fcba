#pragma once

#include <QFile>

/// One of the files beside the tests.
inline QByteArray sample(const QString &name)
{
    QFile file(QStringLiteral(SAMPLES "/") + name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}
