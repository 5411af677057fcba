#include "FrameSource.h"
#include "GuiTest.h"
#include "SampleFiles.h"
#include "ScanHost.h"

#include <QProcess>
#include <QTimer>

/// Red at the bottom, blue at the top: nothing else in a window has so much of both and no green.
double shareOfSurface(const QImage &picture)
{
    int surface = 0;
    const int pixels = picture.width() * picture.height();
    for (int i = 0; i < pixels; ++i) {
        const QColor colour = picture.pixelColor(i % picture.width(), i / picture.width());
        surface += colour.green() < 20 && colour.red() + colour.blue() > 200 ? 1 : 0;
    }
    return pixels == 0 ? 0 : double(surface) / pixels;
}

class TestScanHost : public QObject
{
    Q_OBJECT

    QTemporaryDir folder;
    QProcess host;

    int run(const QStringList &arguments, const QString &display)
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("DISPLAY", display);
        environment.insert("XDG_RUNTIME_DIR", folder.path()); // Qt warns where there is none
        host.setProcessEnvironment(environment);
        host.setWorkingDirectory(folder.path());
        host.start(SCAN_HOST, arguments);
        return host.waitForFinished(60000) ? host.exitCode() : -1;
    }

private Q_SLOTS:
    void initTestCase()
    {
        QImage colours(3, 2, QImage::Format_RGB32);
        colours.fill(Qt::red);
        const QByteArray ramp = QByteArray("\1\5\11\15\21\25\31\35\41\45").repeated(3000);
        const std::vector<std::pair<QString, QByteArray>> files{
            {"cut.tif", SampleFiles::Tiff().bytes().chopped(4)}, {"text.tif", "not an image\n"},
            {"cut.png",
                SampleFiles::png(colours.convertToFormat(QImage::Format_Grayscale8)).chopped(20)},
            {"colour.png", SampleFiles::png(colours)}, {"raw.f32", QByteArray(24, '\0')},
            {"ramp.pgm", "P5 200 150 255\n" + ramp}};
        for (const auto &[name, bytes] : files) {
            QFile file(folder.filePath(name));
            QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
        }
    }

    void wrongInputIsOneLineAndStatusTwoWithoutDisplay_data()
    {
        QTest::addColumn<QByteArray>("reason");
        QTest::newRow("--colour") << QByteArray("colour");
        QTest::newRow("missing.tif") << QByteArray("missing.tif: there is no such file");
        QTest::newRow("cut.tif") << QByteArray("cut.tif: is damaged");
        QTest::newRow("text.tif") << QByteArray("not a TIFF");
        QTest::newRow("cut.png") << QByteArray("damaged");
        QTest::newRow("colour.png") << QByteArray("grey");
        QTest::newRow("raw.f32") << QByteArray("--width");
        QTest::newRow("raw.f32 --width 4") << QByteArray("24 bytes");
        QTest::newRow("--size 640x15") << QByteArray("'640x15'");
        QTest::newRow("--rate nan") << QByteArray("'nan'");
        QTest::newRow("--frames 0") << QByteArray("'0'");
        QTest::newRow("--scale 1,0,2") << QByteArray("--scale");
        QTest::newRow("--color rainbow") << QByteArray("--color");
        QTest::newRow("--load none.ply") << QByteArray("none.ply");
        QTest::newRow("--swap") << QByteArray("--load");
        QTest::newRow("--screenshot none/p.png") << QByteArray("none/p.png");
    }

    void wrongInputIsOneLineAndStatusTwoWithoutDisplay()
    {
        QFETCH(QByteArray, reason);
        QCOMPARE(run(QString(QTest::currentDataTag()).split(' '), {}), 2);
        const QByteArray line = host.readAllStandardError();
        QVERIFY2(line.contains(reason) && line.indexOf('\n') == line.size() - 1, line.constData());
    }

    void helpNeedsNoDisplay()
    {
        QCOMPARE(run({"--help"}, {}), 0);
        QVERIFY(host.readAllStandardOutput().contains("--screenshot <png>"));
    }

    void pictureShowsTheSurface_data()
    {
        QTest::addColumn<QString>("arguments");
        QTest::newRow("simulated scanner") << "--size 256x192 --screenshot simulated.png";
        QTest::newRow("embedded file") << "ramp.pgm --embed --screenshot file.png";
    }

    void pictureShowsTheSurface()
    {
        QFETCH(QString, arguments);
        const QString picture = arguments.section(' ', -1);
        QCOMPARE(run(arguments.split(' '), qEnvironmentVariable("DISPLAY")), 0);
        QCOMPARE(host.readAllStandardError(), QByteArray());
        QVERIFY(shareOfSurface(QImage(folder.filePath(picture))) > 0.02);
    }

    void closingIsPrintedAndEndsTheHost()
    {
        Options options;
        options.file = QStringLiteral("folder/W\u00e4rme.pgm");
        QBuffer events;
        QVERIFY(events.open(QIODevice::WriteOnly));
        ScanHost shown(
            options, std::make_unique<StillSource>(HeightMap{2, 2, {1, 2, 3, 4}}), events);
        shown.start();
        QTimer::singleShot(200, &shown, [] { QApplication::closeAllWindows(); });
        QTimer::singleShot(20000, &shown, [] { QCoreApplication::exit(-1); });
        QCOMPARE(QApplication::exec(), 0);
        QCOMPARE(events.data(), QByteArray("closed W\u00e4rme.pgm\n"));
    }
};

OLVIK_GUI_TEST_MAIN(TestScanHost)
#include "tst_scanhost.moc"
