#include "Heights.h"
#include "Measurements.h"
#include "plain/PlainConverter.h"
#include "plain/PlainWriter.h"
#include "PlyWriter.h"
#include "Statistics.h"
#include "Stopwatch.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

namespace {

/// In memory where the machine offers that: what is measured is the making of the text.
QString scratchFolder()
{
    const QString memory = QStringLiteral("/dev/shm");
    return (QFileInfo(memory).isWritable() ? memory : QDir::tempPath())
        + QStringLiteral("/bench_compare-XXXXXX");
}

} // namespace

QJsonObject measureSave(const Task &task)
{
    const Heights heights = surface(task.side, 0.0f);
    const auto cloud = PlainConverter::pointsOf(heights.data(), task.side, task.side);
    const auto write = task.viewer == QLatin1String("ours") ? writePly : writePlain;
    const QTemporaryDir folder(scratchFolder());
    const QString path = folder.filePath(QStringLiteral("cloud.ply"));
    std::vector<double> times;
    for (int i = 0; i < task.repeats; ++i) {
        const Stopwatch watch;
        if (!write(*cloud, path))
            return {};
        times.push_back(watch.milliseconds());
    }
    return {{"ms", median(times)}, {"bytes", static_cast<double>(QFileInfo(path).size())}};
}
