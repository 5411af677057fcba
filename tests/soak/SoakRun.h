#pragma once

#include "Choice.h"
#include "DialogOperator.h"
#include "Journal.h"
#include "ProcessFigures.h"
#include "ViewerSlot.h"

#include <QtCore>

#include <array>
#include <vector>

/// The random host: one operation after another from the event loop until the time is over, with
/// quiet states in between, in which no viewer is alive and the process is measured.
class SoakRun : public QObject
{
public:
    /// \param home folder that holds nothing but what viewers wrote; emptied at each quiet state
    SoakRun(Journal &journal, std::uint64_t seed, int seconds, QString home);

    /// The last quiet state is over: growth and left-overs are among the journal's failures.
    QJsonObject report() const;

private:
    void step();
    bool isOver() const;
    void operate();
    void startQuiet();
    void measure();
    void finish();
    void checkGrowth(const ProcessFigures &middle, const ProcessFigures &end);
    void writeGarbage();
    ProcessFigures quietMedian(double from, double to) const;

    Journal &journal;
    Choice master;
    const int seconds;
    const QString home;
    QTemporaryDir folder;
    DialogOperator user;
    QProcess neighbour;
    std::array<ViewerSlot, 2> places;
    QElapsedTimer clock;
    QElapsedTimer waiting;
    ProcessFigures start;
    std::vector<ProcessFigures> quietFigures;
    int operationsAtQuiet = 0;
};
