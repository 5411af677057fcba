#include "SoakRun.h"

#include "Operations.h"

#include <QtWidgets>

#include <algorithm>
#include <cmath>

namespace {

constexpr int operationsBetweenQuiets = 200;
constexpr int quietMs = 300;
constexpr int longestWaitMs = 20000;
/// Fragments and caches; one kept cloud of the middle sizes is more.
constexpr double memoryNoiseMegabytes = 32;
constexpr double memoryNoiseShare = 0.1;
constexpr double heapNoiseMegabytes = 8;
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
// Most of it is what the sanitizer notes of each call that allocates, and of past accesses.
constexpr bool isResidentMemoryOurs = false;
#else
constexpr bool isResidentMemoryOurs = true;
#endif

const char *const garbage[] = {"", "ply\nformat ascii 1.0\nelement vertex 3\n",
    "ply\nformat binary_little_endian 1.0\nelement vertex 1000000000\nproperty float x\n"
    "property float y\nproperty float z\nend_header\nabc",
    "ply\nformat ascii 1.0\nelement vertex 2\nproperty float x\nproperty float y\n"
    "property float z\nend_header\n1 2 x\nnan inf\n"};

} // namespace

SoakRun::SoakRun(Journal &journalOfRun, std::uint64_t seed, int duration, QString homeFolder)
    : journal(journalOfRun)
    , master(seed)
    , seconds(duration)
    , home(std::move(homeFolder))
    , user(journal, folder.path())
    , places{ViewerSlot(journal), ViewerSlot(journal)}
    , start(ProcessFigures::now())
{
    writeGarbage();
    user.setHost([this](Choice &choice) {
        ViewerSlot &slot = places[static_cast<std::size_t>(choice.below(2))];
        if (slot.isAlive())
            hostActs(slot, choice, journal);
    });
    // Writes the same gradients.
    neighbour.start(QCoreApplication::applicationFilePath(),
        {QStringLiteral("gradients"), QString::number(seed)});
    clock.start();
    waiting.start();
    QTimer::singleShot(0, this, &SoakRun::step);
}

void SoakRun::writeGarbage()
{
    for (std::size_t i = 0; i < std::size(garbage); ++i) {
        QFile file(folder.filePath(QStringLiteral("garbage-%1.ply").arg(i)));
        if (file.open(QIODevice::WriteOnly))
            file.write(garbage[i]);
    }
}

void SoakRun::step()
{
    // Dialogs are answered and the receiver is told in their own time: the sequence of operations
    // must not depend on it.
    const bool isClosing = std::any_of(
        places.begin(), places.end(), [](const ViewerSlot &slot) { return slot.isClosing(); });
    if (user.isBusy() || isClosing) {
        if (waiting.elapsed() < longestWaitMs)
            return QTimer::singleShot(5, this, &SoakRun::step);
        journal.fail(isClosing ? QStringLiteral("the receiver was not told")
                               : QStringLiteral("a dialog does not go away"));
        journal.dump();
        return finish();
    }
    if (isOver() || journal.operations() - operationsAtQuiet >= operationsBetweenQuiets)
        return startQuiet();
    operate();
}

void SoakRun::operate()
{
    // A generator for each operation: how much one draws has no influence on the next.
    Choice choice(master.bits());
    const int place = choice.below(10) < 7 ? 0 : 1;
    ViewerSlot &slot = places[static_cast<std::size_t>(place)];
    const int pause = choice.oneIn(20) ? 250 : choice.below(15);
    user.use(Choice(choice.bits()));
    slot.use(Choice(choice.bits()));
    if (slot.isAlive()) {
        const Operation &operation = randomOperation(choice);
        journal.begin(QStringLiteral("%1 %2").arg(QLatin1String(operation.name)).arg(place));
        operation.run(slot, choice, journal, user);
    } else if (!slot.isInSlot()) {
        journal.begin(QStringLiteral("create %1").arg(place));
        slot.create(choice);
    }
    journal.beat();
    waiting.start();
    QTimer::singleShot(pause, this, &SoakRun::step);
}

void SoakRun::startQuiet()
{
    journal.begin(QStringLiteral("quiet"));
    operationsAtQuiet = journal.operations();
    waiting.start();
    for (ViewerSlot &slot : places)
        slot.remove(false);
    QTimer::singleShot(quietMs, this, &SoakRun::measure);
}

void SoakRun::measure()
{
    // Deferred deletes may still be waiting behind whatever kept the event loop busy.
    const bool isGone = std::all_of(
        places.begin(), places.end(), [](const ViewerSlot &slot) { return slot.isGone(); });
    if (!isGone && waiting.elapsed() < longestWaitMs)
        return QTimer::singleShot(quietMs, this, &SoakRun::measure);
    for (ViewerSlot &slot : places) {
        slot.dropHost();
        slot.checkNothingIsLeft();
    }
    for (const QWidget *widget : QApplication::topLevelWidgets()) {
        if (widget->isVisible())
            journal.fail(
                QStringLiteral("left on the screen: %1").arg(widget->metaObject()->className()));
    }
    // Gradients and settings of the past would make one quiet state differ from the next.
    QDir(home).removeRecursively();
    quietFigures.push_back(ProcessFigures::now());
    waiting.start();
    if (isOver())
        return finish();
    step();
}

bool SoakRun::isOver() const
{
    return clock.elapsed() >= 1000LL * seconds || journal.failures() > 0;
}

void SoakRun::finish()
{
    if (neighbour.state() != QProcess::Running)
        journal.fail(QStringLiteral("the other process on the gradients has ended"));
    neighbour.kill();
    neighbour.waitForFinished();
    checkGrowth(quietMedian(0.4, 0.6), quietMedian(0.8, 1.0));
    if (journal.failures() > 0)
        journal.dump();
    QCoreApplication::exit(journal.failures() > 0 ? 1 : 0);
}

/// \return for each figure the median of the quiet states in a part of the run
ProcessFigures SoakRun::quietMedian(double from, double to) const
{
    if (quietFigures.empty())
        return start;
    const auto last = static_cast<double>(quietFigures.size() - 1);
    const auto first = quietFigures.begin() + std::lround(std::floor(from * last));
    std::vector<ProcessFigures> part(first, quietFigures.begin() + std::lround(to * last) + 1);
    const auto median = [&part](auto member) {
        std::sort(part.begin(), part.end(),
            [member](const auto &a, const auto &b) { return a.*member < b.*member; });
        return part[part.size() / 2].*member;
    };
    return {median(&ProcessFigures::megabytes), median(&ProcessFigures::heapMegabytes),
        median(&ProcessFigures::descriptors), median(&ProcessFigures::threads)};
}

void SoakRun::checkGrowth(const ProcessFigures &middle, const ProcessFigures &end)
{
    // Before a few rounds libraries still start their pools and fill their caches.
    if (quietFigures.size() < 6)
        return;
    const double noise = std::max(memoryNoiseMegabytes, memoryNoiseShare * middle.megabytes);
    if (isResidentMemoryOurs && end.megabytes > middle.megabytes + noise)
        journal.fail(QStringLiteral("memory grows"));
    if (end.heapMegabytes > middle.heapMegabytes + heapNoiseMegabytes)
        journal.fail(QStringLiteral("the heap grows"));
    if (end.descriptors > middle.descriptors)
        journal.fail(QStringLiteral("open files grow"));
    if (end.threads > middle.threads)
        journal.fail(QStringLiteral("threads grow"));
}

QJsonObject SoakRun::report() const
{
    const ProcessFigures middle = quietMedian(0.4, 0.6);
    const ProcessFigures end = quietMedian(0.8, 1.0);
    const auto course = [&](auto member) {
        return QJsonArray{start.*member, middle.*member, end.*member};
    };
    return {{"seconds", clock.elapsed() / 1000}, {"operations", journal.operations()},
        {"heap_mb", course(&ProcessFigures::heapMegabytes)},
        {"resident_mb", course(&ProcessFigures::megabytes)},
        {"descriptors", course(&ProcessFigures::descriptors)},
        {"threads", course(&ProcessFigures::threads)},
        {"slowest_stall_ms", static_cast<int>(journal.slowestStallMs())},
        {"slowest_operation", journal.slowestOperation()}, {"failures", journal.failures()}};
}
