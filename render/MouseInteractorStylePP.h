#pragma once

#include "Olvik3DViewerExport.h"

#include <QElapsedTimer>
#include <QObject>

#include <vtkInteractorStyleTrackballCamera.h>

#include <array>
#include <optional>

/// Trackball camera that also tells a click from a drag: a left button released within 150 ms
/// picks. A release that leaves the scene as it was draws no new picture. The second of two quick
/// presses counts like the first.
///
/// Counted by VTK like any other style; a QObject parent is only told about, it must not delete the
/// style while VTK still holds it. GUI thread only.
class OLVIK3DVIEWER_EXPORT MouseInteractorStylePP : public QObject,
                                                    public vtkInteractorStyleTrackballCamera
{
    Q_OBJECT

public:
    static MouseInteractorStylePP *New();
    vtkTypeMacro(MouseInteractorStylePP, vtkInteractorStyleTrackballCamera)

    explicit MouseInteractorStylePP(QObject *parent = nullptr);

    void OnLeftButtonDown() override;
    void OnLeftButtonUp() override;

    /// From here on picks wait for the call of reportPick(), which a view makes when VTK is through
    /// with an event: the host may delete the view in answer.
    void holdPick() { isHolding = true; }
    /// \return whether there was one
    bool reportPick();
    /// Since the left button went down.
    bool hasSceneChanged();

    /// Ends what the buttons do, as their release would, but for the pick.
    void endInteraction();

Q_SIGNALS:
    /// \param coords three doubles in scene units, valid during the emission only. A click beside
    ///        the cloud reports whatever the interactor's picker answers.
    void pixelPicked(const double *coords);

private:
    void pick();
    vtkRenderer *renderer();

    QElapsedTimer pressed;
    std::optional<std::array<double, 3>> picked; ///< not yet reported
    bool isHolding = false;
    vtkMTimeType sceneAtPress = 0; ///< its last change before the button went down
};
