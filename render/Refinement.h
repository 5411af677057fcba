#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

class CloudActor;
class SceneWindow;
class vtkRenderer;

/// Brings the full cloud once a picture of its subsample has rested: in parts that take about a
/// frame each, drawn upon each other out of sight and shown when all are there. Between two of them
/// the host handles its events, and any other picture ends it.
///
/// GUI thread only. Borrows what it is given.
class Refinement : public QObject
{
    Q_OBJECT

public:
    Refinement(SceneWindow &window, vtkRenderer &renderer, CloudActor &cloud);
    ~Refinement() override;

    /// A new cloud is on screen. Of clouds that stream only the last one is drawn in full.
    void onNewCloud();

    /// The full cloud waits for the next picture.
    void stop() { timer.stop(); }

private:
    void onDrawn();
    void drawNextPart();
    void renderPart();

    SceneWindow &window;
    vtkRenderer &renderer;
    CloudActor &cloud;
    QTimer timer;
    QElapsedTimer sinceLastCloud;
};
