#include "GuiTest.h"
#include "Olvik3DViewerControl.h"
#include "Olvik3DViewerFormWidget.h"
#include "SceneProbe.h"
#include "ViewerWindow.h"

#include <QtUiPlugin/QDesignerCustomWidgetInterface>
#include <QUiLoader>

class TestDesigner : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void designerShowsAPlaceholder()
    {
        QPluginLoader loader(PLUGIN);
        auto *plugin = qobject_cast<QDesignerCustomWidgetInterface *>(loader.instance());
        QVERIFY2(plugin, qPrintable(loader.errorString()));
        QVERIFY(plugin->domXml().contains("class=\"" + plugin->name() + '"'));
        char core = 0; // only its presence counts
        plugin->initialize(reinterpret_cast<QDesignerFormEditorInterface *>(&core));
        const std::unique_ptr<QWidget> widget(plugin->createWidget(nullptr));
        QCOMPARE(widget->metaObject()->className(), qPrintable(plugin->name()));
        QVERIFY(!viewIn(widget.get()));
        widget->resize(200, 100);
        QCOMPARE(widget->grab().toImage().pixelColor(5, 5), QColor(Qt::black));
        plugin->initialize(nullptr);
    }

    void aFormShowsTheHostsHeights()
    {
        QByteArray form =
            "<ui version='4.0'><class>Form</class><widget class='QWidget' name='Form'>"
            "<layout class='QVBoxLayout'><item><widget class='QPushButton'/></item>"
            "<item><widget class='Olvik3DViewerFormWidget' name='viewer'/></item>"
            "</layout></widget></ui>";
        QBuffer file(&form);
        QUiLoader loader;
        loader.clearPluginPaths();
        loader.addPluginPath(PLUGIN_FOLDER);
        const std::unique_ptr<QWidget> window(loader.load(&file));
        QVERIFY2(window, qPrintable(loader.errorString()));
        auto *place = window->findChild<Olvik3DViewerFormWidget *>("viewer");
        QVERIFY(place && place->control());
        window->show();
        QVERIFY(QTest::qWaitForWindowExposed(window.get()));
        std::vector<float> heights = ramp(64, 48);
        place->control()->setBuffer(heights.data(), 64, 48);
        QTRY_VERIFY(viewIn(place)->isVisible() && SceneProbe(*viewIn(place)).litPixels() > 1000);
    }
};

OLVIK_GUI_TEST_MAIN(TestDesigner)
#include "tst_designer.moc"
