#include "SaveLoop.h"

#include "GradientCollection.h"

#include <QtTest>

#include <sys/resource.h>

#include <csignal>
#include <memory>

using FileError = GradientCollection::FileErrorException;
using NameError = GradientCollection::NameAlreadyExistsException;

namespace {

QStringList namesOf(const GradientCollection &collection)
{
    QStringList names;
    for (const auto &gradient : collection.getGradients())
        names += gradient->getName();
    return names;
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
        QCOMPARE(stored.getGradientAt(2)->stops(), collection->getGradientAt(2)->stops());
    }

    void namesStayUnique()
    {
        add("New gradient 0");
        add("New gradient 2");
        QVERIFY_EXCEPTION_THROWN(add("New gradient 0"), NameError);
        QVERIFY_EXCEPTION_THROWN(collection->rename("New gradient 0", "New gradient 2"), NameError);
        QVERIFY_EXCEPTION_THROWN(
            collection->rename("unknown", "free"), GradientCollection::NameDoesNotExistsException);
        QCOMPARE(namesOf(*collection), QStringList({"New gradient 0", "New gradient 2"}));
        QCOMPARE(collection->generateUniqueGradientName(), QString("New gradient 1"));
    }

    void damagedFileIsKeptAside()
    {
        add("A");
        QVERIFY(QFile::resize(path(), 20));
        collection->load();
        add("next");
        QCOMPARE(QFileInfo(path() + ".damaged-1").size(), qint64(20));
    }

    void failedSaveKeepsThePreviousFile()
    {
        add("A");
        for (int failure = 0; failure < 3; ++failure)
            QTest::ignoreMessage(QtWarningMsg, "Couldn't open save file.");

        limitFiles(16);
        QVERIFY_EXCEPTION_THROWN(add("B"), FileError);
        QVERIFY_EXCEPTION_THROWN(collection->rename("A", "X"), FileError);
        QVERIFY_EXCEPTION_THROWN(collection->getGradientAt(0)->setMax(5.0), FileError);
        QCOMPARE(namesOf(*collection), QStringList("A"));
        collection->load();
        QCOMPARE(namesOf(*collection), QStringList("A"));
        QCOMPARE(collection->getGradientAt(0)->getMax(), 0.0);
    }

    void malformedRecordsLoadAsEntries()
    {
        const QByteArray json(R"({"gradients": [17, {"name": [], "stops": 1, "minColor": {}},
            {"stops": [1, [], ["r", "g", "b", 9], null]}, {"name": "next"}]})");
        collection->read(QJsonDocument::fromJson(json).object());
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
        const auto gradient = collection->newGradientShared();
        gradient->setName(name);
        collection->add(gradient);
    }

    std::unique_ptr<QTemporaryDir> folder;
    std::unique_ptr<GradientCollection> collection;
};

QTEST_GUILESS_MAIN(TestGradientCollection)
#include "tst_gradientcollection.moc"
