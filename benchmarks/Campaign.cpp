#include "Campaign.h"

#include <QJsonDocument>
#include <QProcess>

#include <algorithm>
#include <cstdio>

namespace {

constexpr int longestTaskMs = 10 * 60 * 1000;
const QString taskOption = QStringLiteral("--task");

void addBoth(std::vector<Task> &tasks, Task task)
{
    for (const char *viewer : {"plain", "ours"}) {
        task.viewer = viewer;
        tasks.push_back(task);
    }
}

/// One round of what the table holds for its main size.
void addTable(Campaign &campaign, int repeats, int streamedBuffers)
{
    const int side = campaign.mainSide;
    addBoth(campaign.tasks, {"first", {}, side});
    addBoth(campaign.tasks, {"shown", {}, side, repeats});
    addBoth(campaign.tasks, {"update", {}, side, repeats});
    addBoth(campaign.tasks, {"gradient", {}, side, repeats});
    addBoth(campaign.tasks, {"save", {}, side, 1});
    addBoth(campaign.tasks, {"stall", {}, side, streamedBuffers});
    campaign.tasks.push_back({"bandwidth", {}, side, 5 * repeats});
}

QJsonObject runTask(const Task &task, const QString &program)
{
    QProcess child;
    child.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    child.start(program, argumentsOf(task));
    if (!child.waitForFinished(longestTaskMs))
        child.kill();
    child.waitForFinished();
    if (child.exitStatus() != QProcess::NormalExit || child.exitCode() != 0)
        return {};
    return QJsonDocument::fromJson(child.readAllStandardOutput()).object();
}

void printProgress(std::size_t number, std::size_t count, const Task &task)
{
    std::fprintf(stderr, "[%zu/%zu] %s %s %d x %d\n", number, count, qPrintable(task.figure),
        qPrintable(task.viewer), task.side, task.side);
}

} // namespace

Campaign fullCampaign()
{
    Campaign campaign{2048, {}};
    for (int round = 0; round < 3; ++round)
        addTable(campaign, 11, 60);
    for (const int side : {512, 724, 1024, 1448, 2896, 4096}) {
        const int repeats = side < 2048 ? 15 : 5;
        addBoth(campaign.tasks, {"shown", {}, side, repeats});
        addBoth(campaign.tasks, {"update", {}, side, repeats});
    }
    for (const int side : {1024, 2048, 4096}) {
        addBoth(campaign.tasks, {"rotation", {}, side, 20});
        addBoth(campaign.tasks, {"memory", {}, side, 6});
    }
    return campaign;
}

Campaign shortCampaign()
{
    Campaign campaign{256, {}};
    addTable(campaign, 3, 5);
    addBoth(campaign.tasks, {"shown", {}, 512, 3});
    addBoth(campaign.tasks, {"update", {}, 512, 3});
    for (const int side : {256, 512}) {
        addBoth(campaign.tasks, {"rotation", {}, side, 3});
        addBoth(campaign.tasks, {"memory", {}, side, 3});
    }
    return campaign;
}

std::optional<Results> runCampaign(const Campaign &campaign, const QString &program)
{
    Results results;
    std::size_t number = 0;
    for (const Task &task : campaign.tasks) {
        printProgress(++number, campaign.tasks.size(), task);
        const QJsonObject numbers = runTask(task, program);
        if (numbers.isEmpty()) {
            std::fprintf(stderr, "this measurement failed\n");
            return std::nullopt;
        }
        results.add(task, numbers);
    }
    return results;
}

QStringList argumentsOf(const Task &task)
{
    return {taskOption, task.figure, task.viewer, QString::number(task.side),
        QString::number(task.repeats)};
}

std::optional<Task> taskOf(const QStringList &arguments)
{
    if (arguments.size() != 5 || arguments[0] != taskOption)
        return std::nullopt;
    return Task{arguments[1], arguments[2], std::max(1, arguments[3].toInt()),
        std::max(1, arguments[4].toInt())};
}
