#include "HeightMapReader.h"
#include "SampleFiles.h"

#include <QtTest>

/// Of each sample: three values a profile, two profiles; neither mirroring nor turning maps it onto
/// itself.
const std::vector<float> heights{1, 2, 3, 11, 12, 200};

class TestHeightMapReader : public QObject
{
    Q_OBJECT

    QTemporaryDir folder;
    HeightMapReader reader;

    std::optional<HeightMap> read(const QString &name, const QByteArray &bytes)
    {
        QFile file(folder.filePath(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            qFatal("cannot write the sample file");
        file.close();
        return reader.read(file.fileName(), 3);
    }

private Q_SLOTS:
    void greyValuesAreHeightsAndRowZeroIsProfileZero_data()
    {
        QTest::addColumn<QString>("path");
        const QDir samples(SAMPLES "/heights");
        for (const QString &name : samples.entryList(QDir::Files))
            QTest::newRow(qPrintable(name)) << samples.filePath(name);
    }

    void greyValuesAreHeightsAndRowZeroIsProfileZero()
    {
        QFETCH(QString, path);
        const std::optional<HeightMap> map = reader.read(path, 3);
        QVERIFY2(map, qPrintable(reader.errorString()));
        QCOMPARE(QSize(map->width, map->height), QSize(3, 2));
        QCOMPARE(map->heights, heights);
    }

    void aLineFeedMayBeAHeight()
    {
        QCOMPARE(read("a.pgm", "P5 1 1 255\r\n").value().heights, std::vector<float>{10});
    }

    void otherFilesAreRefusedWithTheReason()
    {
        const auto reason = [this](const char *name, const QByteArray &bytes) {
            return read(name, bytes) ? QStringLiteral("none") : reader.errorString();
        };
        const QByteArray png = sample("heights/8-bit.png");
        QVERIFY(reason("a.txt", "text").contains("unknown suffix"));
        QVERIFY(reason("a.tif", {}).contains("empty"));
        QVERIFY(reason("a.tif", sample("refused/integers of 32 bits.tif")).contains("samples"));
        QVERIFY(reason("a.png", png.chopped(1)).contains("damaged"));
        QVERIFY(reason("a.pgm", "P5 65536 65536 255 1").contains("65536 x 65536"));
        QVERIFY(reason("a.pgm", "P5\n3").contains("not a binary PGM"));
        QVERIFY(reason("a.pgm", "P5 3 2 255 12345").contains("cut short"));
        QVERIFY(reason("a.tif", sample("refused/tiles.tif")).contains("tiles"));
        QVERIFY(reason("a.tif", sample("refused/tiles from white.tif")).contains("from white"));
    }
};

QTEST_GUILESS_MAIN(TestHeightMapReader)
#include "tst_heightmapreader.moc"
