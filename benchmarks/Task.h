#pragma once

#include <QJsonObject>
#include <QString>

/// One measurement in a process of its own.
struct Task
{
    QString figure; ///< "update", "shown", ...: see measure()
    QString viewer; ///< "ours" or "plain"
    int side = 0; ///< values per profile and number of profiles
    int repeats = 1;

    double points() const { return static_cast<double>(side) * static_cast<double>(side); }
};

/// Measures and returns named numbers, none when the figure is unknown. Needs a QApplication.
QJsonObject measure(const Task &task);
