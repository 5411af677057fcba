#include "FrameClock.h"
#include "Measurements.h"
#include "Statistics.h"
#include "Stopwatch.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QFile>
#include <QTimer>
#include <QVTKOpenGLNativeWidget.h>

#include <array>

namespace {

constexpr int millisecondsBetweenBuffers = 100;

/// Hands buffers over at the sensor's rate, from the GUI thread, as a host does.
class Stream
{
public:
    Stream(Pipeline &pipeline, int side)
        : frames{surface(side, 0.0f), surface(side, 1.0f)}
    {
        timer.setTimerType(Qt::PreciseTimer);
        QObject::connect(&timer, &QTimer::timeout, &timer,
            [this, &pipeline, side] { pipeline.setBuffer(frames[turn++ % 2], side); });
    }

    void start() { timer.start(millisecondsBetweenBuffers); }
    Heights &buffer() { return frames[0]; }

private:
    std::array<Heights, 2> frames;
    std::size_t turn = 0;
    QTimer timer;
};

/// Notes the time from each tick of the GUI thread to the next.
class Heartbeat
{
public:
    Heartbeat()
    {
        timer.setTimerType(Qt::PreciseTimer);
        QObject::connect(&timer, &QTimer::timeout, &timer, [this] { beat(); });
        timer.start(1);
    }

    /// The one that is still open included.
    std::vector<double> gapsSoFar()
    {
        beat();
        return gaps;
    }

private:
    void beat()
    {
        gaps.push_back(sinceTick.milliseconds());
        sinceTick.restart();
    }

    std::vector<double> gaps;
    Stopwatch sinceTick;
    QTimer timer;
};

/// \param name a field of /proc/self/status, in kB there
/// \return bytes
double processMemory(const QByteArray &name)
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return 0.0;
    for (const QByteArray &line : status.readAll().split('\n')) {
        if (line.startsWith(name + ':'))
            return 1024.0 * line.mid(name.size() + 1).simplified().split(' ').first().toDouble();
    }
    return 0.0;
}

} // namespace

QJsonObject measureMemory(Pipeline &pipeline, const Task &task)
{
    Stream stream(pipeline, task.side);
    FrameClock clock(pipeline);
    const double before = processMemory("VmRSS");
    stream.start();
    while (clock.shownClouds() < task.repeats)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    return {{"bytes_per_point", (processMemory("VmHWM") - before) / task.points()}};
}

QJsonObject measureStall(Pipeline &pipeline, const Task &task)
{
    Stream stream(pipeline, task.side);
    FrameClock clock(pipeline);
    clock.show(stream.buffer(), task.side);
    FrameClock::settle();

    const int before = clock.shownClouds();
    const Stopwatch watch;
    stream.start();
    Heartbeat heartbeat;
    QEventLoop loop;
    QTimer::singleShot(task.repeats * millisecondsBetweenBuffers, &loop, &QEventLoop::quit);
    loop.exec();
    const std::vector<double> gaps = heartbeat.gapsSoFar();
    const double seconds = watch.milliseconds() / 1000.0;
    return {{"ms", quantile(gaps, 1.0)}, {"p99_ms", quantile(gaps, 0.99)},
        {"clouds_per_second", (clock.shownClouds() - before) / seconds}};
}
