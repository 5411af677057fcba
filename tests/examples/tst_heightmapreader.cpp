#include "HeightMapReader.h"
#include "SampleFiles.h"

#include <QtTest>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <cstring>
#include <limits>

using SampleFiles::greyPng;
using SampleFiles::inOrder;
using SampleFiles::Tiff;

namespace {

constexpr auto little = QDataStream::LittleEndian;
constexpr auto big = QDataStream::BigEndian;

/// Three values a profile, two profiles; neither mirroring nor turning maps it onto itself.
const std::vector<float> expectedHeights{1, 2, 3, 11, 12, 200};

template <typename Sample> std::vector<Sample> samples()
{
    std::vector<Sample> result;
    for (const float height : expectedHeights)
        result.push_back(static_cast<Sample>(height));
    return result;
}

Tiff floatTiff(QDataStream::ByteOrder order = little)
{
    Tiff tiff;
    tiff.byteOrder = order;
    tiff.values = inOrder(expectedHeights, order);
    return tiff;
}

template <typename Sample> Tiff integerTiff(quint16 format, QDataStream::ByteOrder order = little)
{
    Tiff tiff = floatTiff(order);
    tiff.format = format;
    tiff.bits = 8 * sizeof(Sample);
    tiff.values = inOrder(samples<Sample>(), order);
    return tiff;
}

template <typename Change> QByteArray changed(Tiff tiff, Change change)
{
    change(tiff);
    return tiff.bytes();
}

QByteArray withChecksumFault(QByteArray png)
{
    const int inHeader = 20;
    png[inHeader] = static_cast<char>(png[inHeader] ^ 1);
    return png;
}

} // namespace

class TestHeightMapReader : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void greyValuesAreHeightsAndRowZeroIsProfileZero_data();
    void greyValuesAreHeightsAndRowZeroIsProfileZero();
    void floatsArriveBitForBit_data();
    void floatsArriveBitForBit();
    void otherFilesAreRefusedWithTheReason_data();
    void otherFilesAreRefusedWithTheReason();
    void whatIsNoFileIsRefused();
    void aGoodFileIsReadAfterABadOne();

private:
    QString write(const QString &name, const QByteArray &bytes);

    QTemporaryDir folder;
};

QString TestHeightMapReader::write(const QString &name, const QByteArray &bytes)
{
    QFile file(folder.filePath(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("cannot write the sample file");
    return file.fileName();
}

void TestHeightMapReader::greyValuesAreHeightsAndRowZeroIsProfileZero_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("bytes");

    const auto row = [](const char *title, const char *name, const QByteArray &bytes) {
        QTest::newRow(title) << QString::fromUtf8(name) << bytes;
    };
    row("TIFF, float", "a.tif", floatTiff().bytes());
    row("TIFF, float, big-endian", "a.tiff", floatTiff(big).bytes());
    row("TIFF, float, 64-bit offsets", "a.tif",
        changed(floatTiff(), [](Tiff &t) { t.isBig = true; }));
    row("TIFF, 16 bits", "a.tif", integerTiff<quint16>(1).bytes());
    row("TIFF, 16 bits, big-endian", "a.tif", integerTiff<quint16>(1, big).bytes());
    row("TIFF, 16 bits with sign", "a.tif", integerTiff<qint16>(2).bytes());
    row("TIFF, 8 bits", "a.tif", integerTiff<quint8>(1).bytes());
    row("TIFF, tagged as bottom row first", "a.tif",
        changed(floatTiff(), [](Tiff &t) { t.orientation = 4; }));
    row("PNG, 16 bits", "a.png", greyPng(QImage::Format_Grayscale16, 3, samples<quint16>()));
    row("PNG, 8 bits", "a.png", greyPng(QImage::Format_Grayscale8, 3, samples<quint8>()));
    row("PGM, 8 bits", "a.pgm", "P5\n3 2\n255\n" + inOrder(samples<quint8>(), big));
    row("PGM, 8 bits of which 200 is white", "a.pnm",
        "P5 3 2 200 " + inOrder(samples<quint8>(), big));
    row("PGM, 16 bits", "a.pgm", "P5\n3 2\n65535\n" + inOrder(samples<quint16>(), big));
    row("PGM with comments", "a.pgm",
        "P5\n# 9 9\n3 # wide\n2\n#\n255\n" + inOrder(samples<quint8>(), big));
    row("raw", "a.f32", inOrder(expectedHeights, little));
    row("suffix in capitals", "A.RAW", inOrder(expectedHeights, little));
    row("name outside ASCII", "h\u00f6he \u6e29.tif", floatTiff().bytes());
}

void TestHeightMapReader::greyValuesAreHeightsAndRowZeroIsProfileZero()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, bytes);
    HeightMapReader reader;

    const std::optional<HeightMap> map = reader.read(write(name, bytes), 3);

    QVERIFY2(map, qPrintable(reader.errorString()));
    QCOMPARE(map->width, 3);
    QCOMPARE(map->height, 2);
    QCOMPARE(map->heights, expectedHeights);
}

void TestHeightMapReader::floatsArriveBitForBit_data()
{
    QTest::addColumn<QString>("name");

    QTest::newRow("TIFF") << QStringLiteral("a.tif");
    QTest::newRow("raw") << QStringLiteral("a.bin");
}

void TestHeightMapReader::floatsArriveBitForBit()
{
    QFETCH(QString, name);
    using Limits = std::numeric_limits<float>;
    const std::vector<float> heights{
        Limits::quiet_NaN(), -Limits::infinity(), -0.0F, Limits::denorm_min(), -79.4735F, 0.1F};
    Tiff tiff = floatTiff();
    tiff.values = inOrder(heights, little);
    HeightMapReader reader;

    const auto map =
        reader.read(write(name, HeightMapReader::isRaw(name) ? tiff.values : tiff.bytes()), 3);

    QVERIFY2(map, qPrintable(reader.errorString()));
    QCOMPARE(map->heights.size(), heights.size());
    QCOMPARE(std::memcmp(map->heights.data(), heights.data(), heights.size() * sizeof(float)), 0);
}

void TestHeightMapReader::otherFilesAreRefusedWithTheReason_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("reason");

    const auto row = [](const char *title, const char *name, const QByteArray &bytes,
                         const char *reason) {
        QTest::newRow(title) << QString(name) << bytes << QString(reason);
    };
    const auto tiffRow = [&row](const char *title, const char *reason, auto change) {
        row(title, "a.tif", changed(floatTiff(), change), reason);
    };
    const QByteArray text = "profiles, heights and nothing else\n";
    const QByteArray tiff = floatTiff().bytes();
    const QByteArray png = greyPng(QImage::Format_Grayscale16, 3, samples<quint16>());

    row("empty", "a.tif", {}, "empty");
    row("unknown suffix", "a.txt", text, "unknown suffix");
    row("no suffix", "tif", tiff, "unknown suffix");

    row("TIFF: text", "a.tif", text, "not a TIFF");
    row("TIFF: one byte", "a.tif", "I", "not a TIFF");
    row("TIFF: cut within the directory", "a.tif", tiff.left(60), "not a TIFF");
    row("TIFF: cut within the values", "a.tif", tiff.left(tiff.size() - 1), "cut short");
    row("TIFF: without values", "a.tif", tiff.left(tiff.size() - 24), "cut short");
    row("TIFF: a PNG inside", "a.tif", png, "not a TIFF");
    tiffRow("TIFF: colour", "not a grey",
        [](Tiff &t) { t.photometric = 2, t.channels = 3, t.bits = 8; });
    tiffRow("TIFF: palette", "not a grey",
        [](Tiff &t) { t.photometric = 3, t.bits = 8, t.format = 1; });
    tiffRow("TIFF: two channels", "not a grey", [](Tiff &t) { t.channels = 2; });
    tiffRow("TIFF: white is zero", "from white", [](Tiff &t) { t.photometric = 0; });
    tiffRow("TIFF: half floats", "samples", [](Tiff &t) { t.bits = 16; });
    tiffRow("TIFF: doubles", "samples", [](Tiff &t) { t.bits = 64; });
    tiffRow("TIFF: 32-bit integers", "samples", [](Tiff &t) { t.format = 1; });
    tiffRow("TIFF: 12 bits", "samples", [](Tiff &t) { t.bits = 12, t.format = 1; });
    tiffRow("TIFF: tiles", "tiles", [](Tiff &t) { t.isTiled = true; });
    tiffRow("TIFF: two images", "more than one", [](Tiff &t) { t.hasNextImage = true; });
    tiffRow("TIFF: unknown compression", "damaged", [](Tiff &t) { t.compression = 60000; });
    tiffRow("TIFF: no columns", "0 x 2", [](Tiff &t) { t.width = 0; });
    tiffRow("TIFF: all the memory", "65536 x 65536", [](Tiff &t) { t.width = t.height = 65536; });
    tiffRow("TIFF: largest width", "4294967295 x 2", [](Tiff &t) { t.width = 0xffffffffU; });

    row("PNG: text", "a.png", text, "not a PNG");
    row("PNG: one byte", "a.png", "\x89", "not a PNG");
    row("PNG: signature only", "a.png", png.left(8), "not a PNG");
    row("PNG: cut within the values", "a.png", png.left(png.size() - 20), "damaged");
    row("PNG: without its end", "a.png", png.left(png.size() - 12), "damaged");
    row("PNG: without its last byte", "a.png", png.chopped(1), "damaged");
    row("PNG: wrong checksum", "a.png", withChecksumFault(png), "not a PNG");
    row("PNG: colour", "a.png", SampleFiles::colourPng(), "not a grey");
    row("PNG: one bit", "a.png", SampleFiles::png(QImage(3, 2, QImage::Format_Mono)), "not a grey");

    row("PGM: text", "a.pgm", text, "not a binary PGM");
    row("PGM: one byte", "a.pgm", "P", "not a binary PGM");
    row("PGM: cut within the header", "a.pgm", "P5\n3", "not a binary PGM");
    row("PGM: cut within a comment", "a.pgm", "P5\n# 3 2", "not a binary PGM");
    row("PGM: cut within the values", "a.pgm", "P5 3 2 255 12345", "cut short");
    row("PGM: 16 bits cut by half", "a.pgm", "P5 3 2 256 123456", "cut short");
    row("PGM: numbers as text", "a.pgm", "P2 3 2 255 1 2 3 4 5 6", "not a binary PGM");
    row("PGM: colour", "a.pnm", "P6 3 2 255 123456123456123456", "not a binary PGM");
    row("PGM: negative width", "a.pgm", "P5 -3 2 255 123456", "not a binary PGM");
    row("PGM: no white", "a.pgm", "P5 3 2 0 123456", "not a binary PGM");
    row("PGM: no rows", "a.pgm", "P5 3 0 255 123456", "3 x 0");
    row("PGM: all the memory", "a.pgm", "P5 65536 65536 255 1", "65536 x 65536");
    row("PGM: overflowing width", "a.pgm", "P5 4294967299 2 255 123456", "not a binary PGM");

    row("raw: part of a value", "a.f32", "1234567890123", "13 bytes");
    row("raw: part of a profile", "a.f32", "12345678", "8 bytes");
}

void TestHeightMapReader::otherFilesAreRefusedWithTheReason()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, bytes);
    QFETCH(QString, reason);
    HeightMapReader reader;

    QVERIFY(!reader.read(write(name, bytes), 3));

    QVERIFY2(reader.errorString().contains(reason), qPrintable(reader.errorString()));
    QVERIFY(!reader.errorString().contains(QLatin1Char('\n')));
}

void TestHeightMapReader::whatIsNoFileIsRefused()
{
    HeightMapReader reader;

    QVERIFY(!reader.read(folder.filePath(QStringLiteral("missing.tif"))));
    QVERIFY(reader.errorString().contains(QLatin1String("no such file")));
    QVERIFY(QDir(folder.path()).mkdir(QStringLiteral("folder.tif")));
    QVERIFY(!reader.read(folder.filePath(QStringLiteral("folder.tif"))));
    QVERIFY(reader.errorString().contains(QLatin1String("directory")));
    QVERIFY(!reader.read(QStringLiteral("/dev/null")));
    QVERIFY(reader.errorString().contains(QLatin1String("regular file")));
}

void TestHeightMapReader::aGoodFileIsReadAfterABadOne()
{
    HeightMapReader reader;
    const QByteArray good = floatTiff().bytes();

    QVERIFY(!reader.read(write(QStringLiteral("bad.tif"), good.left(good.size() - 4))));

    QVERIFY(reader.read(write(QStringLiteral("good.tif"), good)));
}

QTEST_GUILESS_MAIN(TestHeightMapReader)
#include "tst_heightmapreader.moc"
