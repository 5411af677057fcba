#include "OlvikSettings.h"

#include <QtTest>

#include <cstdlib>
#include <future>
#include <thread>

using namespace std::chrono_literals;

const QString text = QStringLiteral("W\u00e4rmebild \u6e29\u5ea6, a; \"b\" \\f ");
const QVariantList lists{QStringList(), QStringList("a, b"), QVariantList{QVariant()},
    QVariantList{QStringList(), QVariantList{QPoint(1, 2), QStringList("@\"")}, text}};

/// Without a single destructor: only what is on disk by then is left.
void writeAndDie()
{
    const auto settings = OlvikSettings::Instance();
    settings->setValue("3Dviewer/removed", 3);
    settings->remove("3Dviewer/removed");
    settings->setValue("3Dviewer/ColorMode", text);
    settings->setValue("3DViewer/ColorMode", true);
    settings->setValue("3Dviewer/position", QPoint(-120, 35));
    settings->setValue("3Dviewer/size", QSize(640, 360));
    for (int i = 0; i < lists.size(); ++i)
        settings->setValue("list" + QString::number(i), lists[i]);
    std::_Exit(EXIT_SUCCESS);
}

class TestOlvikSettings : public QObject
{
    Q_OBJECT

    const QString file = qEnvironmentVariable("XDG_CONFIG_HOME") + "/Olvik/OlvikSettings.ini";

private Q_SLOTS:
    void everyWriteSurvivesTheEndOfItsProcess()
    {
        QCOMPARE(QProcess::execute(QCoreApplication::applicationFilePath(), {"--write"}), 0);
        const auto settings = OlvikSettings::Instance();
        QVERIFY(!settings->contains("3Dviewer/removed"));
        QCOMPARE(settings->value("3Dviewer/ColorMode").toString(), text);
        QVERIFY(settings->value("3DViewer/ColorMode").toBool());
        QCOMPARE(settings->value("3Dviewer/position").toPoint(), QPoint(-120, 35));
        QCOMPARE(settings->value("3Dviewer/size").toSize(), QSize(640, 360));
        for (int i = 0; i < lists.size(); ++i)
            QCOMPARE(settings->value("list" + QString::number(i)), lists[i]);

        QVERIFY(QFile::copy(file, file + ".copy"));
        const QSettings others(file + ".copy", QSettings::IniFormat);
        QCOMPARE(others.value("list0").toStringList(), QStringList());
        QCOMPARE(others.value("list1").toStringList(), QStringList("a, b"));
    }

    void waitsForLocksOfTheLivingOnly()
    {
        const auto settings = OlvikSettings::Instance();
        QLockFile held(file + ".lock");
        QVERIFY(held.lock());
        QFile lock(file + ".lock");
        QVERIFY(lock.open(QIODevice::ReadOnly));
        const QByteArray signature = lock.readAll();
        lock.close();
        auto writing = std::async(std::launch::async, [&] { settings->setValue("held", 1); });
        QVERIFY(writing.wait_for(1s) == std::future_status::timeout);
        held.unlock();
        writing.get();

        // As after a crash in a container: the number in it is that of this process.
        for (const QByteArray &left : {signature, QByteArray()}) {
            QVERIFY(lock.open(QIODevice::WriteOnly) && lock.write(left) == left.size());
            lock.close();
            QElapsedTimer timer;
            timer.start();
            settings->setValue("abandoned", 1);
            QVERIFY(!lock.exists() && timer.elapsed() < 20000);
        }
    }

    void writesFromSeveralThreadsAllArrive()
    {
        const auto write = [](int first) {
            for (int i = first; i < first + 20; ++i)
                OlvikSettings::Instance()->setValue(QString::number(i), i);
        };
        std::thread other(write, 0);
        write(20);
        other.join();
        for (int i = 0; i < 40; ++i)
            QCOMPARE(OlvikSettings::Instance()->value(QString::number(i), -1).toInt(), i);
    }
};

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    if (argc == 2 && qstrcmp(argv[1], "--write") == 0)
        writeAndDie();
    const QTemporaryDir folder;
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(folder.path()));
    TestOlvikSettings test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_olviksettings.moc"
