#include "HeightMapReader.h"
#include "SampleFiles.h"

#include <QtTest>

#include <QTemporaryDir>

using namespace SampleFiles;

constexpr auto little = QDataStream::LittleEndian;
constexpr auto big = QDataStream::BigEndian;

/// Three values a profile, two profiles; neither mirroring nor turning maps it onto itself.
template <typename Sample> const std::vector<Sample> heights{1, 2, 3, 11, 12, 200};

template <typename Sample> Tiff tiff(quint32 format, QDataStream::ByteOrder order = little)
{
    Tiff tiff;
    tiff.byteOrder = order;
    tiff.bits = 8 * sizeof(Sample);
    tiff.format = format;
    tiff.values = inOrder(heights<Sample>, order);
    return tiff;
}

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
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("bytes");
        const QByteArray pgm8 = "# 9 9\n3 2\n255\n" + inOrder(heights<quint8>, big);
        const QByteArray pgm16 = "3 2\n65535\n" + inOrder(heights<quint16>, big);
        Tiff bottomFirst = tiff<float>(3);
        bottomFirst.orientation = 4;
        QTest::newRow("float TIFF") << "h\u00f6he.tif" << tiff<float>(3).bytes();
        QTest::newRow("big-endian TIFF") << "a.TIFF" << tiff<float>(3, big).bytes();
        QTest::newRow("16-bit TIFF") << "a.tif" << tiff<quint16>(1).bytes();
        QTest::newRow("signed TIFF") << "a.tif" << tiff<qint16>(2, big).bytes();
        QTest::newRow("8-bit TIFF") << "a.tif" << tiff<quint8>(1).bytes();
        QTest::newRow("TIFF tagged as bottom row first") << "a.tif" << bottomFirst.bytes();
        QTest::newRow("16-bit PNG")
            << "a.png" << greyPng(QImage::Format_Grayscale16, heights<quint16>);
        QTest::newRow("8-bit PNG")
            << "a.png" << greyPng(QImage::Format_Grayscale8, heights<quint8>);
        QTest::newRow("8-bit PGM") << "a.pgm"
                                   << "P5\n" + pgm8;
        QTest::newRow("16-bit PGM") << "a.pnm"
                                    << "P5\n" + pgm16;
        QTest::newRow("raw") << "a.f32" << inOrder(heights<float>, little);
    }

    void greyValuesAreHeightsAndRowZeroIsProfileZero()
    {
        QFETCH(QString, name);
        QFETCH(QByteArray, bytes);
        const std::optional<HeightMap> map = read(name, bytes);
        QVERIFY2(map, qPrintable(reader.errorString()));
        QCOMPARE(QSize(map->width, map->height), QSize(3, 2));
        QCOMPARE(map->heights, heights<float>);
    }

    void otherFilesAreRefusedWithTheReason()
    {
        const auto reason = [this](const char *name, const QByteArray &bytes) {
            return read(name, bytes) ? QStringLiteral("none") : reader.errorString();
        };
        Tiff tiled = tiff<float>(3);
        tiled.isTiled = true;
        Tiff inverted = tiff<quint8>(1);
        inverted.photometric = 0;
        Tiff huge = tiff<quint8>(1);
        huge.width = huge.height = 65536;
        const QByteArray png = greyPng(QImage::Format_Grayscale8, heights<quint8>);
        QVERIFY(reason("a.txt", "text").contains("unknown suffix"));
        QVERIFY(reason("a.tif", {}).contains("empty"));
        QVERIFY(reason("a.tif", tiff<qint32>(2).bytes()).contains("samples"));
        QVERIFY(reason("a.tif", tiled.bytes()).contains("tiles"));
        QVERIFY(reason("a.tif", inverted.bytes()).contains("from white"));
        QVERIFY(reason("a.tif", huge.bytes()).contains("65536 x 65536"));
        QVERIFY(reason("a.png", png.chopped(1)).contains("damaged"));
        QVERIFY(reason("a.pgm", "P5\n3").contains("not a binary PGM"));
        QVERIFY(reason("a.pgm", "P5 3 2 255 12345").contains("cut short"));
    }
};

QTEST_GUILESS_MAIN(TestHeightMapReader)
#include "tst_heightmapreader.moc"
