#include "GuiTest.h"
#include "ViewerWindow.h"

#include "GradientTableWidget.h"
#include "Olvik3DViewerControl.h"
#include "VtkCompatibility.h"

#include <clocale>
#include <csignal>
#include <exception>
#include <functional>
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

Q_DECLARE_METATYPE(std::function<void(bool &)>)

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
        QCOMPARE(QSurfaceFormat::defaultFormat(), VtkCompatibility::surfaceFormat());
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

    void theGradientManagerGoesWithTheWindow()
    {
        for (const bool isClosed : {true, false}) {
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            Olvik3DViewerControl viewer("managed", nullptr, nullptr);
            auto *manager = topLevel<GradientTableWidget>();
            viewer.show();
            manager->show();
            QVERIFY(QTest::qWaitForWindowExposed(manager));
            if (isClosed) {
                QTimer watchdog;
                connect(&watchdog, &QTimer::timeout, qApp, [] { QCoreApplication::exit(1); });
                watchdog.start(5000);
                QTimer::singleShot(0, viewerWindow(), &QWidget::close);
                QCOMPARE(QApplication::exec(), 0);
            } else {
                viewer.hide();
            }
            QVERIFY(!manager->isVisible());
        }
    }

    void aSlotMayEndTheViewerInItsOwnLoop_data()
    {
        QTest::addColumn<std::function<void(bool &)>>("loop");
        const auto row = [](const char *name, std::function<void(bool &)> loop) {
            QTest::newRow(name) << std::move(loop);
        };
        row("events", [](bool &isDone) {
            while (!isDone)
                QCoreApplication::processEvents();
        });
        row("event loop", [](bool &) {
            QEventLoop loop;
            QTimer::singleShot(500, &loop, &QEventLoop::quit);
            loop.exec();
        });
        row("menu", [](bool &) {
            QMenu menu;
            menu.addAction("Remember this point");
            QTimer::singleShot(500, &menu, &QMenu::close);
            menu.exec();
        });
    }

    void aSlotMayEndTheViewerInItsOwnLoop()
    {
        QFETCH(std::function<void(bool &)>, loop);
        struct Receiver : IEvent3DViewerReceiver
        {
            void viewerClosed(const char *) override
            {
                viewer.reset();
                QTimer::singleShot(300, &timers, [this] { isDone = true; });
            }
            QObject timers;
            std::unique_ptr<Olvik3DViewerControl> viewer;
            bool isDone = false;
        } receiver;
        receiver.viewer = std::make_unique<Olvik3DViewerControl>("looped", nullptr, &receiver);
        const QPointer<CloudPMainWindow> window = viewerWindow();
        receiver.viewer->show();
        QVERIFY(QTest::qWaitForWindowExposed(window));
        bool outlivedTheSlot = false;
        connect(receiver.viewer.get(), &Olvik3DViewerControl::pointPicked, this, [&] {
            QTimer::singleShot(0, window, &QWidget::close);
            loop(receiver.isDone);
            outlivedTheSlot = window && !receiver.viewer;
        });
        QTest::mouseClick(viewIn(window), Qt::LeftButton);
        QVERIFY(outlivedTheSlot);
        QTRY_VERIFY(!window);
    }

    void aDialogOfTheHostKeepsNoViewer()
    {
        auto viewer = std::make_unique<Olvik3DViewerControl>("behind", nullptr, nullptr);
        const QPointer<CloudPMainWindow> window = viewerWindow();
        viewer->show();
        QDialog dialog;
        QTimer::singleShot(100, &dialog, [&] { viewer.reset(); });
        QTimer::singleShot(500, &dialog, &QDialog::accept);
        connect(window, &QObject::destroyed, &dialog, &QDialog::reject);
        QTimer::singleShot(0, &dialog, [&] { QCoreApplication::exit(dialog.exec()); });
        QCOMPARE(QApplication::exec(), int(QDialog::Rejected));
    }

    void theHostMayDeleteTheViewerBehindADialog_data()
    {
        QTest::addColumn<QString>("opener");
        QTest::addColumn<bool>("runsEventLoop");
        QTest::newRow("gradients") << "tool bar" << true;
        QTest::newRow("gradients, by a click into the table") << "table" << true;
        QTest::newRow("save") << "menu" << true;
        QTest::newRow("save, in a host without an event loop") << "menu" << false;
    }

    void theHostMayDeleteTheViewerBehindADialog()
    {
        QFETCH(QString, opener);
        QFETCH(bool, runsEventLoop);
        auto viewer = std::make_unique<Olvik3DViewerControl>("gone", nullptr, nullptr);
        const QPointer<QObject> window = viewerWindow();
        const QPointer<GradientTableWidget> gradients = topLevel<GradientTableWidget>();
        gradients->show();
        auto *table = gradients->findChild<QTableView *>();
        table->selectRow(0);
        QAction *duplicate = gradients->findChild<QToolBar *>()->actions()[1];
        QTimer::singleShot(0, this, [&opener, save = menuItem("Save"), table, duplicate] {
            if (opener == "table")
                return QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, {20, 10});
            (opener == "menu" ? save : duplicate)->trigger();
        });
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
