// A host on a machine without OpenGL 3.2: answers the message box like a user and prints what it
// said. With "embed" it places the viewer in a widget of its own and feeds it, with "beside" it asks
// for one in a window, too.

#include "Olvik3DViewerControl.h"
#include "Olvik3DViewerWidget.h"

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QTest>
#include <QThread>
#include <QTimer>
#include <QWidget>

#include <atomic>
#include <cstdio>
#include <cstdlib>

namespace {

std::atomic<bool> isWorking{false};

int embed(bool isSecondRefused)
{
    QWidget host;
    host.resize(300, 200);
    Olvik3DViewerControl viewer(QStringLiteral("embedded"), &host, nullptr);
    QObject::connect(
        host.findChild<Olvik3DViewerWidget *>(), &Olvik3DViewerWidget::mRender, &host,
        [] {
            isWorking = true;
            QObject::connect(
                QThread::currentThread(), &QThread::finished, [] { isWorking = false; });
        },
        Qt::DirectConnection);
    host.show();
    viewer.show();
    float heights[] = {1.0f, 2.0f, 3.0f, 4.0f};
    for (int i = 0; i < 3; ++i) {
        viewer.setBuffer(heights, 2, 2);
        QTest::qWait(300);
    }
    QTest::mouseClick(host.childAt(150, 100), Qt::LeftButton);
    if (isSecondRefused)
        const Olvik3DViewerControl second(QStringLiteral("refused"), nullptr, nullptr);
    return 0;
}

} // namespace

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    std::atexit([] {
        // The library's static objects go next.
        if (isWorking)
            std::_Exit(1);
    });
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
    if (application.arguments().size() > 1)
        return embed(application.arguments().contains("beside"));
    const Olvik3DViewerControl viewer(QStringLiteral("refused"), nullptr, nullptr);
    return 0;
}
