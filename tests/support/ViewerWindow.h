#pragma once

#include "CloudPMainWindow.h"
#include "Olvik3DViewerWidget.h"

#include <QtWidgets>

#include <vector>

template <class Window> Window *topLevel()
{
    for (QWidget *widget : QApplication::topLevelWidgets()) {
        if (auto *window = qobject_cast<Window *>(widget))
            return window;
    }
    return nullptr;
}

inline CloudPMainWindow *viewerWindow()
{
    return topLevel<CloudPMainWindow>();
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

/// Of a folder like /proc/self/task, which holds the threads of this process.
inline int entriesIn(const char *folder)
{
    const QStringList entries =
        QDir(QString::fromLatin1(folder))
            .entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot);
    return static_cast<int>(entries.size());
}

/// Heights that rise along each profile, from 0 by 1.
inline std::vector<float> ramp(int width, int height)
{
    std::vector<float> heights;
    for (int i = 0; i < width * height; ++i)
        heights.push_back(static_cast<float>(i % width));
    return heights;
}
