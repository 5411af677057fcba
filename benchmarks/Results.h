#pragma once

#include "Task.h"

#include <QJsonArray>

#include <vector>

/// What was measured in a run: any number of rounds of each task.
class Results
{
public:
    void add(const Task &task, const QJsonObject &numbers);

    /// Median over the rounds; NaN where nothing was measured.
    double value(const Task &task, const QString &number = QStringLiteral("ms")) const;

    /// Sides that a figure was measured for, ascending.
    std::vector<int> sidesOf(const QString &figure) const;

    QJsonArray toJson() const;

private:
    struct Entry
    {
        Task task;
        QJsonObject numbers;
    };
    std::vector<Entry> entries;
};
