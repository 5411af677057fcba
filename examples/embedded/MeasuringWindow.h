#pragma once

#include <QMainWindow>

#include <array>

class MeasurementTable;
class QAction;
class QToolBar;
class SensorView;

/// A measuring application's window: two sensors side by side above a table of what was measured.
class MeasuringWindow : public QMainWindow
{
    Q_OBJECT

public:
    MeasuringWindow();

    QAction *runAction() const { return run; }

private:
    void createLayout();
    void addRunAction(QToolBar &bar);
    void addColorChoice(QToolBar &bar);
    void addViewActions(QToolBar &bar);

    std::array<SensorView *, 2> sensors;
    MeasurementTable *measurements;
    QAction *run = nullptr;
};
