#pragma once

#include "Olvik3DViewerExport.h"

#include <QPointer>
#include <QWidgetAction>

class QFrame;

/// A menu entry that heads a group of entries: a caption, then a line across the rest of the menu.
class OLVIK3DVIEWER_EXPORT ActionSeparator : public QWidgetAction
{
    Q_OBJECT

public:
    ActionSeparator(QString text, QWidget *parent);
    ~ActionSeparator() override;

private:
    // Guarded: a menu that shows the action becomes the frame's parent and may go first.
    QPointer<QFrame> frame;
};
