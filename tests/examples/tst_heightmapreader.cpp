#include "HeightMapReader.h"
#include "SampleFiles.h"

#include <QtTest>

#include <QTemporaryDir>

using namespace SampleFiles;

constexpr auto big = QDataStream::BigEndian;

/// Three values a profile, two profiles; neither mirroring nor turning maps it onto itself.
template <typename Sample> const std::vector<Sample> heights{1, 2, 3, 11, 12, 200};

template <typename Sample>
Tiff tiff(quint32 format, QDataStream::ByteOrder order = QDataStream::LittleEndian)
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
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("h\u00f6he.tif") << tiff<float>(3).bytes();
        QTest::newRow("big-endian.TIFF") << tiff<float>(3, big).bytes();
        QTest::newRow("16-bit.tif") << tiff<quint16>(1).bytes();
        QTest::newRow("signed.tif") << tiff<qint16>(2, big).bytes();
        QTest::newRow("8-bit.tif") << tiff<quint8>(1).bytes();
        QTest::newRow("16-bit.png") << greyPng(QImage::Format_Grayscale16, heights<quint16>);
        QTest::newRow("8-bit.png") << greyPng(QImage::Format_Grayscale8, heights<quint8>);
        QTest::newRow("8-bit.pgm") << "P5\n# 9 9\n3 2\n255\n" + inOrder(heights<quint8>, big);
        QTest::newRow("16-bit.pnm") << "P5 3 2 65535 " + inOrder(heights<quint16>, big);
        QTest::newRow("raw.f32") << tiff<float>(3).values;
    }

    void greyValuesAreHeightsAndRowZeroIsProfileZero()
    {
        QFETCH(QByteArray, bytes);
        const std::optional<HeightMap> map = read(QTest::currentDataTag(), bytes);
        QVERIFY2(map, qPrintable(reader.errorString()));
        QCOMPARE(QSize(map->width, map->height), QSize(3, 2));
        QCOMPARE(map->heights, heights<float>);
    }

    void otherFilesAreRefusedWithTheReason()
    {
        const auto reason = [this](const char *name, const QByteArray &bytes) {
            return read(name, bytes) ? QStringLiteral("none") : reader.errorString();
        };
        const QByteArray png = greyPng(QImage::Format_Grayscale8, heights<quint8>);
        QVERIFY(reason("a.txt", "text").contains("unknown suffix"));
        QVERIFY(reason("a.tif", {}).contains("empty"));
        QVERIFY(reason("a.tif", tiff<qint32>(2).bytes()).contains("samples"));
        QVERIFY(reason("a.png", png.chopped(1)).contains("damaged"));
        QVERIFY(reason("a.pgm", "P5 65536 65536 255 1").contains("65536 x 65536"));
        QVERIFY(reason("a.pgm", "P5\n3").contains("not a binary PGM"));
        QVERIFY(reason("a.pgm", "P5 3 2 255 12345").contains("cut short"));
        Tiff unusual = tiff<quint8>(1);
        unusual.isTiled = true;
        QVERIFY(reason("a.tif", unusual.bytes()).contains("tiles"));
        unusual.photometric = 0;
        QVERIFY(reason("a.tif", unusual.bytes()).contains("from white"));
    }
};

QTEST_GUILESS_MAIN(TestHeightMapReader)
#include "tst_heightmapreader.moc"
