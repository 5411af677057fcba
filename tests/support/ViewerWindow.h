#pragma once

#include "CloudPMainWindow.h"
#include "Olvik3DViewerWidget.h"

#include <QAction>
#include <QApplication>
#include <QMenu>

#include <vector>

inline CloudPMainWindow *viewerWindow()
{
    for (QWidget *widget : QApplication::topLevelWidgets()) {
        if (auto *window = qobject_cast<CloudPMainWindow *>(widget))
            return window;
    }
    return nullptr;
}

inline Olvik3DViewerWidget *viewIn(QWidget *widget)
{
    return widget->findChild<Olvik3DViewerWidget *>();
}

inline QAction *menuItem(const QString &text)
{
    for (const QMenu *menu : viewerWindow()->findChildren<QMenu *>()) {
        for (QAction *action : menu->actions()) {
            if (action->text() == text)
                return action;
        }
    }
    return nullptr;
}

/// Heights that rise along each profile, from 0 by 1.
inline std::vector<float> ramp(int width, int height)
{
    std::vector<float> heights;
    for (int i = 0; i < width * height; ++i)
        heights.push_back(static_cast<float>(i % width));
    return heights;
}
