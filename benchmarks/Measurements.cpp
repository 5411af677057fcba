#include "Measurements.h"

#include "FrameClock.h"
#include "OurPipeline.h"
#include "plain/PlainPipeline.h"
#include "Statistics.h"
#include "Stopwatch.h"

#include <QCoreApplication>
#include <QMouseEvent>
#include <QThread>
#include <QVTKOpenGLNativeWidget.h>

#include <array>

namespace {

constexpr int warmUpFrames = 3;

/// Two buffers in turn.
class Buffers
{
public:
    explicit Buffers(int side)
        : frames{surface(side, 0.0f), surface(side, 1.0f)}
    { }
    Heights &next() { return frames[turn++ % frames.size()]; }

private:
    std::array<Heights, 2> frames;
    std::size_t turn = 0;
};

/// A thread that works while this one waits.
class Worker
{
public:
    Worker()
    {
        context.moveToThread(&thread);
        thread.start();
    }
    ~Worker()
    {
        thread.quit();
        thread.wait();
    }
    Worker(const Worker &) = delete;
    Worker &operator=(const Worker &) = delete;

    double millisecondsOf(const std::function<void()> &job)
    {
        double elapsed = 0.0;
        const auto timed = [&job, &elapsed] {
            const Stopwatch watch;
            job();
            elapsed = watch.milliseconds();
        };
        QMetaObject::invokeMethod(&context, timed, Qt::BlockingQueuedConnection);
        return elapsed;
    }

private:
    QThread thread;
    QObject context;
};

struct Update
{
    double copy;
    double conversion;
    double toScreen;
    double redraw;

    double apartFromDrawing() const { return copy + conversion + toScreen - redraw; }
};

Update timedUpdate(
    Pipeline &pipeline, FrameClock &clock, Worker &worker, Heights &heights, int side)
{
    const Stopwatch watch;
    const std::function<void()> conversion = pipeline.conversionOf(heights, side);
    const double copy = watch.milliseconds();
    const double converting = worker.millisecondsOf(conversion);
    const double toScreen = clock.showConverted();
    return {copy, converting, toScreen, clock.redraw()};
}

std::vector<Update> timedUpdates(
    Pipeline &pipeline, FrameClock &clock, Buffers &buffers, const Task &task)
{
    Worker worker;
    std::vector<Update> updates;
    for (int i = 0; i < warmUpFrames + task.repeats; ++i) {
        const Update update = timedUpdate(pipeline, clock, worker, buffers.next(), task.side);
        if (i >= warmUpFrames)
            updates.push_back(update);
    }
    return updates;
}

std::vector<double> valuesOf(const std::vector<Update> &updates, double (*part)(const Update &))
{
    std::vector<double> values;
    for (const Update &update : updates)
        values.push_back(part(update));
    return values;
}

QJsonObject numbersOf(const std::vector<Update> &updates)
{
    const auto cost = valuesOf(updates, [](const Update &each) { return each.apartFromDrawing(); });
    const auto copy = valuesOf(updates, [](const Update &each) { return each.copy; });
    const auto conversion = valuesOf(updates, [](const Update &each) { return each.conversion; });
    const auto toScreen = valuesOf(updates, [](const Update &each) { return each.toScreen; });
    const auto redraw = valuesOf(updates, [](const Update &each) { return each.redraw; });
    return {{"ms", median(cost)}, {"lower_quartile_ms", quantile(cost, 0.25)},
        {"upper_quartile_ms", quantile(cost, 0.75)}, {"copy_ms", median(copy)},
        {"conversion_ms", median(conversion)}, {"to_screen_ms", median(toScreen)},
        {"redraw_ms", median(redraw)}};
}

/// What makes the colours; the GUI thread's part is a difference of two drawings, which scatters
/// more than colours cost.
double workersPart(const std::vector<Update> &updates)
{
    return median(
        valuesOf(updates, [](const Update &each) { return each.copy + each.conversion; }));
}

void moveMouse(QWidget &view, QEvent::Type type, int x)
{
    const bool isMove = type == QEvent::MouseMove;
    const bool isUp = type == QEvent::MouseButtonRelease;
    const QPoint at(x, view.height() / 2);
    QMouseEvent event(type, at, view.mapToGlobal(at), isMove ? Qt::NoButton : Qt::LeftButton,
        isUp ? Qt::NoButton : Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&view, &event);
}

QJsonObject measureViewer(const Task &task, QJsonObject (*measurement)(Pipeline &, const Task &))
{
    const std::unique_ptr<Pipeline> pipeline = pipelineOf(task.viewer);
    if (!pipeline)
        return {};
    FrameClock::settle();
    return measurement(*pipeline, task);
}

} // namespace

QJsonObject measureUpdate(Pipeline &pipeline, const Task &task)
{
    Buffers buffers(task.side);
    FrameClock clock(pipeline);
    const std::vector<Update> updates = timedUpdates(pipeline, clock, buffers, task);
    return numbersOf(updates);
}

QJsonObject measureGradient(Pipeline &pipeline, const Task &task)
{
    Buffers buffers(task.side);
    FrameClock clock(pipeline);
    const auto byHeight = timedUpdates(pipeline, clock, buffers, task);
    pipeline.colorBy(surfaceGradient());
    FrameClock::settle();
    const auto byGradient = timedUpdates(pipeline, clock, buffers, task);
    QJsonObject numbers = numbersOf(byGradient);
    numbers["all_ms"] = numbers["ms"];
    numbers["ms"] = workersPart(byGradient) - workersPart(byHeight);
    return numbers;
}

QJsonObject measureShown(Pipeline &pipeline, const Task &task)
{
    Buffers buffers(task.side);
    FrameClock clock(pipeline);
    for (int i = 0; i < warmUpFrames; ++i)
        clock.show(buffers.next(), task.side);
    std::vector<double> frames;
    for (int i = 0; i < task.repeats; ++i)
        frames.push_back(clock.show(buffers.next(), task.side));
    return {{"ms", median(frames)}, {"least_ms", quantile(frames, 0.0)},
        {"longest_ms", quantile(frames, 1.0)}};
}

QJsonObject measureFirst(Pipeline &pipeline, const Task &task)
{
    Buffers buffers(task.side);
    FrameClock clock(pipeline);
    return {{"ms", clock.show(buffers.next(), task.side)}};
}

QJsonObject measureRotation(Pipeline &pipeline, const Task &task)
{
    constexpr int pixelsPerStep = 3;
    Buffers buffers(task.side);
    FrameClock clock(pipeline);
    clock.show(buffers.next(), task.side);
    QWidget &view = pipeline.view();
    int x = view.width() / 4;
    moveMouse(view, QEvent::MouseButtonPress, x);
    std::vector<double> steps;
    for (int i = 0; i < task.repeats; ++i) {
        x += pixelsPerStep;
        steps.push_back(clock.showChange([&] { moveMouse(view, QEvent::MouseMove, x); }));
    }
    moveMouse(view, QEvent::MouseButtonRelease, x);
    return {
        {"ms", median(steps)}, {"first_ms", steps.front()}, {"longest_ms", quantile(steps, 1.0)}};
}

std::unique_ptr<Pipeline> pipelineOf(const QString &name)
{
    if (name == QLatin1String("ours"))
        return std::make_unique<OurPipeline>();
    if (name == QLatin1String("plain"))
        return std::make_unique<PlainPipeline>();
    return nullptr;
}

QJsonObject measure(const Task &task)
{
    const std::pair<const char *, QJsonObject (*)(Pipeline &, const Task &)> ofViewers[] = {
        {"update", measureUpdate}, {"gradient", measureGradient}, {"shown", measureShown},
        {"first", measureFirst}, {"rotation", measureRotation}, {"memory", measureMemory},
        {"stall", measureStall}};
    for (const auto &[figure, measurement] : ofViewers) {
        if (task.figure == QLatin1String(figure))
            return measureViewer(task, measurement);
    }
    if (task.figure == QLatin1String("save"))
        return measureSave(task);
    if (task.figure == QLatin1String("bandwidth"))
        return measureBandwidth(task);
    return {};
}
