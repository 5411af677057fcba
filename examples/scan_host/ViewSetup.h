#pragma once

#include "CommandLine.h"

#include <QObject>

struct HeightMap;
class Olvik3DViewerWidget;

/// What the host asks of the 3D view itself, beyond the control: axis scales, colouring, a cloud
/// from a PLY file.
class ViewSetup : public QObject
{
    Q_OBJECT

public:
    /// \param view borrowed; becomes the parent
    ViewSetup(Olvik3DViewerWidget *view, const ViewOptions &options);

    /// Lays the gradient, where one was asked for, over the heights of the frame.
    void useRangeOf(const HeightMap &frame);

private:
    void loadOnce();

    Olvik3DViewerWidget *view;
    const ViewOptions options;
    bool isLoaded = false;
};
