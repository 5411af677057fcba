#include "GuiTest.h"
#include "Operator.h"
#include "SceneProbe.h"
#include "ViewerWindow.h"

#include "ActionSeparator.h"
#include "CloudScaleDailog.h"
#include "Olvik3DViewerControl.h"
#include "OlvikSettings.h"

#include <algorithm>
#include <cmath>

namespace {

/// The texts of a menu in order: "-" for a separator, "Text >" for a submenu, "[Text]" for a
/// caption.
QStringList textsOf(const QMenu &menu)
{
    QStringList texts;
    for (QAction *action : menu.actions()) {
        if (auto *caption = qobject_cast<ActionSeparator *>(action))
            texts += '[' + caption->defaultWidget()->findChild<QLabel *>()->text() + ']';
        else if (action->isSeparator())
            texts += "-";
        else
            texts += action->menu() ? action->text() + " >" : action->text();
    }
    return texts;
}

} // namespace

Q_DECLARE_METATYPE(QMessageBox::StandardButton)

class TestViewerWindow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        viewer = std::make_unique<Olvik3DViewerControl>("window", nullptr, nullptr);
        view = viewIn(viewerWindow());
        viewer->show();
        QVERIFY(QTest::qWaitForWindowExposed(viewerWindow()));
    }

    void cleanup()
    {
        viewer.reset();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    void menus()
    {
        QStringList bar;
        for (const QAction *action : viewerWindow()->menuBar()->actions())
            bar += action->text();
        QCOMPARE(bar, QStringList({"File", "View"}));
        QCOMPARE(textsOf(*viewerWindow()->menuBar()->actions()[0]->menu()), QStringList({"Save"}));
        QCOMPARE(textsOf(*viewerWindow()->menuBar()->actions()[1]->menu()),
            QStringList({"[Color Mode]", "Auto", "Gradient", "-", "Show Zero data", "Show Axes",
                "Set axes scale", "-", "Reset Zoom", "Reset Window", "-", "Axes Mode >"}));
        const QMenu *axesMode =
            viewerWindow()->menuBar()->actions()[1]->menu()->actions().last()->menu();
        QCOMPARE(textsOf(*axesMode), QStringList({"Fixed", "Dynamic", "Bounding Box"}));
    }

    void menusOpenByKey()
    {
        viewer->show();
        QVERIFY(activate(*viewerWindow()));
        QTest::keyClick(view, Qt::Key_F10);
        auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        QVERIFY(menu);
        QCOMPARE(menu->title(), QString("File"));
        menu->close();
    }

    void axesScaleIsAskedFor_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<float>("factor");
        QTest::newRow("point") << "1.5" << 1.5f;
        QTest::newRow("comma") << "1,5" << 1.5f;
        QTest::newRow("sign and letters are refused") << "-3e" << 3.0f;
        QTest::newRow("nothing") << "" << 1.0f;
    }

    void axesScaleIsAskedFor()
    {
        QFETCH(QString, typed);
        QFETCH(float, factor);
        view->setAxesScale(4.0f, 0.25f, 1234567.0f);
        menuItem("Set axes scale")->trigger();
        QPointer<CloudScaleDailog> dialog =
            qobject_cast<CloudScaleDailog *>(QApplication::activeModalWidget());
        QVERIFY(dialog);
        const QList<QLineEdit *> edits = dialog->findChildren<QLineEdit *>();
        QCOMPARE(edits[0]->text(), QString("4"));
        QCOMPARE(edits[1]->text(), QString("0.25"));
        QCOMPARE(edits[2]->text(), QString("1.23457e+06"));
        QVERIFY(activate(*dialog));
        QCOMPARE(QApplication::focusWidget(), edits[0]);
        QTest::keyClicks(edits[0], "3");
        edits[2]->setText("2");
        edits[1]->clear();
        QTest::keyClicks(edits[1], typed);
        QPushButton *ok = dialog->findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Ok);
        QTest::mouseClick(ok, Qt::LeftButton);
        QCOMPARE(view->getScale_x(), 3.0f);
        QCOMPARE(view->getScale_y(), factor);
        QCOMPARE(view->getScale_z(), 2.0f);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(!dialog);
    }

    void savingWritesTheWholeGrid()
    {
        feed({0, 1.5f, 2, 3, 0, 5}, 3);
        menuItem("Show Zero data")->trigger();
        Operator user(folder.filePath("höhe.ply"));
        menuItem("Save")->trigger();
        QCOMPARE(user.told, QStringList());
        QCOMPARE(user.folder,
            QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation) + "/Output");
        QCOMPARE(user.proposedName, QString());

        QFile file(folder.filePath("höhe.ply"));
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray text = file.readAll();
        QVERIFY(text.startsWith("ply\nformat ascii 1.0\n"));
        QVERIFY(text.contains("element vertex 6\n"));
        QVERIFY(text.contains("end_header\n0 0 0 \n1 0 1.5 \n2 0 2 \n0 1 3 \n1 1 0 \n2 1 5 \n"));
        menuItem("Show Zero data")->trigger();
    }

    void anEarlierMeasurementIsNotLostUnasked_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QMessageBox::StandardButton>("answer");
        QTest::addColumn<QStringList>("asked");
        QTest::addColumn<bool>("isReplaced");
        const QStringList question(
            "save Cloud of Points|kept.ply already exists.\nDo you want to replace it?");
        QTest::newRow("declined") << "kept" << QMessageBox::No << question << false;
        QTest::newRow("accepted") << "kept" << QMessageBox::Yes << question << true;
        QTest::newRow("asked by the dialog")
            << "kept.ply" << QMessageBox::No << QStringList() << true;
        QTest::newRow("another name") << "other" << QMessageBox::No << QStringList() << false;
    }

    void anEarlierMeasurementIsNotLostUnasked()
    {
        QFETCH(QString, typed);
        QFETCH(QMessageBox::StandardButton, answer);
        QFile file(folder.filePath("kept.ply"));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.resize(5));
        file.close();
        const Operator user(folder.filePath(typed), answer);
        menuItem("Save")->trigger();
        QTEST(user.told, "asked");
        QTEST(file.size() != 5, "isReplaced");
    }

    void failedSavesAreTold_data()
    {
        QTest::addColumn<QString>("file");
        QTest::newRow("missing folder") << folder.filePath("none/cloud.ply");
        QTest::newRow("full disk") << "/dev/full";
        QTest::newRow("cancelled") << "";
    }

    void failedSavesAreTold()
    {
        QFETCH(QString, file);
        feed(ramp(100, 100), 100);
        Operator user(file);
        menuItem("Save")->trigger();
        QCOMPARE(user.told,
            QStringList({"Error Saving File|Unable to save file " + file
                + " , please check folder permisions"}));
    }

    void clicksPickAndDragsRotate()
    {
        std::vector<float> heights = ramp(200, 200);
        // Where the sensor saw nothing; must neither be picked nor hide the others.
        std::fill_n(heights.begin(), 5000, std::nanf(""));
        feed(heights, 200);
        view->setAxesScale(1.0f, 0.1f, 1.0f);
        QCoreApplication::processEvents();
        const QSignalSpy points(viewer.get(), &Olvik3DViewerControl::pointPicked);
        QString picked;
        connect(viewer.get(), &Olvik3DViewerControl::pointPicked, this, [&](double *point) {
            picked = QString("%1 %2 %3").arg(point[0]).arg(point[1]).arg(point[2]);
        });
        SceneProbe probe(*view);
        probe.lookFromAbove(200, 200);

        QTest::mouseClick(view, Qt::LeftButton, Qt::NoModifier, probe.clickOn(50, 120, 5));
        QCOMPARE(picked, QString("50 120 5"));
        QCOMPARE(viewerWindow()->statusBar()->findChild<QLabel *>()->text(),
            QString("Point picked X: 50 Y: 120 Z: 5"));

        const QPoint before = probe.pixelOf(50, 120, 5);
        QTest::mousePress(view, Qt::LeftButton, Qt::NoModifier, centre());
        QTest::mouseMove(view, centre() + QPoint(0, 40));
        QTest::qWait(200);
        QTest::mouseRelease(view, Qt::LeftButton, Qt::NoModifier, centre() + QPoint(0, 40));
        QCOMPARE(points.size(), 1);
        QVERIFY(probe.pixelOf(50, 120, 5) != before);
    }

    void ctrlClicksMeasureUntilEscape()
    {
        QVERIFY(activate(*viewerWindow()));
        feed(ramp(200, 200), 200);
        view->showAxes(false);
        SceneProbe probe(*view);
        probe.lookFromAbove(200, 200);
        const int withoutMark = probe.litPixels();
        const QSignalSpy distances(viewer.get(), &Olvik3DViewerControl::distancePicked);

        QTest::keyPress(view, Qt::Key_Control, Qt::ControlModifier);
        for (const int column : {20, 60})
            QTest::mouseClick(
                view, Qt::LeftButton, Qt::ControlModifier, probe.clickOn(column, 100, column));
        QTest::keyRelease(view, Qt::Key_Control);
        QCOMPARE(distances.size(), 1);
        const double distance = distances[0][0].toDouble();
        // Give or take one column at each end.
        QVERIFY(qAbs(distance - 40 * std::sqrt(2.0)) < 3);
        QCOMPARE(viewerWindow()->statusBar()->findChild<QLabel *>()->text(),
            QString("Distance %1").arg(distance));
        QVERIFY(probe.litPixels() != withoutMark);

        QTest::keyClick(view, Qt::Key_Escape);
        QCOMPARE(probe.litPixels(), withoutMark);

        // Ctrl may be released in another window.
        for (const int column : {20, 60}) {
            QTest::mouseClick(
                view, Qt::LeftButton, Qt::ControlModifier, probe.clickOn(column, 100, column));
            view->clearFocus();
        }
        QCOMPARE(distances.size(), 1);
    }

    void theGradientBarRecoloursTheCloud()
    {
        std::vector<float> heights = ramp(200, 200);
        std::transform(
            heights.begin(), heights.end(), heights.begin(), [](float h) { return 4 * h; });
        feed(heights, 200);
        view->showAxes(false);
        SceneProbe probe(*view);
        probe.lookFromAbove(200, 200);
        auto *selector = viewerWindow()->findChild<QComboBox *>();
        QVERIFY(!selector->isVisible());

        menuItem("Gradient")->trigger();
        QVERIFY(selector->isVisible());
        QCOMPARE(selector->currentText(), QString("Default"));
        QTRY_VERIFY(isNear(probe.colorAt(125, 100, 500), QColor(127, 127, 127)));
        QTest::keyClick(selector, Qt::Key_Down);
        QTRY_VERIFY(isNear(probe.colorAt(1, 100, 4), QColor(0, 3, 136), 5));
        selector->setCurrentIndex(0);
        selector->setCurrentIndex(1);
        QTRY_VERIFY(isNear(probe.colorAt(1, 100, 4), QColor(0, 3, 136), 5));
        menuItem("Auto")->trigger();
        QVERIFY(!selector->isVisible());
    }

    void aMaximisedWindowComesBackMaximised()
    {
        viewerWindow()->setGeometry(120, 90, 500, 400);
        viewerWindow()->setWindowState(Qt::WindowMaximized);
        viewerWindow()->close();
        cleanup();
        viewer = std::make_unique<Olvik3DViewerControl>("again", nullptr, nullptr);
        QVERIFY(!viewerWindow()->isMaximized());
        QCOMPARE(viewerWindow()->size(), QSize(500, 400));
        if (!isOnWayland())
            QCOMPARE(viewerWindow()->pos(), QPoint(120, 90));
        viewer->show();
        QVERIFY(viewerWindow()->isMaximized());
        menuItem("Reset Window")->trigger();
        QVERIFY(!viewerWindow()->isMaximized());
        QVERIFY(!OlvikSettings::Instance()->contains("3Dviewer/maximized"));
    }

    void theGradientManagerStaysAboveTheWindow()
    {
        viewerWindow()->findChild<QPushButton *>()->click();
        const QWindowList windows = QGuiApplication::topLevelWindows();
        QVERIFY(std::any_of(windows.begin(), windows.end(), [](const QWindow *window) {
            return window->isVisible() && window->type() == Qt::Dialog
                && window->transientParent() == viewerWindow()->windowHandle();
        }));
    }

private:
    void feed(std::vector<float> heights, int width);
    QPoint centre() const { return view->rect().center(); }

    std::unique_ptr<Olvik3DViewerControl> viewer;
    Olvik3DViewerWidget *view = nullptr;
    QTemporaryDir folder;
};

void TestViewerWindow::feed(std::vector<float> heights, int width)
{
    const QSignalSpy requests(view, &Olvik3DViewerWidget::mRender);
    viewer->setBuffer(heights.data(), width, static_cast<int>(heights.size()) / width);
    QTRY_COMPARE(requests.size(), 1);
    QTRY_VERIFY(view->getAxisVisibility());
}

OLVIK_GUI_TEST_MAIN(TestViewerWindow)
#include "tst_viewerwindow.moc"
