// A host on a machine without OpenGL 3.2: answers the message box like a user and prints what it
// said.

#include "Olvik3DViewerControl.h"

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QTimer>

#include <cstdio>

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    QTimer user;
    QObject::connect(&user, &QTimer::timeout, &user, [] {
        auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        if (!box)
            return;
        std::printf("%s|%s|%d\n", qPrintable(box->windowTitle()), qPrintable(box->text()),
            static_cast<int>(box->buttons().size()));
        std::fflush(stdout);
        box->button(QMessageBox::Ok)->click();
    });
    // Slower than the window system, like a user: the box has to be on screen before it can have
    // the focus.
    user.start(500);
    const Olvik3DViewerControl viewer(QStringLiteral("refused"), nullptr, nullptr);
    return 0;
}
