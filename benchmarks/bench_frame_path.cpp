// Measures the road of a buffer as a host sees it: handed over -> on screen, first and steady, and
// the peak memory that it takes. Each size runs in a process of its own, so that peaks do not mix.

#include "Olvik3DViewerControl.h"
#include "Olvik3DViewerWidget.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QElapsedTimer>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <vector>

namespace {

using Heights = std::vector<float>;

/// Two frames in turn, so that no stage can find that nothing has changed.
Heights surface(int size, float phase)
{
    Heights heights(static_cast<std::size_t>(size) * static_cast<std::size_t>(size));
    for (int row = 0; row < size; ++row) {
        const float wave = 40.0f * std::sin(static_cast<float>(row) * 0.02f + phase);
        for (int column = 0; column < size; ++column) {
            heights[static_cast<std::size_t>(row) * static_cast<std::size_t>(size)
                + static_cast<std::size_t>(column)] =
                100.0f + wave * std::cos(static_cast<float>(column) * 0.013f);
        }
    }
    return heights;
}

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

/// Hands buffers over and waits for each until the window shows it.
class FrameClock
{
public:
    explicit FrameClock(Olvik3DViewerControl &control)
        : viewer(control)
    {
        for (QWidget *window : QApplication::topLevelWidgets()) {
            if (auto *found = window->findChild<Olvik3DViewerWidget *>())
                view = found;
        }
        // Queued behind the widget's own slot: whatever is swapped from here on shows the buffer.
        QObject::connect(
            view, &Olvik3DViewerWidget::mRender, view, [this] { isRendered = true; },
            Qt::QueuedConnection);
        QObject::connect(
            view, &QOpenGLWidget::frameSwapped, view, [this] { isShown = isRendered; });
    }

    double millisecondsToShow(Heights &heights, int size)
    {
        isRendered = isShown = false;
        QElapsedTimer timer;
        timer.start();
        viewer.setBuffer(heights.data(), size, size);
        while (!isShown)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        return static_cast<double>(timer.nsecsElapsed()) / 1e6;
    }

private:
    Olvik3DViewerControl &viewer;
    Olvik3DViewerWidget *view = nullptr;
    bool isRendered = false;
    bool isShown = false;
};

QJsonObject measure(int size, int frames)
{
    Heights first = surface(size, 0.0f);
    Heights second = surface(size, 1.0f);
    Olvik3DViewerControl viewer(QStringLiteral("benchmark"), nullptr, nullptr);
    viewer.show();
    QCoreApplication::processEvents();
    const double memoryBefore = processMemory("VmRSS");

    FrameClock clock(viewer);
    const double firstFrame = clock.millisecondsToShow(first, size);
    std::vector<double> steady;
    for (int i = 0; i < frames; ++i)
        steady.push_back(clock.millisecondsToShow(i % 2 ? first : second, size));
    std::sort(steady.begin(), steady.end());

    const double points = static_cast<double>(size) * static_cast<double>(size);
    return {{"size", size}, {"points", points}, {"first_ms", firstFrame},
        {"steady_median_ms", steady[steady.size() / 2]}, {"steady_min_ms", steady.front()},
        {"steady_max_ms", steady.back()},
        {"peak_bytes_per_point", (processMemory("VmHWM") - memoryBefore) / points}};
}

int measureOne(int argc, char *argv[], int size, int frames)
{
    QApplication application(argc, argv);
    std::puts(QJsonDocument(measure(size, frames)).toJson(QJsonDocument::Compact).constData());
    return 0;
}

QJsonObject measureInProcess(const QString &program, const QString &size, const QString &frames)
{
    QProcess child;
    child.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    child.start(program, {QStringLiteral("--only"), size, QStringLiteral("--frames"), frames});
    child.waitForFinished(-1);
    return QJsonDocument::fromJson(child.readAllStandardOutput()).object();
}

void printRow(const QJsonObject &row)
{
    std::printf("%6d x %-6d %10.1f %14.1f %10.1f %10.1f %16.1f\n", row["size"].toInt(),
        row["size"].toInt(), row["first_ms"].toDouble(), row["steady_median_ms"].toDouble(),
        row["steady_min_ms"].toDouble(), row["steady_max_ms"].toDouble(),
        row["peak_bytes_per_point"].toDouble());
    std::fflush(stdout);
}

} // namespace

int main(int argc, char *argv[])
{
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments.append(QString::fromLocal8Bit(argv[i]));
    QCommandLineParser parser;
    parser.addOptions({{"sizes", "Edge lengths, separated by commas.", "list", "1024,2048,4096"},
        {"frames", "Frames for each size after the first.", "count", "15"},
        {"json", "Also write the figures to a file.", "file"}, {"only", "Measure one size.", "n"}});
    parser.addHelpOption();
    parser.process(arguments);
    const QString frames = parser.value("frames");
    if (parser.isSet("only"))
        return measureOne(argc, argv, parser.value("only").toInt(), std::max(1, frames.toInt()));

    std::printf("%15s %10s %14s %10s %10s %16s\n", "heights", "first ms", "steady median", "min",
        "max", "peak bytes/point");
    QJsonArray rows;
    for (const QString &size : parser.value("sizes").split(',')) {
        const QJsonObject row = measureInProcess(arguments.first(), size, frames);
        if (row.isEmpty())
            return 1;
        printRow(row);
        rows.append(row);
    }
    QFile json(parser.value("json"));
    if (parser.isSet("json")
        && (!json.open(QIODevice::WriteOnly) || json.write(QJsonDocument(rows).toJson()) < 0))
        return 1;
    return 0;
}
