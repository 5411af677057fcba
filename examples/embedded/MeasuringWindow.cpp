#include "MeasuringWindow.h"

#include "MeasurementTable.h"
#include "SensorView.h"

#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QSplitter>
#include <QStatusBar>
#include <QStyle>
#include <QToolBar>

MeasuringWindow::MeasuringWindow()
    : sensors{new SensorView(tr("Entry"), 0), new SensorView(tr("Exit"), 16)}
    , measurements(new MeasurementTable)
{
    setWindowTitle(tr("Measuring station"));
    resize(1000, 700);
    createLayout();

    auto *bar = addToolBar(tr("Tools"));
    bar->setMovable(false);
    bar->setContextMenuPolicy(Qt::PreventContextMenu);
    bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    addRunAction(*bar);
    addColorChoice(*bar);
    addViewActions(*bar);

    statusBar()->addWidget(
        new QLabel(tr("Click a point to measure it; hold Ctrl and click two for their distance.")));
}

void MeasuringWindow::createLayout()
{
    auto *views = new QSplitter(Qt::Horizontal);
    for (SensorView *sensor : sensors) {
        views->addWidget(sensor);
        connect(sensor, &SensorView::measured, measurements, &MeasurementTable::add);
    }
    auto *all = new QSplitter(Qt::Vertical);
    all->addWidget(views);
    all->addWidget(measurements);
    all->setStretchFactor(0, 1);
    all->setCollapsible(0, false);
    setCentralWidget(all);
}

void MeasuringWindow::addRunAction(QToolBar &bar)
{
    run = bar.addAction(style()->standardIcon(QStyle::SP_MediaPlay), tr("&Run"));
    run->setCheckable(true);
    run->setShortcut(Qt::Key_F5);
    run->setToolTip(tr("Start and stop the sensors (F5)"));
    for (SensorView *sensor : sensors)
        connect(run, &QAction::toggled, sensor, &SensorView::setRunning);
}

void MeasuringWindow::addColorChoice(QToolBar &bar)
{
    auto *label = new QLabel(tr("&Colours:"));
    auto *choice = new QComboBox;
    choice->addItem(tr("Height"), Auto);
    choice->addItem(tr("Gradient"), UserGradient);
    label->setBuddy(choice);
    bar.addSeparator();
    bar.addWidget(label);
    bar.addWidget(choice);
    for (SensorView *sensor : sensors) {
        connect(choice, QOverload<int>::of(&QComboBox::activated), sensor, [sensor, choice] {
            sensor->setColorMode(static_cast<ColorMode>(choice->currentData().toInt()));
        });
    }
}

void MeasuringWindow::addViewActions(QToolBar &bar)
{
    bar.addSeparator();
    QAction *axes = bar.addAction(tr("&Axes"));
    axes->setCheckable(true);
    axes->setChecked(true);
    QAction *reset = bar.addAction(tr("Reset &views"));
    for (SensorView *sensor : sensors) {
        connect(axes, &QAction::toggled, sensor, &SensorView::setAxesShown);
        connect(reset, &QAction::triggered, sensor, &SensorView::resetCamera);
    }
    bar.addSeparator();
    connect(bar.addAction(tr("Clear &table")), &QAction::triggered, measurements,
        &MeasurementTable::clearRows);
}
