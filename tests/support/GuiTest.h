#pragma once

#include "QtCompatibility.h"

#include <QtTest>
#include <QtWidgets>

// Signal spies record the argument of pointPicked, though not the numbers behind it.
Q_DECLARE_METATYPE(double *)

/// A home of its own for the test's settings and data files: nothing of the user's is read or
/// changed.
class PrivateHome
{
public:
    PrivateHome()
    {
        qputenv("HOME", folder.path().toLocal8Bit());
        qputenv("XDG_CONFIG_HOME", folder.filePath(QStringLiteral("config")).toLocal8Bit());
        qputenv("XDG_DATA_HOME", folder.filePath(QStringLiteral("data")).toLocal8Bit());
    }

private:
    QTemporaryDir folder;
};

using QtCompatibility::isOnWayland;

/// Gives \a window the keyboard, as the operator does by a click. No program can on Wayland, where
/// only Qt hears of it.
inline bool activate(QWidget &window)
{
    if (!QTest::qWaitForWindowExposed(&window))
        return false;
    QtCompatibility::activate(window);
#if QT_VERSION_MAJOR < 6
    if (isOnWayland())
        QApplication::setActiveWindow(&window);
#endif
    return QTest::qWaitFor([&window] { return window.isActiveWindow(); });
}

#define OLVIK_GUI_TEST_MAIN(TestClass)                                                             \
    int main(int argc, char *argv[])                                                               \
    {                                                                                              \
        qRegisterMetaType<double *>();                                                             \
        const PrivateHome home;                                                                    \
        QApplication application(argc, argv);                                                      \
        TestClass test;                                                                            \
        return QTest::qExec(&test, argc, argv);                                                    \
    }
