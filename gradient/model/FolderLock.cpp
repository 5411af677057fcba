#include "FolderLock.h"

#include <QFile>
#include <QString>
#include <QThread>

#include <cerrno>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace {

constexpr int attempts = 1000;
constexpr unsigned long pauseMs = 1;

bool isHeldByAnother(int descriptor)
{
    return ::flock(descriptor, LOCK_EX | LOCK_NB) != 0 && (errno == EWOULDBLOCK || errno == EINTR);
}

} // namespace

FolderLock::FolderLock(const QString &folder)
    : descriptor(::open(QFile::encodeName(folder), O_RDONLY | O_DIRECTORY | O_CLOEXEC))
{
    if (descriptor < 0)
        return;
    for (int attempt = 1; attempt < attempts && isHeldByAnother(descriptor); ++attempt)
        QThread::msleep(pauseMs);
}

FolderLock::~FolderLock()
{
    if (descriptor < 0)
        return;
    // A child that the host has forked meanwhile holds the descriptor, too.
    ::flock(descriptor, LOCK_UN);
    ::close(descriptor);
}
