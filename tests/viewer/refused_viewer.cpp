// A host on a machine without OpenGL 3.2: answers the message box like a user and prints what it
// said. With "embed" it places the viewer in a widget of its own and feeds it.

#include "Olvik3DViewerControl.h"

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QTest>
#include <QTimer>
#include <QWidget>

#include <cstdio>

namespace {

int embed()
{
    QWidget host;
    host.resize(300, 200);
    Olvik3DViewerControl viewer(QStringLiteral("embedded"), &host, nullptr);
    host.show();
    viewer.show();
    float heights[] = {1.0f, 2.0f, 3.0f, 4.0f};
    for (int i = 0; i < 3; ++i) {
        viewer.setBuffer(heights, 2, 2);
        QTest::qWait(300);
    }
    QTest::mouseClick(host.childAt(150, 100), Qt::LeftButton);
    return 0;
}

} // namespace

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    if (application.arguments().contains("embed"))
        return embed();
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
