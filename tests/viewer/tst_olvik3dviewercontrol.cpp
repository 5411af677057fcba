#include "GuiTest.h"
#include "SceneProbe.h"
#include "ViewerWindow.h"

#include "Olvik3DViewerControl.h"
#include "OlvikSettings.h"

#include <functional>
#include <limits>
#include <memory>

#include <pthread.h>

namespace {

struct Receiver : IEvent3DViewerReceiver
{
    void viewerClosed(const char *windowName) override
    {
        closed.append(windowName);
        if (onClosed)
            onClosed();
    }
    QList<QByteArray> closed;
    std::function<void()> onClosed;
};

void runDeferredDeletes()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

/// Stops the worker inside its first buffer, between the conversion and the hand-over to the
/// screen.
class HeldWorker
{
public:
    explicit HeldWorker(Olvik3DViewerWidget *view)
    {
        QObject::connect(
            view, &Olvik3DViewerWidget::mRender, view,
            [this] {
                if (isHeld.exchange(true))
                    return;
                reached.release();
                gate.acquire();
            },
            Qt::DirectConnection);
    }
    void awaitWork() { reached.acquire(); }
    void letGo() { gate.release(); }

private:
    std::atomic<bool> isHeld{false};
    QSemaphore reached;
    QSemaphore gate;
};

} // namespace

class TestOlvik3DViewerControl : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup()
    {
        runDeferredDeletes();
        QVERIFY(!viewerWindow());
        for (const char *key :
            {"3Dviewer/position", "3Dviewer/size", "3Dviewer/FlyMode", "3DViewer/ColorMode",
                "3Dviewer/ColorMode", "3DViewer/showzero", "3Dviewer/gradient_name"})
            OlvikSettings::Instance()->remove(key);
    }

    void aBufferReachesTheScreen()
    {
        Olvik3DViewerControl viewer("colours", nullptr, nullptr);
        viewer.show();
        QVERIFY(QTest::qWaitForWindowExposed(viewerWindow()));
        Olvik3DViewerWidget *view = viewIn(viewerWindow());
        SceneProbe probe(*view);
        QCOMPARE(probe.litPixels(), 0);

        constexpr int size = 401;
        std::vector<float> heights = ramp(size, size);
        viewer.setBuffer(heights.data(), size, size);
        QTRY_VERIFY(view->getAxisVisibility());
        view->showAxes(false);
        probe.lookFromAbove(size, size);

        QVERIFY(isNear(probe.colorAt(1, 200, 1), QColor(255, 0, 0)));
        QVERIFY(isNear(probe.colorAt(100, 300, 100), QColor(191, 0, 64)));
        QVERIFY(isNear(probe.colorAt(300, 100, 300), QColor(64, 0, 191)));
        QVERIFY(isNear(probe.colorAt(399, 200, 399), QColor(0, 0, 255)));
    }

    void buffersQueueBeforeTheWorkerAndDropBehindIt()
    {
        Olvik3DViewerControl viewer("queue", nullptr, nullptr);
        Olvik3DViewerWidget *view = viewIn(viewerWindow());
        QList<int> converted;
        connect(view, &Olvik3DViewerWidget::mRender, &viewer,
            [&](const Olvik3DViewerWidget::RenderData &request) {
                converted.append(static_cast<int>(request.polyData->GetNumberOfPoints()));
            });
        HeldWorker worker(view);
        std::vector<float> heights = ramp(10, 10);

        viewer.setBuffer(heights.data(), 10, 1);
        worker.awaitWork();
        viewer.setBuffer(heights.data(), 10, 2);
        worker.letGo();
        QTRY_COMPARE(converted, QList<int>({10}));

        // The dropped buffer is not the last one: this submits the first again.
        menuItem("Show Zero data")->trigger();
        QTRY_COMPARE(converted, QList<int>({10, 9}));
    }

    void zeroHeightsAreDrawnOrHidden()
    {
        Olvik3DViewerControl viewer("zeros", nullptr, nullptr);
        viewer.show();
        QVERIFY(QTest::qWaitForWindowExposed(viewerWindow()));
        Olvik3DViewerWidget *view = viewIn(viewerWindow());
        SceneProbe probe(*view);
        QAction *zeros = menuItem("Show Zero data");
        QVERIFY(zeros->isChecked());
        zeros->trigger();
        QCOMPARE(OlvikSettings::Instance()->value("3DViewer/showzero", true).toBool(), false);
        zeros->trigger();

        constexpr int size = 300;
        std::vector<float> heights(size * size, 10.0f);
        for (int row = 0; row < size; ++row)
            std::fill_n(heights.begin() + row * size + size / 2, size / 2, 0.0f);
        viewer.setBuffer(heights.data(), size, size);
        QTRY_VERIFY(view->getAxisVisibility());
        view->showAxes(false);
        probe.lookFromAbove(size, size);
        QVERIFY(isNear(probe.colorAt(225, 150, 0), QColor(255, 0, 0)));

        zeros->trigger();
        QTRY_VERIFY(isNear(probe.colorAt(225, 150, 0), QColor(0, 0, 0)));
        QVERIFY(isNear(probe.colorAt(75, 150, 10), QColor(0, 0, 255)));
    }

    void hostileBuffersAreHarmless_data()
    {
        using Limits = std::numeric_limits<float>;
        QTest::addColumn<std::vector<float>>("heights");
        QTest::addColumn<int>("width");
        QTest::addColumn<int>("height");
        const auto filled = [](float a, float b) { return std::vector<float>{a, b, a, b}; };
        QTest::newRow("NaN") << filled(Limits::quiet_NaN(), Limits::quiet_NaN()) << 2 << 2;
        QTest::newRow("NaN among heights") << filled(Limits::quiet_NaN(), 3.0f) << 2 << 2;
        QTest::newRow("infinite") << filled(Limits::infinity(), 1.0f) << 2 << 2;
        QTest::newRow("negative") << filled(-5.0f, -1.0f) << 2 << 2;
        QTest::newRow("denormal") << filled(Limits::denorm_min(), 0.0f) << 2 << 2;
        QTest::newRow("largest floats") << filled(Limits::max(), -Limits::max()) << 2 << 2;
        QTest::newRow("wrapping to four") << filled(1.0f, 2.0f) << 4 << 1073741825;
    }

    void hostileBuffersAreHarmless()
    {
        QFETCH(std::vector<float>, heights);
        QFETCH(int, width);
        QFETCH(int, height);
        Olvik3DViewerControl viewer("hostile", nullptr, nullptr);
        viewer.show();
        QVERIFY(QTest::qWaitForWindowExposed(viewerWindow()));
        Olvik3DViewerWidget *view = viewIn(viewerWindow());
        QSignalSpy requests(view, &Olvik3DViewerWidget::mRender);
        SceneProbe probe(*view);

        viewer.setBuffer(heights.data(), width, height);
        QTRY_COMPARE(requests.size(), 1);
        QTest::qWait(0);
        std::vector<float> sound = ramp(200, 200);
        viewer.setBuffer(sound.data(), 200, 200);
        QTRY_COMPARE(requests.size(), 2);

        // Whatever came before, the next good buffer is on screen once it is framed.
        QTest::qWait(0);
        view->showAxes(false);
        probe.lookFromAbove(200, 200);
        QVERIFY(isNear(probe.colorAt(150, 100, 150), QColor(63, 0, 192), 4));
    }

    void badBuffersAreRefused()
    {
        Olvik3DViewerControl viewer("null", nullptr, nullptr);
        QTest::ignoreMessage(QtWarningMsg, "3D viewer: null buffers are ignored");
        for (int i = 0; i < 3; ++i)
            viewer.setBuffer(nullptr, 2, 2);

        float height = 1.0f;
        for (const auto &[columns, rows] :
            {std::pair(-1, 4), std::pair(4, -1), std::pair(46341, 46341)})
            QVERIFY_EXCEPTION_THROWN(
                viewer.setBuffer(&height, columns, rows), std::bad_array_new_length);
    }

    void withoutAThreadBuffersAreIgnored()
    {
        pthread_attr_t usual;
        QCOMPARE(pthread_getattr_default_np(&usual), 0);
        pthread_attr_t huge = usual;
        QCOMPARE(pthread_attr_setstacksize(&huge, std::size_t(1) << 46), 0);
        QTest::ignoreMessage(QT_VERSION_MAJOR >= 6 ? QtWarningMsg : QtCriticalMsg,
            QRegularExpression("^QThread::start: Thread creation error"));
        QTest::ignoreMessage(
            QtWarningMsg, "3D viewer: buffers are ignored, no thread could be started for them");
        QWidget host;
        QCOMPARE(pthread_setattr_default_np(&huge), 0);
        Olvik3DViewerControl viewer("threadless", &host, nullptr);
        QCOMPARE(pthread_setattr_default_np(&usual), 0);
        viewer.show();
        std::vector<float> heights = ramp(50, 50);
        for (int i = 0; i < 3; ++i)
            viewer.setBuffer(heights.data(), 50, 50);
    }

    void closingTellsTheReceiverOnce()
    {
        Receiver receiver;
        Olvik3DViewerControl viewer(QString::fromUtf8("Höhen 高さ"), nullptr, &receiver);
        viewer.setWindowName("B");
        QCOMPARE(viewerWindow()->windowTitle(), QString("B"));
        viewer.show();
        QVERIFY(QTest::qWaitForWindowExposed(viewerWindow()));
        viewerWindow()->close();
        QTRY_COMPARE(receiver.closed, QList<QByteArray>({"Höhen 高さ"}));

        viewerWindow()->close();
        const QSignalSpy requests(viewIn(viewerWindow()), &Olvik3DViewerWidget::mRender);
        std::vector<float> heights = ramp(50, 50);
        viewer.setBuffer(heights.data(), 50, 50);
        QTest::qWait(50);
        QCOMPARE(receiver.closed.size(), 1);
        QCOMPARE(requests.size(), 0);

        Olvik3DViewerControl silent("no receiver", nullptr, nullptr);
        silent.onDeleteViewer();
    }

    void theReceiverMayDeleteTheControl()
    {
        Receiver receiver;
        auto viewer = std::make_unique<Olvik3DViewerControl>("gone", nullptr, &receiver);
        receiver.onClosed = [&] { viewer.reset(); };
        viewer->show();
        QVERIFY(QTest::qWaitForWindowExposed(viewerWindow()));
        std::vector<float> heights = ramp(500, 500);
        viewer->setBuffer(heights.data(), 500, 500);
        viewerWindow()->close();
        QTRY_VERIFY(!viewer);
        QTRY_VERIFY(!viewerWindow());
    }

    void deletingAtAnyMoment_data()
    {
        QTest::addColumn<bool>("isEmbedded");
        QTest::addColumn<int>("buffers");
        QTest::addColumn<bool>("isConverting");
        QTest::addColumn<bool>("isClosed");
        QTest::addColumn<bool>("withParent");
        QTest::newRow("before the first buffer") << false << 0 << false << false << false;
        QTest::newRow("with two buffers queued") << false << 2 << false << false << false;
        QTest::newRow("during a conversion") << false << 1 << true << false << false;
        QTest::newRow("with the window closed") << false << 1 << false << true << false;
        QTest::newRow("embedded, with two queued") << true << 2 << false << false << false;
        QTest::newRow("embedded, during a conversion") << true << 1 << true << false << false;
        QTest::newRow("with its parent") << true << 2 << false << false << true;
        QTest::newRow("with its parent, during a conversion") << true << 1 << true << false << true;
    }

    void deletingAtAnyMoment()
    {
        QFETCH(bool, isEmbedded);
        QFETCH(int, buffers);
        QFETCH(bool, isConverting);
        QFETCH(bool, isClosed);
        QFETCH(bool, withParent);
        constexpr int size = 600;
        std::vector<float> heights = ramp(size, size);
        int threads = 0;
        for (int repetition = 0; repetition < 12; ++repetition) {
            auto host = std::make_unique<QWidget>();
            host->resize(300, 200);
            auto *viewer =
                new Olvik3DViewerControl("deleted", isEmbedded ? host.get() : nullptr, nullptr);
            QWidget *top = isEmbedded ? host.get() : viewerWindow();
            viewer->show();
            QVERIFY(QTest::qWaitForWindowExposed(top));
            for (int i = 0; i < buffers; ++i)
                viewer->setBuffer(heights.data(), size, size);
            if (isConverting)
                QTest::qSleep(1 + repetition / 4);
            if (isClosed)
                viewerWindow()->close();

            if (withParent)
                host.reset();
            else
                delete viewer;
            QVERIFY(!viewerWindow() || !viewerWindow()->isVisible());
            runDeferredDeletes();
            QVERIFY(!viewerWindow());
            // Libraries start pools of their own during the first round.
            if (repetition == 1)
                threads = entriesIn("/proc/self/task");
        }
        QCOMPARE(entriesIn("/proc/self/task"), threads);
    }

    void theHostMayDeleteTheView()
    {
        constexpr int size = 600;
        std::vector<float> heights = ramp(size, size);
        for (int repetition = 0; repetition < 12; ++repetition) {
            QWidget host;
            host.resize(300, 200);
            Olvik3DViewerControl viewer("bereft", &host, nullptr);
            viewer.show();
            QVERIFY(QTest::qWaitForWindowExposed(&host));
            viewer.setBuffer(heights.data(), size, size);
            QTest::qSleep(1 + repetition / 4);
            delete viewIn(&host);
            for (int i = 0; i < 20; ++i) {
                viewer.setBuffer(heights.data(), size, size);
                QTest::qWait(1);
            }
            viewer.hide();
            viewer.show();
            QVERIFY(!viewer.isVisible());
        }
    }

    void anEmbeddedViewerMayBeReplaced()
    {
        QWidget host;
        auto *viewer = new Olvik3DViewerControl("first", &host, nullptr);
        host.resize(300, 200);
        viewer->show();
        delete viewer;
        viewer = new Olvik3DViewerControl("second", &host, nullptr);
        viewer->show();
        runDeferredDeletes();
        host.resize(500, 400);
        QVERIFY(QTest::qWaitForWindowExposed(&host));
        QTRY_COMPARE(viewIn(&host)->size(), host.size());

        delete viewer;
        runDeferredDeletes();
        QVERIFY(!host.layout());
    }

    void settingsSurviveARestart()
    {
        {
            Olvik3DViewerControl viewer("first", nullptr, nullptr);
            viewer.show();
            QVERIFY(QTest::qWaitForWindowExposed(viewerWindow()));
            viewerWindow()->setGeometry(120, 90, 500, 400);
            menuItem("Gradient")->trigger();
            menuItem("Bounding Box")->trigger();
            menuItem("Show Zero data")->trigger();
            viewerWindow()->findChild<QComboBox *>()->setCurrentIndex(1);
            QCOMPARE(viewIn(viewerWindow())->getColorMode(), UserGradient);
            viewerWindow()->close();
        }
        runDeferredDeletes();

        Olvik3DViewerControl viewer("second", nullptr, nullptr);
        if (!isOnWayland())
            QCOMPARE(viewerWindow()->pos(), QPoint(120, 90));
        QCOMPARE(viewerWindow()->size(), QSize(500, 400));
        QCOMPARE(viewIn(viewerWindow())->getAxesFly(), AxesFly::BoundingBox);
        QVERIFY(menuItem("Bounding Box")->isChecked());
        QVERIFY(!menuItem("Show Zero data")->isChecked());
        // The mode comes back, the mark in the menu does not: it has a key of its own that nobody
        // writes.
        QCOMPARE(viewIn(viewerWindow())->getColorMode(), UserGradient);
        QVERIFY(menuItem("Auto")->isChecked());
        menuItem("Gradient")->trigger();
        QCOMPARE(viewIn(viewerWindow())->getColorMode(), UserGradient);
        QCOMPARE(viewerWindow()->findChild<QComboBox *>()->currentText(), QString("Default Color"));
        menuItem("Auto")->trigger();
        QCOMPARE(viewIn(viewerWindow())->getColorMode(), Auto);

        menuItem("Reset Window")->trigger();
        const QRect screen = QGuiApplication::primaryScreen()->geometry();
        QCOMPARE(viewerWindow()->size(), QSize(640, 360));
        QCOMPARE(viewerWindow()->pos(),
            QPoint((screen.width() - 1) / 2 - 639 / 2, (screen.height() - 1) / 2 - 359 / 2));
        QVERIFY(!OlvikSettings::Instance()->contains("3Dviewer/position"));
    }

    void anEmbeddedViewerKeepsTheOperatorsColoring()
    {
        const auto settings = OlvikSettings::Instance();
        settings->setValue("3Dviewer/ColorMode", 1);
        settings->setValue("3Dviewer/gradient_name", "Warm");
        {
            QWidget host;
            const Olvik3DViewerControl viewer("guest", &host, nullptr);
        }
        runDeferredDeletes();
        QCOMPARE(settings->value("3Dviewer/ColorMode").toInt(), 1);
        QCOMPARE(settings->value("3Dviewer/gradient_name").toString(), QString("Warm"));
    }
};

OLVIK_GUI_TEST_MAIN(TestOlvik3DViewerControl)
#include "tst_olvik3dviewercontrol.moc"
