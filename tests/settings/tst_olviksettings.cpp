#include "OlvikSettings.h"

#include <QtTest>

#include <QDataStream>
#include <QProcess>
#include <QTemporaryDir>

#include <cstdio>
#include <thread>

// The test starts itself again with this argument and a key: only another process proves what the
// file holds.
const QString readOption = QStringLiteral("--read");

int printStored(const QString &key)
{
    QFile out;
    if (!out.open(stdout, QIODevice::WriteOnly))
        return EXIT_FAILURE;
    QDataStream stream(&out);
    stream << OlvikSettings::Instance()->value(key);
    return EXIT_SUCCESS;
}

QVariant storedOnDisk(const QString &key)
{
    QProcess reader;
    reader.start(QCoreApplication::applicationFilePath(), {readOption, key});
    reader.waitForFinished();
    QVariant value;
    QDataStream stream(reader.readAllStandardOutput());
    stream >> value;
    return value;
}

class TestOlvikSettings : public QObject
{
    Q_OBJECT

    const std::shared_ptr<OlvikSettings> settings = OlvikSettings::Instance();
    const QString viewerKey = QStringLiteral("3Dviewer/ColorMode");
    const QString otherViewerKey = QStringLiteral("3DViewer/ColorMode");

private Q_SLOTS:
    void bothSpellingsAreOnDiskWhenTheCallReturns_data()
    {
        QTest::addColumn<QVariant>("value");
        QTest::newRow("point") << QVariant(QPoint(-120, 35));
        QTest::newRow("size") << QVariant(QSize(640, 360));
        QTest::newRow("bool") << QVariant(true);
        QTest::newRow("text") << QVariant(QStringLiteral("W\u00e4rme, \u6e29\u5ea6; \"\\f\" "));
    }

    void bothSpellingsAreOnDiskWhenTheCallReturns()
    {
        QFETCH(QVariant, value);
        settings->setValue(viewerKey, value);
        settings->setValue(otherViewerKey, 7);
        QVariant stored = storedOnDisk(viewerKey);
        QVERIFY(stored.convert(value.userType()));
        QCOMPARE(stored, value);
        QCOMPARE(storedOnDisk(otherViewerKey).toInt(), 7);
    }

    void removedKeyIsGoneFromDiskAndItsOtherSpellingStays()
    {
        settings->setValue(viewerKey, 1);
        settings->setValue(otherViewerKey, 2);
        settings->remove(viewerKey);
        QVERIFY(!settings->contains(viewerKey));
        QVERIFY(!storedOnDisk(viewerKey).isValid());
        QCOMPARE(storedOnDisk(otherViewerKey).toInt(), 2);
    }

    void writesFromManyThreadsAllArrive()
    {
        const auto write = [](int first) {
            for (int i = first; i < first + 10; ++i)
                OlvikSettings::Instance()->setValue(QStringLiteral("Threads/%1").arg(i), i);
        };
        std::thread threads[]{std::thread(write, 0), std::thread(write, 10)};
        for (std::thread &thread : threads)
            thread.join();
        for (int i = 0; i < 20; ++i)
            QCOMPARE(settings->value(QStringLiteral("Threads/%1").arg(i), -1).toInt(), i);
    }
};

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    if (argc == 3 && application.arguments().at(1) == readOption)
        return printStored(application.arguments().at(2));
    const QTemporaryDir configuration;
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(configuration.path()));
    TestOlvikSettings test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_olviksettings.moc"
