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

    void damagedFileIsKeptAside_data()
    {
        QTest::addColumn<bool>("isLoaded");
        QTest::addColumn<QByteArray>("damaged");
        const QByteArray stops = QByteArray("[],").repeated(Gradient::maxStopsRead);
        QTest::newRow("cut off") << true << QByteArray(R"({"gradients": [)");
        QTest::newRow("cut off after the last save") << false << QByteArray(R"({"gradients": [)");
        QTest::newRow("many stops") << true << R"({"gradients": [{"stops": [)" + stops + "[]]}]}";
    }

    void damagedFileIsKeptAside()
    {
        QFETCH(bool, isLoaded);
        QFETCH(QByteArray, damaged);
        add("A");
        QFile file(path());
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(damaged) > 0);
        file.close();
        if (isLoaded)
            collection->load();
        QCOMPARE(collection->size(), isLoaded ? 0 : 1);
        add("next");
        QFile kept(path() + ".damaged-1");
        QVERIFY(kept.open(QIODevice::ReadOnly));
        QCOMPARE(kept.readAll(), damaged);
    }

    void whatOthersAddIsKept()
    {
        add("A");
        add("B");
        GradientCollection other(path());
        other.load();
        addTo(other, "theirs");
        collection->remove(0);
        add("C");
        QCOMPARE(namesInFile(), QStringList({"B", "C", "theirs"}));

        collection->rename("B", "D");
        other.rename("theirs", "new");
        addTo(other, "D");
        QCOMPARE(namesInFile(), QStringList({"A", "B", "new", "D", "C"}));
        add("E");
        QCOMPARE(namesInFile(), QStringList({"D", "C", "E", "A", "B", "new"}));

        GradientCollection(path()).save();
        QCOMPARE(namesInFile(), QStringList());
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

    QStringList namesInFile() const
    {
        GradientCollection stored(path());
        stored.load();
        return namesOf(stored);
    }

    void add(const QString &name) { addTo(*collection, name); }

    static void addTo(GradientCollection &changed, const QString &name)
    {
        const auto gradient = changed.newGradientShared();
        gradient->setName(name);
        changed.add(gradient);
    }

    std::unique_ptr<QTemporaryDir> folder;
    std::unique_ptr<GradientCollection> collection;
};

QTEST_GUILESS_MAIN(TestGradientCollection)
#include "tst_gradientcollection.moc"
