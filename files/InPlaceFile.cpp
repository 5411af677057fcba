#include "InPlaceFile.h"

#include <QDeadlineTimer>
#include <QFile>

#include <cerrno>
#include <csignal>
#include <ctime>

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace std::chrono_literals;

namespace {

constexpr auto patience = 5s;

/// Keeps the end of a pipe's reader from ending the host: the write fails instead.
class BrokenPipeGuard
{
public:
    BrokenPipeGuard()
    {
        sigemptyset(&brokenPipe);
        sigaddset(&brokenPipe, SIGPIPE);
        pthread_sigmask(SIG_BLOCK, &brokenPipe, &before);
    }
    ~BrokenPipeGuard()
    {
        const timespec now = {0, 0};
        if (sigismember(&before, SIGPIPE) == 0)
            sigtimedwait(&brokenPipe, nullptr, &now);
        pthread_sigmask(SIG_SETMASK, &before, nullptr);
    }
    Q_DISABLE_COPY_MOVE(BrokenPipeGuard)

private:
    sigset_t brokenPipe;
    sigset_t before;
};

/// \return whether another attempt to write is worth it
bool waitForReader(int descriptor, QDeadlineTimer deadline)
{
    pollfd reader = {descriptor, POLLOUT, 0};
    ::poll(&reader, 1, static_cast<int>(deadline.remainingTime()));
    return !deadline.hasExpired();
}

} // namespace

bool InPlaceFile::open(OpenMode mode)
{
    if (path.contains(QChar::Null))
        return false;
    const QByteArray name = QFile::encodeName(path);
    descriptor = ::open(name.constData(), O_WRONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    return descriptor >= 0 && QIODevice::open(mode);
}

void InPlaceFile::close()
{
    QIODevice::close();
    if (descriptor >= 0)
        ::close(descriptor);
    descriptor = -1;
}

bool InPlaceFile::reserve(qint64 size)
{
    const qint64 before = fileSize();
    if (before >= size || ::posix_fallocate(descriptor, before, size - before) == 0)
        return true;
    // Where the file system cannot reserve, bytes were written for it.
    [[maybe_unused]] const int taken = ::ftruncate(descriptor, before);
    return false;
}

bool InPlaceFile::finish()
{
    const bool isStored = isSequential() || (::ftruncate(descriptor, pos()) == 0 && sync());
    close();
    return isStored;
}

qint64 InPlaceFile::writeData(const char *data, qint64 size)
{
    const BrokenPipeGuard guard;
    QDeadlineTimer deadline(patience);
    qint64 written = 0;
    while (written < size) {
        const ssize_t count =
            ::write(descriptor, data + written, static_cast<std::size_t>(size - written));
        if (count > 0) {
            written += count;
            deadline = QDeadlineTimer(patience);
        } else if (count == 0 || (errno != EINTR && errno != EAGAIN)
            || !waitForReader(descriptor, deadline)) {
            break;
        }
    }
    return written;
}

bool InPlaceFile::sync()
{
    // Not every file system knows how to.
    return ::fsync(descriptor) == 0 || errno == EINVAL;
}

qint64 InPlaceFile::fileSize() const
{
    struct stat state = {};
    return ::fstat(descriptor, &state) == 0 && S_ISREG(state.st_mode) ? state.st_size : -1;
}
