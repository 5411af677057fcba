#include "PlyHeader.h"
#include "PlyReader.h"
#include "PlyWriter.h"

#include <QtTest>

#include <vtkNew.h>
#include <vtkPLYWriter.h>
#include <vtkPoints.h>
#include <vtkPolyData.h>
#include <vtkVersion.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <future>
#include <limits>
#include <random>
#include <vector>

#include <sys/stat.h>

namespace {

using Limits = std::numeric_limits<float>;
using Coordinates = std::vector<float>;

/// More than the writer's blocks hold at once.
Coordinates hostileFloats()
{
    Coordinates values{Limits::quiet_NaN(), -Limits::quiet_NaN(), -Limits::infinity(),
        Limits::denorm_min(), Limits::max(), Limits::lowest(), 0.0f, -0.0f, 16777217.0f, -1e9f,
        2147483648.0f};
    for (int exponent = -6; exponent <= 18; ++exponent) {
        const auto power = static_cast<float>(std::pow(10.0, exponent));
        values.insert(values.end(),
            {power, -power, std::nextafter(power, 0.0f), std::nextafter(power, Limits::max())});
    }
    std::mt19937 random;
    for (int i = 0; i < 70000; ++i) {
        // Few binary places end in a tie at the last digit, or before it.
        const auto significand = static_cast<float>(random() >> (8 + random() % 24));
        values.push_back(std::ldexp(significand, -static_cast<int>(random() % 40)));
        const auto anyBits = static_cast<quint32>(random());
        std::memcpy(&values.emplace_back(), &anyBits, sizeof anyBits);
    }
    return values;
}

vtkSmartPointer<vtkPolyData> cloudOf(const Coordinates &values, int dataType = VTK_FLOAT)
{
    vtkNew<vtkPoints> points;
    points->SetDataType(dataType);
    for (std::size_t i = 0; i + 2 < values.size(); i += 3)
        points->InsertNextPoint(values.data() + i);
    auto cloud = vtkSmartPointer<vtkPolyData>::New();
    cloud->SetPoints(points);
    return cloud;
}

QByteArray contentsOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
}

void create(const QString &path, const QByteArray &contents)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(contents) == contents.size());
}

} // namespace

class TestPly : public QObject
{
    Q_OBJECT

    QTemporaryDir dir;
    QString scan = dir.filePath("scan.ply");

private Q_SLOTS:
    void writesTheStockWritersBytes()
    {
        if (vtkVersion::GetVTKMajorVersion() < 9)
            QSKIP("The stock writer of VTK 8.2 rounds to six digits");
        for (const int dataType : {VTK_FLOAT, VTK_DOUBLE}) {
            const auto cloud = cloudOf(hostileFloats(), dataType);
            const QString stockName = dir.filePath("stock.ply");
            vtkNew<vtkPLYWriter> stock;
            stock->SetFileTypeToASCII();
            stock->SetFileName(QFile::encodeName(stockName).constData());
            stock->SetInputData(cloud);
            stock->Write();
            QVERIFY(writePly(*cloud, scan));
            QCOMPARE(contentsOf(scan), contentsOf(stockName));
        }
    }

    void failuresAreTold()
    {
        const auto cloud = cloudOf(Coordinates(60000, 0.1f));
        QVERIFY(!writePly(*cloud, dir.filePath("missing/scan.ply")));
        QVERIFY(!writePly(*cloud, "/dev/full"));
    }

    void aReaderMayBeSlowButNotStall()
    {
        const auto cloud = cloudOf(Coordinates(60000, 0.1f));
        QVERIFY(writePly(*cloud, scan));
        const QByteArray text = contentsOf(scan);
        const QString pipe = dir.filePath("pipe");
        QCOMPARE(::mkfifo(QFile::encodeName(pipe), 0600), 0);
        QFile reader(pipe);
        QVERIFY(reader.open(QIODevice::ReadWrite | QIODevice::Unbuffered));
        QVERIFY(!writePly(*cloud, pipe));

        reader.close();
        QVERIFY(reader.open(QIODevice::ReadWrite | QIODevice::Unbuffered));
        auto taken = std::async(std::launch::async, [&reader, &text] {
            QByteArray parts;
            while (parts.size() < text.size())
                parts += reader.read(text.size() - parts.size());
            return parts;
        });
        QVERIFY(writePly(*cloud, pipe));
        QCOMPARE(taken.get(), text);
    }

    void addsTheSuffix()
    {
        QVERIFY(writePly(*cloudOf({1, 2, 3}), dir.filePath("scan.txt")));
        QVERIFY(contentsOf(dir.filePath("scan.txt.ply")).endsWith("\n1 2 3 \n"));
    }

    void readsWhatWasWritten()
    {
        const Coordinates values{1.5f, -2.0f, 1e-30f, Limits::max(), Limits::denorm_min(), 0.1f};
        QVERIFY(writePly(*cloudOf(values), scan));
        const QByteArray remarks[]{"", "obj_info " + QByteArray(5000, 'x') + '\n',
            QByteArray("comment and another\n").repeated(5000)};
        const QByteArray written = contentsOf(scan);
        for (const QByteArray &remark : remarks) {
            create(scan, QByteArray(written).replace("element face", remark + "element face"));
            const auto cloud = readPly(scan);
            QCOMPARE(cloud->GetNumberOfPoints(), vtkIdType(2));
            const auto *back = static_cast<float *>(cloud->GetPoints()->GetVoidPointer(0));
            QCOMPARE(Coordinates(back, back + 6), values);
        }
    }

    void readsCoordinatesAsVtkDoes()
    {
        QByteArray plain;
        QByteArray forVtk;
        const auto add = [&](const QByteArray &x, const QByteArray &y, const QByteArray &z) {
            plain += x + ' ' + y + "\t " + z + " \r\n";
            forVtk += x + ' ' + y + ' ' + z + " 0\n";
        };
        add("nan", "-inf", "inf");
        add("1e-46", "1e39", "-1e-310");
        add("-0", ".5", "5.");
        const Coordinates values = hostileFloats();
        for (std::size_t i = 0; i + 2 < values.size(); i += 3) {
            add(QByteArray::number(double(values[i]), 'g', 17),
                QByteArray::number(double(values[i + 1]), 'g', 9),
                QByteArray::number(double(values[i + 2]), 'f', 3));
        }
        const auto read = [this](const QByteArray &more, const QByteArray &lines) {
            create(scan,
                "ply\nformat ascii 1.0\nelement vertex " + QByteArray::number(lines.count('\n'))
                    + "\nproperty float x\nproperty float y\nproperty float z\n" + more
                    + "end_header\n" + lines);
            return readPly(scan);
        };
        const auto ours = read("", plain);
        const auto theirs = read("property float w\n", forVtk);
        const vtkIdType count = ours->GetNumberOfPoints();
        QCOMPARE(count, vtkIdType(plain.count('\n')));
        QCOMPARE(theirs->GetNumberOfPoints(), count);
        QVERIFY(std::memcmp(ours->GetPoints()->GetVoidPointer(0),
                    theirs->GetPoints()->GetVoidPointer(0), sizeof(float) * 3 * size_t(count))
            == 0);
    }

    void readsNoLongLineOfOtherFiles()
    {
        QBuffer other;
        other.setData("comment " + QByteArray(5000, 'x') + "\n");
        QVERIFY(other.open(QIODevice::ReadOnly) && !PlyHeader::read(other));
        QVERIFY(other.pos() <= 1024);
    }

    void rejects_data()
    {
        QTest::addColumn<QByteArray>("from");
        QTest::addColumn<QByteArray>("to");
        const auto row = [](const char *name, const QByteArray &from, const QByteArray &to) {
            QTest::newRow(name) << from << to;
        };
        row("another kind", "ply\n", "P5\n");
        row("header stops early", "end_header\n1 2 3\n4 5 6\n", "");
        row("truncated binary", "ascii", "binary_little_endian");
        row("remark that is no text", "element", "comment " + QByteArray(9000, '\0') + "\nelement");
        row("lacks a coordinate", "property float z\n", "");
        row("list on vertex", "float z\n", "float z\nproperty list uchar float q\n");
        row("negative count", "vertex 2", "vertex -2");
        row("count of 4 billion", "vertex 2", "vertex 4294967298");
        row("count beyond the file", "vertex 2", "vertex 2000000000");
        row("lacks a vertex", "vertex 2", "vertex 3");
        row("lacks a word", "4 5 6", "4 5  ");
        row("word that is no number", "4 5 6", "4 five 6");
        // The sign leaves the line to VTK.
        row("line beyond VTK's buffer", "1 2 3", QByteArray("+1 2 3").leftJustified(5000));
        row("more than coordinates on a line", "1 2 3", "1 2 3x");
    }

    void rejects()
    {
        QFETCH(const QByteArray, from);
        QFETCH(const QByteArray, to);
        QByteArray contents = "ply\nformat ascii 1.0\nelement vertex 2\nproperty float x\n"
                              "property float y\nproperty float z\nend_header\n1 2 3\n4 5 6\n";
        create(scan, contents);
        QCOMPARE(readPly(scan)->GetNumberOfPoints(), vtkIdType(2));
        create(scan, contents.replace(from, to));
        QCOMPARE(readPly(scan)->GetNumberOfPoints(), vtkIdType(0));
    }
};

QTEST_GUILESS_MAIN(TestPly)
#include "tst_ply.moc"
