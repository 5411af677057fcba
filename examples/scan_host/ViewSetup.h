#pragma once

#include "CommandLine.h"

#include <Olvik3DViewerWidget.h>

#include <QObject>

struct HeightMap;

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

Q_SIGNALS:
    /// The viewer stays black: the first frame holds nothing that it draws.
    void frameIsInvisible();
    void cloudIsInvisible();

private:
    void followFirst(const Olvik3DViewerWidget::RenderData &request);
    void load();

    Olvik3DViewerWidget *view;
    const ViewOptions options;
    bool isFollowed = false;
};
