#pragma once

#include "Feeder.h"

#include <ColorMode.h>

#include <QGroupBox>

class Olvik3DViewerControl;
class Olvik3DViewerWidget;

/// One sensor's place in the window: an embedded viewer and the simulated sensor that feeds it.
class SensorView : public QGroupBox
{
    Q_OBJECT

public:
    /// \param name shown as the title and in the measurements
    /// \param lead frames by which this sensor is ahead of one with the lead 0
    SensorView(const QString &name, int lead, QWidget *parent = nullptr);

public Q_SLOTS:
    void setRunning(bool running);
    void setColorMode(ColorMode mode);
    void setAxesShown(bool shown);
    void resetCamera();

Q_SIGNALS:
    /// The operator picked something in this view.
    void measured(const QString &sensor, const QString &kind, const QString &value);

private:
    void reportPoint(const double *xyz);
    void reportDistance(double distance);

    Feeder feeder;
    Olvik3DViewerControl *viewer; ///< goes with this widget, its parent
    Olvik3DViewerWidget *view;
};
