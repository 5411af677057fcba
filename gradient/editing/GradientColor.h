#pragma once

#include "Olvik3DViewerExport.h"

#include <QFrame>

/// A colour box that tells when it is double-clicked. What it shows is set by its owner through
/// palette and frame style.
class OLVIK3DVIEWER_EXPORT GradientColor : public QFrame
{
    Q_OBJECT

public:
    explicit GradientColor(QWidget *parent);

Q_SIGNALS:
    /// Any mouse button.
    void doubleClick();

protected:
    void mouseDoubleClickEvent(QMouseEvent *event) override;
};
