#pragma once

#include <QElapsedTimer>

/// Runs from its construction.
class Stopwatch
{
public:
    Stopwatch() { timer.start(); }

    double milliseconds() const { return static_cast<double>(timer.nsecsElapsed()) / 1e6; }
    void restart() { timer.start(); }

private:
    QElapsedTimer timer;
};
