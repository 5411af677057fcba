#include "GuiTest.h"
#include "ViewerWindow.h"

#include "GradientTableWidget.h"
#include "Olvik3DViewerControl.h"

#include <QDir>
#include <QPointer>
#include <QSurfaceFormat>
#include <QTableView>
#include <QTimer>
#include <QToolBar>

#include <clocale>
#include <csignal>
#include <exception>
#include <memory>
#include <vector>

namespace {

void onMessage(QtMsgType, const QMessageLogContext &, const QString &) { }

/// What the process has only one of, apart from Qt's default surface format.
struct ProcessState
{
    ProcessState()
    {
        for (int number = 1; number < NSIG; ++number) {
            struct sigaction action = {};
            sigaction(number, nullptr, &action);
            signalHandlers.push_back(action.sa_handler);
        }
        messageHandler = qInstallMessageHandler(onMessage);
        qInstallMessageHandler(messageHandler);
    }
    std::vector<void (*)(int)> signalHandlers;
    QtMessageHandler messageHandler = nullptr;
    std::terminate_handler terminateHandler = std::get_terminate();
    std::string locale = std::setlocale(LC_ALL, nullptr);
    QLocale qtLocale;
    QString style = QApplication::style()->objectName();
    QString name = QCoreApplication::applicationName() + QCoreApplication::organizationName();
    bool quitsOnLastWindow = QApplication::quitOnLastWindowClosed();
    QByteArray folder = QDir::currentPath().toUtf8();
};

int entriesIn(const char *folder)
{
    return QDir(QString::fromLatin1(folder))
        .entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot)
        .size();
}

GradientTableWidget *gradientManager()
{
    for (QWidget *widget : QApplication::topLevelWidgets()) {
        if (auto *table = qobject_cast<GradientTableWidget *>(widget))
            return table;
    }
    return nullptr;
}

void openFeedAndClose()
{
    Olvik3DViewerControl viewer("guest", nullptr, nullptr);
    QWidget *window = viewerWindow();
    Olvik3DViewerControl second("second", nullptr, nullptr);
    std::vector<float> heights = ramp(100, 100);
    viewer.show();
    QVERIFY(QTest::qWaitForWindowExposed(window));
    viewer.setBuffer(heights.data(), 100, 100);
    second.setBuffer(heights.data(), 100, 100);
    QTRY_VERIFY(viewIn(window)->getAxisVisibility());
}

} // namespace

class TestHostHygiene : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void nothingOfTheProcessIsChanged()
    {
        std::setlocale(LC_NUMERIC, "C");
        const ProcessState before;
        openFeedAndClose();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        const ProcessState after;
        QCOMPARE(after.signalHandlers, before.signalHandlers);
        QVERIFY(after.messageHandler == before.messageHandler);
        QVERIFY(after.terminateHandler == before.terminateHandler);
        QCOMPARE(after.locale, before.locale);
        QCOMPARE(after.qtLocale, before.qtLocale);
        QCOMPARE(after.style, before.style);
        QCOMPARE(after.name, before.name);
        QCOMPARE(after.quitsOnLastWindow, before.quitsOnLastWindow);
        QCOMPARE(after.folder, before.folder);
        QVERIFY(qApp->styleSheet().isEmpty());
        // The one thing that the view's constructor announces.
        QCOMPARE(QSurfaceFormat::defaultFormat(), QVTKOpenGLNativeWidget::defaultFormat());
    }

    void twentyViewersInTurnLeaveNothing()
    {
        int threads = 0;
        int files = 0;
        for (int round = 0; round < 20; ++round) {
            openFeedAndClose();
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            QVERIFY(!viewerWindow());
            // Libraries start pools of their own during the first rounds.
            if (round == 2) {
                threads = entriesIn("/proc/self/task");
                files = entriesIn("/proc/self/fd");
            }
        }
        QCOMPARE(entriesIn("/proc/self/task"), threads);
        QCOMPARE(entriesIn("/proc/self/fd"), files);
    }

    void theGradientManagerGoesWithTheWindow_data()
    {
        QTest::addColumn<bool>("isClosed");
        QTest::newRow("closed") << true;
        QTest::newRow("hidden") << false;
    }

    void theGradientManagerGoesWithTheWindow()
    {
        QFETCH(bool, isClosed);
        Olvik3DViewerControl viewer("managed", nullptr, nullptr);
        viewer.show();
        gradientManager()->show();
        QVERIFY(QTest::qWaitForWindowExposed(gradientManager()));
        if (isClosed) {
            QTimer watchdog;
            connect(&watchdog, &QTimer::timeout, qApp, [] { QCoreApplication::exit(1); });
            watchdog.start(5000);
            QTimer::singleShot(0, viewerWindow(), &QWidget::close);
            QCOMPARE(QApplication::exec(), 0);
        } else {
            viewer.hide();
        }
        QVERIFY(!gradientManager()->isVisible());
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    void theHostMayDeleteTheViewerBehindADialog_data()
    {
        QTest::addColumn<bool>("isSaving");
        QTest::addColumn<bool>("runsEventLoop");
        QTest::newRow("gradients") << false << true;
        QTest::newRow("save") << true << true;
        QTest::newRow("save, in a host without an event loop") << true << false;
    }

    void theHostMayDeleteTheViewerBehindADialog()
    {
        QFETCH(bool, isSaving);
        QFETCH(bool, runsEventLoop);
        auto viewer = std::make_unique<Olvik3DViewerControl>("gone", nullptr, nullptr);
        const QPointer<QObject> window = viewerWindow();
        const QPointer<GradientTableWidget> gradients = gradientManager();
        gradients->show();
        gradients->findChild<QTableView *>()->selectRow(0);
        QAction *duplicate = gradients->findChild<QToolBar *>()->actions()[1];
        QAction *opener = isSaving ? menuItem("Save") : duplicate;
        QTimer::singleShot(0, opener, &QAction::trigger);
        bool wasAliveBehindTheDialog = false;
        QTimer answer;
        connect(&answer, &QTimer::timeout, this, [&] {
            QWidget *dialog = QApplication::activeModalWidget();
            if (!dialog)
                return QCoreApplication::exit(viewer ? 1 : 0);
            if (viewer)
                return viewer.reset();
            wasAliveBehindTheDialog = gradients && window && !gradients->isVisible();
            dialog->close();
        });
        answer.start(200);
        if (runsEventLoop)
            QCOMPARE(QApplication::exec(), 0);
        QTRY_VERIFY(!window && !gradients);
        QVERIFY(wasAliveBehindTheDialog);
    }
};

OLVIK_GUI_TEST_MAIN(TestHostHygiene)
#include "tst_hosthygiene.moc"
