// What the window system tells a view in the window of a host, or keeps to itself.
#include "GuiTest.h"

#include "MouseInteractorStylePP.h"
#include "Olvik3DViewerWidget.h"
#include "VtkCompatibility.h"

#include <vtkRenderWindow.h>

#include <functional>

namespace {

/// A view in a host's window.
struct Host : QWidget
{
    Host()
    {
        (new QVBoxLayout(this))->addWidget(view);
        resize(300, 300);
        show();
        view->show();
    }

    Olvik3DViewerWidget *view = new Olvik3DViewerWidget(this);
    MouseInteractorStylePP *style = view->findChild<MouseInteractorStylePP *>();
    QDialog box{this};
};

using Loss = std::function<void(Host &, Qt::MouseButtons first)>;

void moveHolding(Qt::MouseButtons held, Host &host)
{
    QTestPrivate::qtestMouseButtons = held;
    QTest::mouseMove(host.view, QPoint(50, 60));
}

} // namespace

Q_DECLARE_METATYPE(Loss)

class TestViewInHost : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { events = 0; }

    void everyPressCounts()
    {
        Host host;
        QVERIFY(QTest::qWaitForWindowExposed(&host));
        const QSignalSpy picks(host.view, &Olvik3DViewerWidget::pointPicked);
        const QSignalSpy distances(host.view, &Olvik3DViewerWidget::distancePicked);
        host.style->AddObserver(vtkCommand::StartInteractionEvent, this, &TestViewInHost::count);
        for (const auto button : {Qt::LeftButton, Qt::MiddleButton, Qt::RightButton})
            QTest::mouseDClick(host.view, button);
        QCOMPARE(events, 6);
        QCOMPARE(picks.size(), 2);
        QTest::mouseDClick(host.view, Qt::LeftButton, Qt::ControlModifier);
        QCOMPARE(distances.size(), 1);
    }

    void aLostReleaseEndsTheInteraction_data()
    {
        QTest::addColumn<Loss>("lose");
        QTest::newRow("modal box") << Loss([](Host &host, auto) { host.box.open(); });
        QTest::newRow("hidden") << Loss([](Host &host, auto) { host.hide(); });
        QTest::newRow("elsewhere") << Loss([](Host &host, auto) { moveHolding({}, host); });
        QTest::newRow("elsewhere, after a click of another") << Loss([](Host &host, auto first) {
            QTest::mouseClick(
                host.view, first == Qt::RightButton ? Qt::MiddleButton : Qt::RightButton);
            moveHolding({}, host);
        });
        QTest::newRow("of a second button") << Loss([](Host &host, auto first) {
            QTest::mousePress(host.view, Qt::RightButton);
            moveHolding(first & ~Qt::RightButton, host);
        });
    }

    void aLostReleaseEndsTheInteraction()
    {
        QFETCH(Loss, lose);
        for (const auto button : {Qt::LeftButton, Qt::MiddleButton, Qt::RightButton}) {
            Host host;
            QVERIFY(QTest::qWaitForWindowExposed(&host));
            const QSignalSpy picks(host.view, &Olvik3DViewerWidget::pointPicked);
            const double rest = VtkCompatibility::renderWindow(*host.view)->GetDesiredUpdateRate();
            QTest::mousePress(host.view, button);
            QTest::mouseMove(host.view, QPoint(60, 60));
            QVERIFY(host.style->GetState() != VTKIS_NONE);
            lose(host, button);
            QCOMPARE(host.style->GetState(), VTKIS_NONE);
            QCOMPARE(VtkCompatibility::renderWindow(*host.view)->GetDesiredUpdateRate(), rest);
            QTest::mouseRelease(host.view, button);
            QCOMPARE(picks.size(), 0);
        }
    }

    void aProgramMayTurn()
    {
        Host host;
        QVERIFY(QTest::qWaitForWindowExposed(&host));
        for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseMove, QEvent::MouseMove}) {
            QMouseEvent event(
                type, QPointF(50, 60), QPointF(50, 60), Qt::LeftButton, Qt::LeftButton, {});
            QCoreApplication::sendEvent(host.view, &event);
            QVERIFY(host.style->GetState() != VTKIS_NONE);
        }
    }

    void aSlotMayDeleteTheView()
    {
        Host host;
        QVERIFY(QTest::qWaitForWindowExposed(&host));
        connect(host.view, &Olvik3DViewerWidget::pointPicked, this,
            [&host] { delete std::exchange(host.view, nullptr); });
        QTest::mouseClick(host.view, Qt::LeftButton);
        QVERIFY(!host.view);
    }

    void nothingIsDrawnOutOfSight()
    {
        Host host;
        QVERIFY(QTest::qWaitForWindowExposed(&host));
        const QSignalSpy requests(host.view, &Olvik3DViewerWidget::mRender);
        const auto load = [&host] {
            const auto cloud = vtkSmartPointer<vtkPolyData>::New();
            host.view->loadPolyData(cloud, {0, 1, 0, 1, 0, 1}, {0, 1});
            QCoreApplication::processEvents();
        };
        host.view->grabFramebuffer();
        VtkCompatibility::renderWindow(*host.view)
            ->AddObserver(vtkCommand::EndEvent, this, &TestViewInHost::count);
        host.hide();
        for (int i = 0; i < 3; ++i)
            load();
        QCOMPARE(requests.size(), 3);
        QCOMPARE(events, 0);
        host.view->grabFramebuffer();
        QCOMPARE(events, 1);
        load();
        host.show();
        QTRY_COMPARE(events, 2);
    }

private:
    void count() { ++events; }

    int events = 0;
};

OLVIK_GUI_TEST_MAIN(TestViewInHost)
#include "tst_viewinhost.moc"
