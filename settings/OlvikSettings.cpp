#include "OlvikSettings.h"

#include "IniText.h"

#include <QFile>
#include <QMutexLocker>
#include <QThread>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

QSettings::Format format()
{
    static const QSettings::Format ini =
        QSettings::registerFormat(QStringLiteral("ini"), IniText::read, IniText::write);
    return ini;
}

/// Not while a process that lives has signed it. Empty, it may be about to be signed.
bool mayBeAbandoned(int lock)
{
    struct stat state = {};
    const bool isThere = ::fstat(lock, &state) == 0 && state.st_nlink > 0;
    return isThere && (state.st_size == 0 || ::flock(lock, LOCK_EX | LOCK_NB) == 0);
}

/// A process that crashes leaves its lock. Qt waits 30 seconds when it was not signed yet, and when
/// another process got the number it is signed with, as in a container. But the system's own lock
/// on it ends with the process.
void removeAbandonedLock(const QString &path)
{
    constexpr int attempts = 20;
    const int lock = ::open(QFile::encodeName(path).constData(), O_RDWR | O_CLOEXEC);
    if (lock < 0)
        return;
    // Qt gives the system's lock back just before it removes its own.
    for (int attempt = 0; attempt < attempts && mayBeAbandoned(lock); ++attempt)
        QThread::msleep(10);
    // Looked at once it is ours: another starter may have removed it, and a third may have made its
    // own, which has the path now.
    if (::flock(lock, LOCK_EX | LOCK_NB) == 0 && mayBeAbandoned(lock))
        QFile::remove(path);
    ::close(lock);
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
