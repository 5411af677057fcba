#include "SaveLoop.h"

#include "GradientCollection.h"
#include "GradientFactory.h"

#include <QtTest>

#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>

#include <sys/resource.h>

#include <csignal>
#include <memory>

using FileError = GradientCollection::FileErrorException;
using NameExists = GradientCollection::NameAlreadyExistsException;
using NameUnknown = GradientCollection::NameDoesNotExistsException;

namespace {

QStringList namesOf(const GradientCollection &collection)
{
    QStringList names;
    for (const auto &gradient : collection.getGradients())
        names += gradient->getName();
    return names;
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// No file grows beyond the limit, as on a full disk.
void limitFiles(rlim_t limit)
{
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit limits = {limit, RLIM_INFINITY};
    QCOMPARE(setrlimit(RLIMIT_FSIZE, &limits), 0);
}

} // namespace

class TestGradientCollection : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        folder = std::make_unique<QTemporaryDir>();
        collection = std::make_unique<GradientCollection>(path());
    }

    void cleanup() { limitFiles(RLIM_INFINITY); }

    void everyChangeIsReadBackInOrder()
    {
        for (const QString name : {"Z", "B", "A", "C"})
            add(name);
        collection->rename("B", "X");
        collection->remove(3);
        collection->getGradientAt(2)->setMax(5.0, Qt::red);

        GradientCollection stored(path());
        stored.load();
        QCOMPARE(namesOf(stored), QStringList({"Z", "X", "A"}));
        QCOMPARE(stored.getGradientAt(2)->getMax(), 5.0);
        QCOMPARE(stored.getGradientAt(2)->getMaxColor(), QColor(Qt::red));
        QCOMPARE(stored.getGradientAt(2)->stops(), GradientFactory::BlackAndWhite().stops());
    }

    void namesStayUnique()
    {
        add("New gradient 0");
        add("New gradient 2");
        QVERIFY_EXCEPTION_THROWN(add("New gradient 0"), NameExists);
        QVERIFY_EXCEPTION_THROWN(
            collection->rename("New gradient 0", "New gradient 2"), NameExists);
        QVERIFY_EXCEPTION_THROWN(collection->rename("unknown", "free"), NameUnknown);
        QCOMPARE(namesOf(*collection), QStringList({"New gradient 0", "New gradient 2"}));
        QCOMPARE(collection->generateUniqueGradientName(), QString("New gradient 1"));
    }

    void damagedFilesAreKeptAside()
    {
        load(R"({"gradients": [{"name": "A"})");
        load(R"([{"name": "A"}])");
        add("next");
        QCOMPARE(contentOf(path() + ".damaged-1"), QByteArray(R"({"gradients": [{"name": "A"})"));
        QCOMPARE(contentOf(path() + ".damaged-2"), QByteArray(R"([{"name": "A"}])"));
        QCOMPARE(namesOf(*collection), QStringList("next"));
    }

    void failedSaveKeepsThePreviousFile()
    {
        add("A");
        const QByteArray before = contentOf(path());
        for (int failure = 0; failure < 3; ++failure)
            QTest::ignoreMessage(QtWarningMsg, "Couldn't open save file.");

        limitFiles(16);
        QVERIFY_EXCEPTION_THROWN(add("B"), FileError);
        QVERIFY_EXCEPTION_THROWN(collection->rename("A", "X"), FileError);
        QVERIFY_EXCEPTION_THROWN(collection->getGradientAt(0)->setMax(5.0), FileError);
        QCOMPARE(contentOf(path()), before);
        QCOMPARE(namesOf(*collection), QStringList("A"));
    }

    void malformedRecordsLoadAsEntries()
    {
        load(R"({"gradients": [17, {"name": [], "stops": 1, "minColor": {}},
            {"stops": [1, [], ["r", "g", "b", 9], null]}, {"name": "next"}]})");
        QCOMPARE(namesOf(*collection), QStringList({"", "", "", "next"}));
    }

    void killLeavesAWholeCollection()
    {
        SaveLoop::fill(*collection, 0);
        for (int round = 0; round < 100; ++round) {
            QProcess saver;
            saver.start(SAVE_LOOP_PROGRAM, {path()});
            QVERIFY(saver.waitForReadyRead(10000));
            QTest::qSleep(QRandomGenerator::global()->bounded(1, 20));
            saver.kill();
            QVERIFY(saver.waitForFinished());

            collection->load();
            QVERIFY(SaveLoop::isWhole(*collection));
        }
        QVERIFY2(collection->getGradientAt(0)->getMax() > 0.0, "no child ever saved");
    }

private:
    QString path() const { return folder->filePath("gradients.json"); }
    void add(const QString &name)
    {
        auto gradient = std::make_shared<Gradient>(GradientFactory::BlackAndWhite());
        gradient->setName(name);
        collection->add(gradient);
    }

    void load(const QByteArray &content)
    {
        QFile file(path());
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(content);
        file.close();
        collection->load();
    }

    std::unique_ptr<QTemporaryDir> folder;
    std::unique_ptr<GradientCollection> collection;
};

QTEST_GUILESS_MAIN(TestGradientCollection)
#include "tst_gradientcollection.moc"
