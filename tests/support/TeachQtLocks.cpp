// Linked into executables of ThreadSanitizer builds only. The distribution's Qt is not instrumented
// and its mutex and thread need no function that the sanitizer knows: what they order would look
// like a race. These take the place of Qt's functions in calls from our code and tell the
// sanitizer.

#include <QtCore>

#include <dlfcn.h>

extern "C" void __tsan_acquire(void *);
extern "C" void __tsan_release(void *);

namespace {

template <typename Function> Function *qtsOwn(const char *symbol)
{
    return reinterpret_cast<Function *>(dlsym(RTLD_NEXT, symbol));
}

/// One for signals of the GUI thread, one for those of all others.
char handOver[2];

bool isGuiThread()
{
    return qApp && QThread::currentThread() == qApp->thread();
}

/// Called by Qt in the receiving thread before each event.
bool onEvent(void **receiverEventResult)
{
    const auto *event = static_cast<const QEvent *>(receiverEventResult[1]);
    if (event->type() == QEvent::MetaCall)
        __tsan_acquire(&handOver[isGuiThread() ? 1 : 0]);
    return false;
}

const bool isListening = QInternal::registerCallback(QInternal::EventNotifyCallback, onEvent);

} // namespace

/// What was done before a queued signal is known to whoever receives it.
__attribute__((visibility("default"))) void QMetaObject::activate(
    QObject *sender, const QMetaObject *object, int signal, void **arguments)
{
    static auto *const own = qtsOwn<void(QObject *, const QMetaObject *, int, void **)>(
        "_ZN11QMetaObject8activateEP7QObjectPKS_iPPv");
    __tsan_release(&handOver[isGuiThread() ? 0 : 1]);
    own(sender, object, signal, arguments);
}

__attribute__((visibility("default"))) void QMutex::lock()
{
    static auto *const own = qtsOwn<void(QMutex *)>("_ZN6QMutex4lockEv");
    own(this);
    __tsan_acquire(this);
}

__attribute__((visibility("default"))) void QMutex::unlock()
{
    static auto *const own = qtsOwn<void(QMutex *)>("_ZN6QMutex6unlockEv");
    __tsan_release(this);
    own(this);
}

__attribute__((visibility("default"))) void QThread::start(Priority priority)
{
    static auto *const own = qtsOwn<void(QThread *, Priority)>("_ZN7QThread5startENS_8PriorityE");
    // In the thread itself, as its last signal.
    connect(
        this, &QThread::finished, this, [this] { __tsan_release(this); }, Qt::DirectConnection);
    own(this, priority);
}

__attribute__((visibility("default"))) bool QThread::wait(QDeadlineTimer deadline)
{
    static auto *const own =
        qtsOwn<bool(QThread *, QDeadlineTimer)>("_ZN7QThread4waitE14QDeadlineTimer");
    const bool hasFinished = own(this, deadline);
    __tsan_acquire(this);
    return hasFinished;
}
