#include "FrameSource.h"
#include "GuiTest.h"
#include "SampleFiles.h"
#include "ScanHost.h"

/// Red at the bottom, blue at the top: nothing else in a window has so much of both and no green.
double shareOfSurface(const QImage &picture)
{
    int surface = 0;
    const int pixels = picture.width() * picture.height();
    for (int i = 0; i < pixels; ++i) {
        const QColor colour = picture.pixelColor(i % picture.width(), i / picture.width());
        surface += colour.green() < 20 && colour.red() + colour.blue() > 200 ? 1 : 0;
    }
    return double(surface) / pixels;
}

class TestScanHost : public QObject
{
    Q_OBJECT

    QTemporaryDir folder;
    QProcess host;

    int run(const QStringList &args, const QString &display)
    {
        host.start("env", QStringList{"-C", folder.path(), "DISPLAY=" + display, SCAN_HOST} + args);
        return host.waitForFinished(60000) ? host.exitCode() : -1;
    }

private Q_SLOTS:
    void initTestCase()
    {
        const std::pair<QString, QByteArray> files[]{{"text.tif", "not an image\n"},
            {"cut.tif", sample("heights/16-bit.tif").chopped(4)},
            {"cut.png", sample("heights/8-bit.png").chopped(20)},
            {"colour.png", sample("refused/colour.png")}, {"raw.f32", QByteArray(24, 'x')},
            {"zero.pgm", "P5 200 150 255\n" + QByteArray(30000, '\0')},
            {"cut.ply", "ply\nformat ascii 1.0\nelement vertex 2\n"},
            {"ramp.pgm", "P5 200 150 255\n" + QByteArray("\1\11\21\31\41").repeated(6000)}};
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
        QTest::newRow("--language klingon") << QByteArray("'klingon'");
        QTest::newRow("--load none.ply") << QByteArray("none.ply");
        QTest::newRow("--load text.tif") << QByteArray("text.tif: is not a PLY");
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

    void pictureShowsTheSurface()
    {
        const QString display = qEnvironmentVariable("DISPLAY");
        for (const QString source : {"--size 256x192", "ramp.pgm --embed"}) {
            QCOMPARE(run((source + " --screenshot p.png").split(' '), display), 0);
            QCOMPARE(host.readAllStandardError(), QByteArray());
            QVERIFY(shareOfSurface(QImage(folder.filePath("p.png"))) > 0.02);
            QVERIFY(QFile::remove(folder.filePath("p.png")));
        }
    }

    void nothingToSeeIsTold()
    {
        const QString display = qEnvironmentVariable("DISPLAY");
        for (const QByteArray file : {"ramp.pgm", "zero.pgm"}) {
            QCOMPARE(run({file, "--load", "cut.ply"}, display), 1);
            const QByteArray told = host.readAllStandardError();
            QCOMPARE(told.contains("zero.pgm: none"), file == "zero.pgm");
            QVERIFY2(told.contains("cut.ply: none"), told.constData());
        }
    }

    /// Two viewers, neither of them in the other's place.
    void embeddedViewersShowTheirSurfaces()
    {
        host.start(EMBEDDED, {"--shot", folder.filePath("e.png")});
        QVERIFY(host.waitForFinished(60000));
        QCOMPARE(host.readAllStandardError(), QByteArray());
        QCOMPARE(host.exitCode(), 0);
        const QImage picture(folder.filePath("e.png"));
        const int half = picture.width() / 2;
        QVERIFY(shareOfSurface(picture.copy(0, 0, half, picture.height())) > 0.02);
        QVERIFY(shareOfSurface(picture.copy(half, 0, half, picture.height())) > 0.02);
    }

    void closingIsPrintedAndEndsTheHost()
    {
        Options options;
        options.file = QStringLiteral("folder/W\u00e4rme.pgm");
        QBuffer events;
        QVERIFY(events.open(QIODevice::WriteOnly));
        ScanHost shown(options, std::make_unique<StillSource>(HeightMap{1, 1, {1}}), events);
        shown.start();
        QTimer::singleShot(200, &shown, [] { QApplication::closeAllWindows(); });
        QCOMPARE(QApplication::exec(), 0);
        QCOMPARE(events.data(), QByteArray("closed W\u00e4rme.pgm\n"));
    }
};

OLVIK_GUI_TEST_MAIN(TestScanHost)
#include "tst_scanhost.moc"
