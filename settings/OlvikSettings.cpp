#include "OlvikSettings.h"

#include "IniText.h"

#include <QFile>
#include <QFileInfo>
#include <QMutexLocker>
#include <QThread>

namespace {

QSettings::Format format()
{
    static const QSettings::Format ini =
        QSettings::registerFormat(QStringLiteral("ini"), IniText::read, IniText::write);
    return ini;
}

/// Killed between making its lock and signing it, a process leaves an empty one, which Qt would
/// wait 30 seconds for.
void removeAbandonedLock(const QString &path)
{
    constexpr int attempts = 20;
    for (int attempt = 0; attempt < attempts; ++attempt) {
        const QFileInfo lock(path);
        if (!lock.exists() || lock.size() > 0)
            return;
        QThread::msleep(10);
    }
    QFile::remove(path);
}

} // namespace

std::shared_ptr<OlvikSettings> OlvikSettings::Instance()
{
    static const std::shared_ptr<OlvikSettings> instance(new OlvikSettings);
    return instance;
}

OlvikSettings::OlvikSettings()
    : store(
        format(), QSettings::UserScope, QStringLiteral("Olvik"), QStringLiteral("OlvikSettings"))
{
    // Other INI files of the system never shine through: what contains() denies, value() must not
    // know.
    store.setFallbacksEnabled(false);
}

QVariant OlvikSettings::value(const QString &key, const QVariant &defaultValue) const
{
    const QMutexLocker lock(&mutex);
    return store.value(key, defaultValue);
}

void OlvikSettings::setValue(const QString &key, const QVariant &value)
{
    const QMutexLocker lock(&mutex);
    store.setValue(key, value);
    write();
}

bool OlvikSettings::contains(const QString &key) const
{
    const QMutexLocker lock(&mutex);
    return store.contains(key);
}

void OlvikSettings::remove(const QString &key)
{
    const QMutexLocker lock(&mutex);
    store.remove(key);
    write();
}

void OlvikSettings::write()
{
    removeAbandonedLock(store.fileName() + QStringLiteral(".lock"));
    // QSettings writes from the event loop or at destruction; neither is sure to come in a host
    // that is killed, or that ends without an application object.
    store.sync();
}
