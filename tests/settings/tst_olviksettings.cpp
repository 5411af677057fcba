#include "OlvikSettings.h"

#include <QtTest>

#include <QCoreApplication>
#include <QDataStream>
#include <QDir>
#include <QFile>
#include <QPoint>
#include <QProcess>
#include <QSize>
#include <QTemporaryDir>

#include <thread>
#include <vector>

namespace {

// QSettings objects of one process share what they have read, so only another process proves what
// the file holds. The test starts itself again with this argument and a key.
const QString readInAnotherProcess = QStringLiteral("--read");

struct Stored
{
    bool exists = false;
    QVariant value;
};

int printStored(const QString &key)
{
    const auto settings = OlvikSettings::Instance();
    QFile out;
    if (!out.open(stdout, QIODevice::WriteOnly))
        return EXIT_FAILURE;
    QDataStream(&out) << settings->contains(key) << settings->value(key);
    return EXIT_SUCCESS;
}

Stored storedOnDisk(const QString &key)
{
    QProcess reader;
    reader.start(QCoreApplication::applicationFilePath(), {readInAnotherProcess, key});
    Stored stored;
    if (reader.waitForFinished() && reader.exitCode() == EXIT_SUCCESS)
        QDataStream(reader.readAllStandardOutput()) >> stored.exists >> stored.value;
    return stored;
}

} // namespace

class TestOlvikSettings : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyCallerGetsTheSameStore();
    void valueIsOnDiskWhenTheCallReturns_data();
    void valueIsOnDiskWhenTheCallReturns();
    void keysThatDifferInCaseAreTwoKeys();
    void absentKeyGivesTheDefault();
    void storedValueWinsOverTheDefault();
    void removedKeyIsGoneFromDiskAndItsNeighbourStays();
    void changeOfAnotherProcessSurvivesOurWrite();
    void organisationWideFileDoesNotShineThrough();
    void writesFromManyThreadsAllArrive();

private:
    const std::shared_ptr<OlvikSettings> settings = OlvikSettings::Instance();
};

void TestOlvikSettings::everyCallerGetsTheSameStore()
{
    std::shared_ptr<OlvikSettings> fromThread;
    std::thread([&fromThread] { fromThread = OlvikSettings::Instance(); }).join();

    QCOMPARE(fromThread, settings);
}

void TestOlvikSettings::valueIsOnDiskWhenTheCallReturns_data()
{
    QTest::addColumn<QVariant>("value");

    QTest::newRow("point left of the screen") << QVariant(QPoint(-120, 35));
    QTest::newRow("size") << QVariant(QSize(640, 360));
    QTest::newRow("true") << QVariant(true);
    QTest::newRow("false") << QVariant(false);
    QTest::newRow("integer") << QVariant(-3);
    QTest::newRow("text outside ASCII")
        << QVariant(QStringLiteral("W\u00e4rmebild \u6e29\u5ea6 \U0001F525"));
    QTest::newRow("empty text") << QVariant(QString(QLatin1String("")));
    QTest::newRow("text with the format's own characters")
        << QVariant(QStringLiteral("a, b; c=\"d\" [e] \\f %20 #g"));
    QTest::newRow("text of several lines") << QVariant(QStringLiteral("first\nsecond\ttab"));
    QTest::newRow("text that looks like a stored point") << QVariant(QStringLiteral("@Point(1 2)"));
    QTest::newRow("text with blanks at its ends") << QVariant(QStringLiteral("  padded  "));
}

void TestOlvikSettings::valueIsOnDiskWhenTheCallReturns()
{
    QFETCH(QVariant, value);
    const QString key = QStringLiteral("3Dviewer/value");

    settings->setValue(key, value);

    QVariant stored = storedOnDisk(key).value;
    QVERIFY(stored.isValid());
    QVERIFY(stored.convert(value.userType()));
    QCOMPARE(stored, value);
}

void TestOlvikSettings::keysThatDifferInCaseAreTwoKeys()
{
    settings->setValue(QStringLiteral("3Dviewer/ColorMode"), 1);
    settings->setValue(QStringLiteral("3DViewer/ColorMode"), 0);

    QCOMPARE(settings->value(QStringLiteral("3Dviewer/ColorMode")).toInt(), 1);
    QCOMPARE(storedOnDisk(QStringLiteral("3Dviewer/ColorMode")).value.toInt(), 1);
    QVERIFY(storedOnDisk(QStringLiteral("3DViewer/ColorMode")).exists);
    QCOMPARE(storedOnDisk(QStringLiteral("3DViewer/ColorMode")).value.toInt(), 0);
    QVERIFY(!storedOnDisk(QStringLiteral("3dviewer/colormode")).exists);
}

void TestOlvikSettings::absentKeyGivesTheDefault()
{
    const QString key = QStringLiteral("3Dviewer/absent");

    QVERIFY(!settings->contains(key));
    QVERIFY(!settings->value(key).isValid());
    QCOMPARE(settings->value(key, QSize(4, 5)).toSize(), QSize(4, 5));
    QVERIFY(!settings->contains(key));
}

void TestOlvikSettings::storedValueWinsOverTheDefault()
{
    settings->setValue(QStringLiteral("3DViewer/showzero"), false);

    QCOMPARE(settings->value(QStringLiteral("3DViewer/showzero"), true).toBool(), false);
}

void TestOlvikSettings::removedKeyIsGoneFromDiskAndItsNeighbourStays()
{
    settings->setValue(QStringLiteral("3Dviewer/position"), QPoint(1, 2));
    settings->setValue(QStringLiteral("3Dviewer/positions"), 3);
    settings->setValue(QStringLiteral("3DViewer/position"), 4);

    settings->remove(QStringLiteral("3Dviewer/position"));

    QVERIFY(!settings->contains(QStringLiteral("3Dviewer/position")));
    QVERIFY(!storedOnDisk(QStringLiteral("3Dviewer/position")).exists);
    QVERIFY(storedOnDisk(QStringLiteral("3Dviewer/positions")).exists);
    QVERIFY(storedOnDisk(QStringLiteral("3DViewer/position")).exists);
}

void TestOlvikSettings::changeOfAnotherProcessSurvivesOurWrite()
{
    const QDir folder(qEnvironmentVariable("XDG_CONFIG_HOME"));
    settings->setValue(QStringLiteral("3Dviewer/ours"), 1);
    QFile file(folder.filePath(QStringLiteral("Olvik/OlvikSettings.ini")));
    QVERIFY(file.open(QIODevice::Append | QIODevice::Text));
    file.write("\n[Sensor]\ntheirs=7\n");
    file.close();

    settings->setValue(QStringLiteral("3Dviewer/ours"), 2);

    QCOMPARE(storedOnDisk(QStringLiteral("Sensor/theirs")).value.toInt(), 7);
    QCOMPARE(storedOnDisk(QStringLiteral("3Dviewer/ours")).value.toInt(), 2);
}

void TestOlvikSettings::organisationWideFileDoesNotShineThrough()
{
    const QDir folder(qEnvironmentVariable("XDG_CONFIG_HOME"));
    QFile file(folder.filePath(QStringLiteral("Olvik.ini")));
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Text));
    file.write("[3Dviewer]\nFlyMode=3\n");
    file.close();

    QVERIFY(!storedOnDisk(QStringLiteral("3Dviewer/FlyMode")).exists);
    QVERIFY(!storedOnDisk(QStringLiteral("3Dviewer/FlyMode")).value.isValid());
}

void TestOlvikSettings::writesFromManyThreadsAllArrive()
{
    constexpr int threadCount = 4;
    constexpr int keysPerThread = 10;
    const auto key = [](int thread, int i) {
        return QStringLiteral("Thread%1/key%2").arg(thread).arg(i);
    };
    std::vector<std::thread> threads;
    for (int thread = 0; thread < threadCount; ++thread) {
        threads.emplace_back([&key, thread] {
            const auto mine = OlvikSettings::Instance();
            for (int i = 0; i < keysPerThread; ++i) {
                mine->setValue(QStringLiteral("Shared/last"), i);
                mine->setValue(key(thread, i), thread * keysPerThread + i);
                mine->remove(QStringLiteral("Shared/last"));
            }
        });
    }
    for (std::thread &thread : threads)
        thread.join();

    for (int thread = 0; thread < threadCount; ++thread) {
        for (int i = 0; i < keysPerThread; ++i)
            QCOMPARE(settings->value(key(thread, i)).toInt(), thread * keysPerThread + i);
    }
    QCOMPARE(storedOnDisk(key(threadCount - 1, keysPerThread - 1)).value.toInt(),
        threadCount * keysPerThread - 1);
    QVERIFY(!settings->contains(QStringLiteral("Shared/last")));
}

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = application.arguments();
    if (arguments.size() == 3 && arguments.at(1) == readInAnotherProcess)
        return printStored(arguments.at(2));

    const QTemporaryDir configuration;
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(configuration.path()));
    TestOlvikSettings test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_olviksettings.moc"
