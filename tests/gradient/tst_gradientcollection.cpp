#include "SaveLoop.h"

#include "GradientCollection.h"
#include "GradientFactory.h"

#include <QtTest>

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRandomGenerator>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <sys/resource.h>

#include <csignal>
#include <functional>
#include <memory>

using FileError = GradientCollection::FileErrorException;
using NameExists = GradientCollection::NameAlreadyExistsException;
using NameUnknown = GradientCollection::NameDoesNotExistsException;
using Change = std::function<void(GradientCollection &)>;

Q_DECLARE_METATYPE(Change)

namespace {

std::shared_ptr<Gradient> named(const QString &name)
{
    auto gradient = std::make_shared<Gradient>(GradientFactory::BlackAndWhite());
    gradient->setName(name);
    return gradient;
}

QStringList namesOf(const GradientCollection &collection)
{
    QStringList names;
    for (const auto &gradient : collection.getGradients())
        names += gradient->getName();
    return names;
}

void announceFileError()
{
    QTest::ignoreMessage(QtWarningMsg, "Couldn't open save file.");
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void writeFile(const QString &path, const QByteArray &content)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(content), qint64(content.size()));
}

/// No file grows beyond a few bytes while this exists, as on a full disk.
class FullDisk
{
public:
    FullDisk()
    {
        std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &before);
        const rlimit tight = {16, before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &tight);
    }
    ~FullDisk() { setrlimit(RLIMIT_FSIZE, &before); }
    Q_DISABLE_COPY(FullDisk)

private:
    rlimit before = {};
};

} // namespace

class TestGradientCollection : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { folder.reset(); }

    void emptyCollectionSavesAnEmptyArray();
    void everyChangeIsInTheFileAtOnce_data();
    void everyChangeIsInTheFileAtOnce();
    void onlyAddAndRenameAnnounce();
    void takenNameIsRefusedBeforeAnythingIsWritten();
    void renameOfEqualNamesDoesNothing();
    void renameNeedsAKnownName();
    void renameReachesAllOfOneName();
    void removeChecksTheUpperEndOnly();
    void generatedNameFillsTheFirstGap();
    void newGradientIsNoEntry();
    void loadKeepsOrderAndEqualNames();
    void loadOfAMissingFileKeepsTheEntries();
    void brokenFileIsKeptAside_data();
    void brokenFileIsKeptAside();
    void earlierDamagedFileIsNotOverwritten();
    void repeatedLoadKeepsOneCopy();
    void oddRecordsLoadAsEntries_data();
    void oddRecordsLoadAsEntries();
    void manyGradientsLoadInReasonableTime();
    void formerEntriesNoLongerSave();
    void failedSaveChangesNothing_data();
    void failedSaveChangesNothing();
    void failedSaveLetsTheEntryGo();
    void changeOfAnEntryThrowsWhenItCannotBeSaved();
    void killLeavesAWholeCollection();

private:
    QString path() const { return folder->filePath(QStringLiteral("gradients.json")); }
    QStringList storedNames() const;

    std::unique_ptr<QTemporaryDir> folder;
    std::unique_ptr<GradientCollection> collection;
};

void TestGradientCollection::init()
{
    folder = std::make_unique<QTemporaryDir>();
    collection = std::make_unique<GradientCollection>(path());
}

QStringList TestGradientCollection::storedNames() const
{
    GradientCollection stored(path());
    stored.load();
    return namesOf(stored);
}

void TestGradientCollection::emptyCollectionSavesAnEmptyArray()
{
    QVERIFY(!QFile::exists(path()));
    collection->save();

    const QJsonObject json = QJsonDocument::fromJson(contentOf(path())).object();
    QCOMPARE(json, QJsonObject({{"gradients", QJsonArray()}}));
}

void TestGradientCollection::everyChangeIsInTheFileAtOnce_data()
{
    QTest::addColumn<Change>("change");
    QTest::addColumn<QStringList>("expected");

    QTest::newRow("add") << Change([](auto &all) { all.add(named("C")); })
                         << QStringList({"A", "B", "C"});
    QTest::newRow("remove") << Change([](auto &all) { all.remove(0); }) << QStringList({"B"});
    QTest::newRow("rename") << Change([](auto &all) { all.rename("A", "X"); })
                            << QStringList({"X", "B"});
    QTest::newRow("name of an entry, not checked")
        << Change([](auto &all) { all.getGradientAt(0)->setName("B"); }) << QStringList({"B", "B"});
    QTest::newRow("copy into an entry")
        << Change([](auto &all) { all.getGradientAt(1)->copyfromOther(named("Y")); })
        << QStringList({"A", "Y"});
}

void TestGradientCollection::everyChangeIsInTheFileAtOnce()
{
    QFETCH(Change, change);
    collection->add(named("A"));
    collection->add(named("B"));

    change(*collection);
    QTEST(storedNames(), "expected");
    QCOMPARE(storedNames(), namesOf(*collection));
}

void TestGradientCollection::onlyAddAndRenameAnnounce()
{
    QSignalSpy announced(collection.get(), &GradientCollection::gradientUpdated);
    collection->add(named("A"));
    QCOMPARE(announced.count(), 1);
    collection->rename("A", "B");
    QCOMPARE(announced.count(), 2);

    collection->getGradientAt(0)->setMax(5.0);
    collection->load();
    collection->remove(0);
    QCOMPARE(announced.count(), 2);
}

void TestGradientCollection::takenNameIsRefusedBeforeAnythingIsWritten()
{
    collection->add(named("A"));
    collection->add(named("B"));
    QVERIFY(QFile::remove(path()));

    QVERIFY_EXCEPTION_THROWN(collection->add(named("A")), NameExists);
    QVERIFY_EXCEPTION_THROWN(collection->rename("A", "B"), NameExists);
    QCOMPARE(namesOf(*collection), QStringList({"A", "B"}));
    QVERIFY(!QFile::exists(path()));

    collection->add(named("a"));
    QCOMPARE(collection->size(), 3);
}

void TestGradientCollection::renameOfEqualNamesDoesNothing()
{
    collection->rename("unknown", "unknown");
    QVERIFY(!QFile::exists(path()));
}

void TestGradientCollection::renameNeedsAKnownName()
{
    QVERIFY_EXCEPTION_THROWN(collection->rename("unknown", "B"), NameUnknown);
    QVERIFY(!QFile::exists(path()));
}

void TestGradientCollection::renameReachesAllOfOneName()
{
    writeFile(path(), R"({"gradients": [{"name": "A"}, {"name": "B"}, {"name": "A"}]})");
    collection->load();

    collection->rename("A", "X");
    QCOMPARE(storedNames(), QStringList({"X", "B", "X"}));
}

void TestGradientCollection::removeChecksTheUpperEndOnly()
{
    collection->add(named("A"));
    QVERIFY(QFile::remove(path()));

    QVERIFY_EXCEPTION_THROWN(collection->remove(1), NameUnknown);
    QVERIFY(!QFile::exists(path()));
    collection->remove(-1);
    QCOMPARE(storedNames(), QStringList({"A"}));
}

void TestGradientCollection::generatedNameFillsTheFirstGap()
{
    QCOMPARE(collection->generateUniqueGradientName(), QString("New gradient 0"));
    collection->add(named("New gradient 0"));
    collection->add(named("New gradient 2"));
    QCOMPARE(collection->generateUniqueGradientName(), QString("New gradient 1"));
}

void TestGradientCollection::newGradientIsNoEntry()
{
    const std::shared_ptr<Gradient> gradient = collection->newGradientShared();
    QCOMPARE(gradient->getName(), QString("New gradient 0"));
    QCOMPARE(gradient->stops(), GradientFactory::BlackAndWhite().stops());
    QCOMPARE(collection->newGradient().getName(), gradient->getName());
    QCOMPARE(collection->size(), 0);
    QVERIFY(!QFile::exists(path()));
}

void TestGradientCollection::loadKeepsOrderAndEqualNames()
{
    collection->add(named("discarded"));
    writeFile(path(),
        R"({"gradients": [{"name": "Z", "max": 1}, {"name": "A"}, {"name": "Z", "max": 2}]})");

    collection->load();
    QCOMPARE(namesOf(*collection), QStringList({"Z", "A", "Z"}));
    QCOMPARE(collection->getGradient("Z")->getMax(), 1.0);
    QVERIFY(!collection->getGradient("discarded"));
}

void TestGradientCollection::loadOfAMissingFileKeepsTheEntries()
{
    collection->add(named("A"));
    QVERIFY(QFile::remove(path()));

    announceFileError();
    QVERIFY_EXCEPTION_THROWN(collection->load(), FileError);
    QCOMPARE(namesOf(*collection), QStringList({"A"}));
}

void TestGradientCollection::brokenFileIsKeptAside_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<bool>("isKept");

    const QByteArray deep = QByteArray(5000, '[') + QByteArray(5000, ']');
    QTest::newRow("cut off") << QByteArray(R"({"gradients": [{"name": "A"})") << true;
    QTest::newRow("no text") << QByteArray("\x00\xff\x80\x01", 4) << true;
    QTest::newRow("array on top") << QByteArray(R"([{"name": "A"}])") << true;
    QTest::newRow("no gradients") << QByteArray(R"({"Gradients": []})") << true;
    QTest::newRow("gradients are no array") << QByteArray(R"({"gradients": {"a": 1}})") << true;
    QTest::newRow("nested too deeply") << QByteArray(R"({"gradients": )" + deep + "}") << true;
    QTest::newRow("empty file") << QByteArray() << false;
    QTest::newRow("empty array") << QByteArray(R"({"gradients": []})") << false;
}

void TestGradientCollection::brokenFileIsKeptAside()
{
    QFETCH(QByteArray, text);
    QFETCH(bool, isKept);
    writeFile(path(), text);

    collection->load();
    QCOMPARE(collection->size(), 0);
    collection->add(named("A"));
    QCOMPARE(storedNames(), QStringList({"A"}));
    QCOMPARE(QFile::exists(path() + ".damaged-1"), isKept);
    QCOMPARE(contentOf(path() + ".damaged-1"), isKept ? text : QByteArray());
}

void TestGradientCollection::earlierDamagedFileIsNotOverwritten()
{
    for (const char *text : {"first", "second"}) {
        writeFile(path(), text);
        collection->load();
    }
    QCOMPARE(contentOf(path() + ".damaged-1"), QByteArray("first"));
    QCOMPARE(contentOf(path() + ".damaged-2"), QByteArray("second"));
}

void TestGradientCollection::repeatedLoadKeepsOneCopy()
{
    writeFile(path(), "damaged");
    collection->load();
    collection->load();
    QCOMPARE(QDir(folder->path()).entryList(QDir::Files).size(), 2);
}

void TestGradientCollection::oddRecordsLoadAsEntries_data()
{
    QTest::addColumn<QByteArray>("record");
    QTest::addColumn<QString>("name");

    const QByteArray deep = QByteArray(900, '[') + QByteArray(900, ']');
    QTest::newRow("no keys") << QByteArray("{}") << QString();
    QTest::newRow("no object") << QByteArray("17") << QString();
    QTest::newRow("wrong types") << QByteArray(
        R"({"name": [], "stops": 1, "min": "x", "minColor": {}})")
                                 << QString();
    QTest::newRow("deep stops") << QByteArray(R"({"name": "A", "stops": )" + deep + "}")
                                << QString("A");
    QTest::newRow("stops of all kinds")
        << QByteArray(R"({"name": "A", "stops": [1, [], [1, 2], ["r", "g", "b", 9], null]})")
        << QString("A");
}

void TestGradientCollection::oddRecordsLoadAsEntries()
{
    QFETCH(QByteArray, record);
    writeFile(path(), "{\"gradients\": [" + record + ", {\"name\": \"next\"}]}");

    collection->load();
    QCOMPARE(collection->size(), 2);
    QTEST(collection->getGradientAt(0)->getName(), "name");
    QCOMPARE(collection->getGradientAt(1)->getName(), QString("next"));
}

void TestGradientCollection::manyGradientsLoadInReasonableTime()
{
    constexpr int count = 100000;
    QByteArray records;
    for (int number = 0; number < count; ++number)
        records += "{\"name\": \"New gradient " + QByteArray::number(number) + "\"},";
    records.chop(1);
    writeFile(path(), "{\"gradients\": [" + records + "]}");

    QElapsedTimer timer;
    timer.start();
    collection->load();
    collection->add(named(collection->generateUniqueGradientName()));
    QCOMPARE(collection->size(), count + 1);
    QCOMPARE(collection->getGradientAt(count)->getName(), QString("New gradient 100000"));
    QVERIFY(timer.elapsed() < 20000);
}

void TestGradientCollection::formerEntriesNoLongerSave()
{
    const auto removed = named("A");
    const auto replaced = named("B");
    collection->add(removed);
    collection->add(replaced);
    collection->remove(0);
    collection->load();
    QVERIFY(QFile::remove(path()));

    removed->setName("X");
    replaced->setName("Y");
    QVERIFY(!QFile::exists(path()));
}

void TestGradientCollection::failedSaveChangesNothing_data()
{
    QTest::addColumn<Change>("change");

    QTest::newRow("add") << Change([](auto &all) { all.add(named("C")); });
    QTest::newRow("rename") << Change([](auto &all) { all.rename("A", "X"); });
    QTest::newRow("save") << Change([](auto &all) { all.save(); });
}

void TestGradientCollection::failedSaveChangesNothing()
{
    QFETCH(Change, change);
    collection->add(named("A"));
    collection->add(named("B"));
    const QByteArray before = contentOf(path());
    QSignalSpy announced(collection.get(), &GradientCollection::gradientUpdated);

    announceFileError();
    {
        const FullDisk disk;
        QVERIFY_EXCEPTION_THROWN(change(*collection), FileError);
    }
    QCOMPARE(namesOf(*collection), QStringList({"A", "B"}));
    QCOMPARE(contentOf(path()), before);
    QCOMPARE(announced.count(), 0);
    QCOMPARE(QDir(folder->path()).entryList(QDir::Files).size(), 1);

    change(*collection);
    QCOMPARE(storedNames(), namesOf(*collection));
}

void TestGradientCollection::failedSaveLetsTheEntryGo()
{
    collection->add(named("A"));
    collection->add(named("B"));
    announceFileError();
    {
        const FullDisk disk;
        QVERIFY_EXCEPTION_THROWN(collection->remove(0), FileError);
    }
    QCOMPARE(namesOf(*collection), QStringList({"B"}));
    QCOMPARE(storedNames(), QStringList({"A", "B"}));
}

void TestGradientCollection::changeOfAnEntryThrowsWhenItCannotBeSaved()
{
    collection->add(named("A"));
    const auto entry = collection->getGradientAt(0);
    folder->remove();

    announceFileError();
    QVERIFY_EXCEPTION_THROWN(entry->setMin(-3.0, Qt::red), FileError);
    QCOMPARE(entry->getMin(), -3.0);
    QCOMPARE(entry->getMinColor(), QColor(Qt::red));

    QVERIFY(QDir().mkpath(folder->path()));
    entry->setMax(5.0);
    QCOMPARE(storedNames(), QStringList({"A"}));
}

void TestGradientCollection::killLeavesAWholeCollection()
{
    SaveLoop::fill(*collection, 0);
    for (int round = 0; round < 100; ++round) {
        QProcess saver;
        saver.start(QStringLiteral(SAVE_LOOP_PROGRAM), {path()});
        QVERIFY(saver.waitForReadyRead(10000));
        QTest::qSleep(QRandomGenerator::global()->bounded(1, 20));
        saver.kill();
        QVERIFY(saver.waitForFinished());
        QCOMPARE(saver.exitStatus(), QProcess::CrashExit);

        collection->load();
        QVERIFY(SaveLoop::isWhole(*collection));
    }
    QVERIFY2(collection->getGradientAt(0)->getMax() > 0.0, "no child ever saved");
}

QTEST_GUILESS_MAIN(TestGradientCollection)
#include "tst_gradientcollection.moc"
