#include "GradientCollection.h"

#include <QtTest>

#include <sys/resource.h>

#include <csignal>
#include <functional>
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

/// Names and upper bounds.
QString contentOf(const GradientCollection &collection)
{
    QStringList content;
    for (const auto &gradient : collection.getGradients())
        content += gradient->getName() + QString::number(gradient->getMax());
    return content.join(' ');
}

} // namespace

using Change = std::function<void(GradientCollection &)>;
Q_DECLARE_METATYPE(Change)

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

    void changesOfOthersAreKept_data()
    {
        QTest::addColumn<Change>("theirs");
        QTest::addColumn<Change>("mine");
        QTest::addColumn<QString>("expected");
        using Collection = GradientCollection;
        const Change add = [](Collection &c) { c.add(c.newGradientShared()); };
        const auto edit = [](int row, int max) -> Change {
            return [=](Collection &c) { c.getGradientAt(row)->setMax(max); };
        };
        const auto rename = [](int row) -> Change {
            return [=](Collection &c) { c.getGradientAt(row)->setName("X"); };
        };
        const auto remove = [](int row) -> Change { return [=](Collection &c) { c.remove(row); }; };
        QTest::newRow("both add") << add << add << "A1 B2 B3 C4 New gradient 00 New gradient 10";
        QTest::newRow("edit") << edit(1, 7) << add << "A1 B7 B3 C4 New gradient 00";
        QTest::newRow("edit one of a name") << edit(2, 7) << edit(1, 8) << "A1 B8 B7 C4";
        QTest::newRow("both edit") << edit(0, 7) << edit(0, 8) << "A8 B2 B3 C4";
        QTest::newRow("rename") << rename(0) << add << "X1 B2 B3 C4 New gradient 00";
        QTest::newRow("both rename to one") << rename(0) << rename(1) << "X2 X1 B3 C4";
        QTest::newRow("remove") << remove(0) << add << "B2 B3 C4 New gradient 00";
        QTest::newRow("remove what is edited here") << remove(0) << edit(0, 8) << "A8 B2 B3 C4";
        QTest::newRow("edit what is removed here") << edit(0, 7) << remove(0) << "B2 B3 C4";
    }

    void changesOfOthersAreKept()
    {
        QFETCH(const Change, theirs);
        QFETCH(const Change, mine);
        QFETCH(const QString, expected);
        int max = 0;
        for (const QString name : {"A", "B", "X", "C"}) {
            add(name);
            collection->getGradients().last()->setMax(++max);
        }
        collection->getGradientAt(2)->setName("B");
        GradientCollection other(path());
        other.load();
        const auto kept = collection->getGradients().last();
        const QSignalSpy updates(kept.get(), &Gradient::updated);

        theirs(other);
        mine(*collection);
        GradientCollection stored(path());
        stored.load();
        QCOMPARE(contentOf(stored), expected);
        for (GradientCollection *each : {collection.get(), &other}) {
            each->refresh();
            QCOMPARE(contentOf(*each), expected);
            QVERIFY(!each->refresh());
        }
        QCOMPARE(collection->getGradient("C"), kept);
        QCOMPARE(updates.size(), 0);
        kept->setMax(9.0);
        other.refresh();
        QCOMPARE(other.getGradient("C")->getMax(), 9.0);
    }

    void namesOfOthersAreTaken()
    {
        add("A");
        GradientCollection other(path());
        other.load();
        addTo(other, "theirs");
        QVERIFY_EXCEPTION_THROWN(add("theirs"), NameError);
        QVERIFY_EXCEPTION_THROWN(collection->rename("A", "theirs"), NameError);
        QCOMPARE(namesOf(*collection), QStringList("A"));
        GradientCollection(path()).save();
        collection->refresh();
        QCOMPARE(collection->size(), 0);
    }

    void unreadableFileIsLeftAlone()
    {
        QVERIFY(QDir().mkpath(path()));
        for (int failure = 0; failure < 2; ++failure)
            QTest::ignoreMessage(QtWarningMsg, "Couldn't open save file.");
        QVERIFY_EXCEPTION_THROWN(collection->load(), FileError);
        QVERIFY_EXCEPTION_THROWN(add("A"), FileError);
        QCOMPARE(QDir(folder->path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
            QStringList("gradients.json"));
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

private:
    QString path() const { return folder->filePath("gradients.json"); }

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
