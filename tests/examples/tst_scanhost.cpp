#include "ConsoleReceiver.h"
#include "FrameSource.h"
#include "GuiTest.h"
#include "SampleFiles.h"
#include "ScanHost.h"
#include "WindowShot.h"

#include <QBuffer>
#include <QFile>
#include <QImage>
#include <QLabel>
#include <QMainWindow>
#include <QOpenGLWidget>
#include <QProcess>
#include <QTimer>

namespace {

struct Ended
{
    int status = -1;
    QByteArray out;
    QByteArray err;
};

Ended run(
    const QStringList &arguments, const QString &folder, const QProcessEnvironment &environment)
{
    QProcess host;
    host.setWorkingDirectory(folder);
    host.setProcessEnvironment(environment);
    host.start(QStringLiteral(SCAN_HOST), arguments);
    Ended ended;
    if (host.waitForFinished(60000) && host.exitStatus() == QProcess::NormalExit)
        ended.status = host.exitCode();
    ended.out = host.readAllStandardOutput();
    ended.err = host.readAllStandardError();
    return ended;
}

/// Qt complains on the console where a session has no such folder.
QProcessEnvironment withDisplay(const QString &runtimeFolder)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), runtimeFolder);
    return environment;
}

QProcessEnvironment withoutDisplay()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(QStringLiteral("DISPLAY"));
    environment.remove(QStringLiteral("WAYLAND_DISPLAY"));
    return environment;
}

HeightMap ramp()
{
    HeightMap map{200, 150, {}};
    for (int i = 0; i < map.width * map.height; ++i)
        map.heights.push_back(static_cast<float>(1 + i % 50));
    return map;
}

/// Red at the bottom, blue at the top: no other part of a window has so much of both and no green.
double shareOfSurface(const QImage &picture)
{
    int surface = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            const QColor colour = picture.pixelColor(x, y);
            surface += colour.green() < 20 && colour.red() + colour.blue() > 200 ? 1 : 0;
        }
    }
    return double(surface) / (double(picture.width()) * picture.height());
}

QMainWindow *visibleWindow()
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget *window : windows) {
        if (window->isVisible() && qobject_cast<QMainWindow *>(window))
            return qobject_cast<QMainWindow *>(window);
    }
    return nullptr;
}

} // namespace

class TestScanHost : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void wrongInputIsOneLineAndStatusTwoWithoutDisplay_data();
    void wrongInputIsOneLineAndStatusTwoWithoutDisplay();
    void informationNeedsNoDisplay_data();
    void informationNeedsNoDisplay();
    void pictureShowsTheSurface_data();
    void pictureShowsTheSurface();
    void emptyViewGivesNoPicture();
    void endsAfterTheLastFrame();
    void closingIsPrintedAndEndsTheHost();
    void embeddingWindowCountsTheBuffers();
    void eventsAreLinesOfPlainNumbers();

private:
    void write(const char *name, const QByteArray &bytes);

    QTemporaryDir folder;
};

void TestScanHost::initTestCase()
{
    SampleFiles::Tiff tiff;
    tiff.values = QByteArray(24, 'x');
    const QByteArray png =
        SampleFiles::greyPng(QImage::Format_Grayscale16, 2, std::vector<quint16>{1, 2, 3, 4});
    QByteArray rampValues;
    for (const float height : ramp().heights)
        rampValues += static_cast<char>(height);

    write("good.tif", tiff.bytes());
    write("cut.tif", tiff.bytes().chopped(4));
    write("text.tif", "not an image at all\n");
    write("byte.tif", "I");
    write("cut.png", png.chopped(20));
    write("colour.png", SampleFiles::colourPng());
    write("cut.pgm", "P5\n3");
    write("heights.f32", QByteArray(24, '\0'));
    write("heights.xyz", "1 2 3\n");
    write("ramp.pgm", "P5 200 150 255\n" + rampValues);
}

void TestScanHost::write(const char *name, const QByteArray &bytes)
{
    QFile file(folder.filePath(QLatin1String(name)));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(bytes), qint64(bytes.size()));
}

void TestScanHost::wrongInputIsOneLineAndStatusTwoWithoutDisplay_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("reason");

    const auto row = [](const char *title, const QStringList &arguments, const char *reason) {
        QTest::newRow(title) << arguments << QByteArray(reason);
    };
    row("load without a file", {"--load", "none.ply"}, "none.ply");
    row("swap without load", {"--swap"}, "--swap");
    row("scale of two factors", {"--scale", "1,2"}, "--scale");
    row("scale of zero", {"--scale", "1,0,2"}, "--scale");
    row("unknown colours", {"--color", "rainbow"}, "--color");
    row("unknown option", {"--colour"}, "colour");
    row("two unknown options", {"--colour", "-q"}, "colour");
    row("two files", {"good.tif", "ramp.pgm"}, "one file");
    row("no file", {"missing.tif"}, "missing.tif: there is no such file");
    row("empty name", {""}, "empty");
    row("name with a line end", {"a\nb.tif"}, "no such file");
    row("folder", {"."}, "directory");
    row("unknown suffix", {"heights.xyz"}, "suffix");
    row("cut TIFF", {"cut.tif"}, "cut.tif: is damaged");
    row("text as TIFF", {"text.tif"}, "not a TIFF");
    row("one byte", {"byte.tif"}, "not a TIFF");
    row("cut PNG", {"cut.png"}, "damaged");
    row("colour PNG", {"colour.png"}, "grey");
    row("cut PGM", {"cut.pgm"}, "PGM");
    row("raw file without width", {"heights.f32"}, "--width");
    row("width without raw file", {"good.tif", "--width", "3"}, "--width");
    row("width without file", {"--width", "3"}, "--width");
    row("width that does not divide", {"heights.f32", "--width", "4"}, "24 bytes");
    row("width zero", {"heights.f32", "--width", "0"}, "'0'");
    row("negative width", {"heights.f32", "--width", "-3"}, "'-3'");
    row("huge width", {"heights.f32", "--width", "99999999999"}, "'99999999999'");
    row("width in words", {"heights.f32", "--width", "three"}, "'three'");
    row("width without a value", {"heights.f32", "--width"}, "width");
    row("size of one side", {"--size", "640"}, "'640'");
    row("size too small", {"--size", "640x15"}, "'640x15'");
    row("size too large", {"--size", "4097x640"}, "'4097x640'");
    row("negative size", {"--size", "-640x480"}, "'-640x480'");
    row("size of a file", {"good.tif", "--size", "64x64"}, "--size");
    row("rate zero", {"--rate", "0"}, "'0'");
    row("rate that is no number", {"--rate", "nan"}, "'nan'");
    row("endless rate", {"--rate", "inf"}, "'inf'");
    row("no frames", {"--frames", "0"}, "'0'");
    row("half a frame", {"--frames", "1.5"}, "'1.5'");
    row("picture in a missing folder", {"--screenshot", "missing/p.png"}, "missing/p.png");
    row("picture over a folder", {"--screenshot", "."}, "directory");
    row("picture over a device", {"--screenshot", "/dev/full"}, "/dev/full");
    row("picture without a name", {"--screenshot", ""}, "--screenshot");
}

void TestScanHost::wrongInputIsOneLineAndStatusTwoWithoutDisplay()
{
    QFETCH(QStringList, arguments);
    QFETCH(QByteArray, reason);

    const Ended ended = run(arguments, folder.path(), withoutDisplay());

    QCOMPARE(ended.status, 2);
    QVERIFY2(ended.err.contains(reason), ended.err.constData());
    QCOMPARE(ended.err.count('\n'), 1);
    QVERIFY(ended.err.endsWith('\n'));
    QCOMPARE(ended.out, QByteArray());
}

void TestScanHost::informationNeedsNoDisplay_data()
{
    QTest::addColumn<QString>("option");
    QTest::addColumn<QByteArray>("line");

    QTest::newRow("help") << "--help" << QByteArray("--screenshot <png>");
    QTest::newRow("short help") << "-h" << QByteArray("--width <count>");
    QTest::newRow("version") << "--version" << QByteArray("scan_host 0.");
}

void TestScanHost::informationNeedsNoDisplay()
{
    QFETCH(QString, option);
    QFETCH(QByteArray, line);

    const Ended ended = run({option}, folder.path(), withoutDisplay());

    QCOMPARE(ended.status, 0);
    QVERIFY2(ended.out.contains(line), ended.out.constData());
    QCOMPARE(ended.err, QByteArray());
}

void TestScanHost::pictureShowsTheSurface_data()
{
    QTest::addColumn<QStringList>("arguments");

    QTest::newRow("simulated scanner") << QStringList{"--size", "256x192"};
    QTest::newRow("file") << QStringList{"ramp.pgm"};
    QTest::newRow("embedded file") << QStringList{"ramp.pgm", "--embed"};
    QTest::newRow("after some frames")
        << QStringList{"--size", "256x192", "--frames", "3", "--rate", "20"};
}

void TestScanHost::pictureShowsTheSurface()
{
    QFETCH(QStringList, arguments);
    const QString name = folder.filePath(QStringLiteral("picture.png"));
    QFile::remove(name);

    const Ended ended = run(arguments + QStringList{"--screenshot", "picture.png"}, folder.path(),
        withDisplay(folder.path()));

    QCOMPARE(ended.err, QByteArray());
    QCOMPARE(ended.status, 0);
    const QImage picture(name, "PNG");
    QVERIFY(!picture.isNull());
    QVERIFY2(
        shareOfSurface(picture) > 0.02, QByteArray::number(shareOfSurface(picture)).constData());
}

void TestScanHost::emptyViewGivesNoPicture()
{
    QMainWindow window;
    window.setCentralWidget(new QOpenGLWidget(&window));
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    WindowShot shot(&window, std::chrono::milliseconds(1600), nullptr);
    const QSignalSpy taken(&shot, &WindowShot::taken);
    QSignalSpy failed(&shot, &WindowShot::failed);

    shot.start();

    QVERIFY(failed.wait(10000));
    QCOMPARE(taken.count(), 0);
}

void TestScanHost::endsAfterTheLastFrame()
{
    const Ended ended = run({"--frames", "3", "--rate", "50", "--size", "64x48"}, folder.path(),
        withDisplay(folder.path()));

    QCOMPARE(ended.err, QByteArray());
    QCOMPARE(ended.status, 0);
    QCOMPARE(ended.out, QByteArray());
}

void TestScanHost::closingIsPrintedAndEndsTheHost()
{
    Options options;
    options.file = QStringLiteral("folder/W\u00e4rme.pgm");
    QBuffer events;
    QVERIFY(events.open(QIODevice::WriteOnly));
    ScanHost host(options, std::make_unique<StillSource>(ramp()), events);
    host.start();
    QMainWindow *window = visibleWindow();
    QVERIFY(window);
    QTimer::singleShot(200, window, [window] { window->close(); });
    QTimer::singleShot(20000, &host, [] { QCoreApplication::exit(-1); });

    QCOMPARE(QApplication::exec(), 0);

    QCOMPARE(events.data(), QByteArray("closed W\u00e4rme.pgm\n"));
}

void TestScanHost::embeddingWindowCountsTheBuffers()
{
    Options options;
    options.embed = true;
    options.rate = 50;
    options.frames = 3;
    QBuffer events;
    QVERIFY(events.open(QIODevice::WriteOnly));
    ScanHost host(options, std::make_unique<StillSource>(ramp()), events);
    host.start();
    QMainWindow *window = visibleWindow();
    QVERIFY(window);
    const auto *count = window->findChild<QLabel *>();
    QVERIFY(count);

    QTRY_VERIFY(count->text().endsWith(QLatin1String(" 3")));
}

void TestScanHost::eventsAreLinesOfPlainNumbers()
{
    QBuffer events;
    QVERIFY(events.open(QIODevice::WriteOnly));
    ConsoleReceiver receiver(events);
    const QLocale before;
    QLocale::setDefault(QLocale(QLocale::German));
    double point[]{1234.5, 0, -0.125};

    receiver.printPoint(point);
    receiver.printDistance(1.5);
    QLocale::setDefault(before);

    QCOMPARE(events.data(), QByteArray("picked 1234.5 0 -0.125\ndistance 1.5\n"));
}

OLVIK_GUI_TEST_MAIN(TestScanHost)
#include "tst_scanhost.moc"
