#include "Results.h"

#include "Statistics.h"

#include <limits>
#include <set>

namespace {

bool isSame(const Task &one, const Task &other)
{
    return one.figure == other.figure && one.viewer == other.viewer && one.side == other.side;
}

} // namespace

void Results::add(const Task &task, const QJsonObject &numbers)
{
    entries.push_back({task, numbers});
}

double Results::value(const Task &task, const QString &number) const
{
    std::vector<double> rounds;
    for (const Entry &entry : entries) {
        if (isSame(entry.task, task) && entry.numbers.contains(number))
            rounds.push_back(entry.numbers[number].toDouble());
    }
    return rounds.empty() ? std::numeric_limits<double>::quiet_NaN() : median(rounds);
}

std::vector<int> Results::sidesOf(const QString &figure) const
{
    std::set<int> sides;
    for (const Entry &entry : entries) {
        if (entry.task.figure == figure)
            sides.insert(entry.task.side);
    }
    return {sides.begin(), sides.end()};
}

QJsonArray Results::toJson() const
{
    QJsonArray rows;
    for (const Entry &entry : entries) {
        QJsonObject row = entry.numbers;
        row["figure"] = entry.task.figure;
        row["viewer"] = entry.task.viewer;
        row["points"] = entry.task.points();
        rows.append(row);
    }
    return rows;
}
