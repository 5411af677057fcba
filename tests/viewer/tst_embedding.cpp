#include "GuiTest.h"
#include "ViewerWindow.h"

#include "Olvik3DViewerControl.h"

#include <memory>

namespace {

using Maker = QWidget *(*)();

template <class Widget> QWidget *make()
{
    return new Widget;
}

QWidget *makeForm()
{
    auto *form = new QWidget;
    (new QVBoxLayout(form))->addWidget(new QLabel("results"));
    return form;
}

} // namespace

Q_DECLARE_METATYPE(Maker)

class TestEmbedding : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theViewHasAPlace_data()
    {
        QTest::addColumn<Maker>("makeHost");
        QTest::newRow("widget") << Maker(make<QWidget>);
        QTest::newRow("form") << Maker(makeForm);
        QTest::newRow("main window") << Maker(make<QMainWindow>);
        QTest::newRow("dock") << Maker(make<QDockWidget>);
        QTest::newRow("subwindow") << Maker(make<QMdiSubWindow>);
        QTest::newRow("scroll area") << Maker(make<QScrollArea>);
        QTest::newRow("stack") << Maker(make<QStackedWidget>);
        QTest::newRow("tabs") << Maker(make<QTabWidget>);
        QTest::newRow("tool box") << Maker(make<QToolBox>);
        QTest::newRow("workspace") << Maker(make<QMdiArea>);
        QTest::newRow("splitter") << Maker(make<QSplitter>);
    }

    void theViewHasAPlace()
    {
        QFETCH(Maker, makeHost);
        for (const bool isHostShown : {false, true}) {
            const std::unique_ptr<QWidget> host(makeHost());
            host->resize(900, 700);
            if (isHostShown)
                host->show();
            const auto widgets = host->findChildren<QWidget *>();
            const QLayout *layout = host->layout();
            auto *viewer = new Olvik3DViewerControl("first", host.get(), nullptr);
            viewer->show();
            QVERIFY(QTest::qWaitForWindowExposed(host.get()));
            QVERIFY(viewer->isVisible() && !viewerWindow());
            QVERIFY(host->findChildren<QMenuBar *>().isEmpty());
            QPointer<QWidget> view = viewIn(host.get());
            QTRY_VERIFY(view->width() > 400 && view->height() > 300);

            auto *second = new Olvik3DViewerControl("second", host.get(), nullptr);
            second->show();
            delete viewer;
            QTRY_VERIFY(!view);
            view = viewIn(host.get());
            QTRY_VERIFY(view->width() > 400 && view->height() > 300);
            // One laid over them would hide the host's own pages, tabs and panes.
            QVERIFY(host->layout() == layout || makeHost == Maker(make<QWidget>));
            if (isHostShown)
                continue; // the second goes with its parent
            delete second;
            QTRY_COMPARE(host->findChildren<QWidget *>(), widgets);
            QCOMPARE(host->layout(), layout);
        }
    }

    void theHostsContentStays()
    {
        QMainWindow host;
        const QPointer<QWidget> content = new QLabel("results");
        host.setCentralWidget(content);
        for (QWidget *parent : std::initializer_list<QWidget *>{&host, host.addToolBar("tools")}) {
            QTest::ignoreMessage(QtWarningMsg,
                QRegularExpression("^3D viewer: this Q\\w+ has no place for the view"));
            Olvik3DViewerControl viewer("homeless", parent, nullptr);
            viewer.show();
        }
        QTRY_VERIFY(!viewIn(&host));
        QCOMPARE(host.centralWidget(), content.data());
    }

    void aHiddenPanelReturnsAsItWas()
    {
        for (const bool wasShown : {true, false}) {
            QWidget panel;
            Olvik3DViewerControl viewer("panel", &panel, nullptr);
            if (wasShown)
                viewer.show();
            viewer.hide();
            viewer.hide();
            QVERIFY(!panel.isVisible() && !viewer.isVisible());
            panel.show();
            QCOMPARE(viewer.isVisible(), wasShown);
        }
    }
};

OLVIK_GUI_TEST_MAIN(TestEmbedding)
#include "tst_embedding.moc"
