#include "PlyReader.h"
#include "PlyWriter.h"

#include <QtTest>

#include <vtkFloatArray.h>
#include <vtkNew.h>
#include <vtkPLYWriter.h>
#include <vtkPointData.h>
#include <vtkPoints.h>
#include <vtkPolyData.h>

#include <array>
#include <csignal>
#include <cstring>
#include <limits>
#include <memory>
#include <random>
#include <vector>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

using Limits = std::numeric_limits<float>;
using Coordinates = std::vector<float>;

const QByteArray coordinates = "property float x\nproperty float y\nproperty float z\n";
const QByteArray ascii = "ply\nformat ascii 1.0\n";
const QByteArray twoVertices = ascii + "element vertex 2\n" + coordinates;
const QByteArray earlier = "an earlier good file";

vtkSmartPointer<vtkPolyData> cloudOf(const Coordinates &values)
{
    vtkNew<vtkPoints> points;
    for (std::size_t i = 0; i + 2 < values.size(); i += 3)
        points->InsertNextPoint(values.data() + i);
    auto cloud = vtkSmartPointer<vtkPolyData>::New();
    cloud->SetPoints(points);
    return cloud;
}

/// Larger than the writer's block.
vtkSmartPointer<vtkPolyData> largeCloud()
{
    return cloudOf(Coordinates(60000, 0.1f));
}

Coordinates randomBits(std::size_t count)
{
    std::mt19937 random(7);
    Coordinates values(count);
    for (float &value : values) {
        const auto bits = static_cast<std::uint32_t>(random());
        std::memcpy(&value, &bits, sizeof value);
    }
    return values;
}

Coordinates valuesOf(vtkPolyData &cloud)
{
    auto *array = vtkFloatArray::SafeDownCast(cloud.GetPoints()->GetData());
    return {array->GetPointer(0), array->GetPointer(0) + array->GetNumberOfValues()};
}

QByteArray contentsOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
}

void create(const QString &path, const QByteArray &contents)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(contents), contents.size());
}

QByteArray bigEndian(float value)
{
    QByteArray result(4, '\0');
    qToBigEndian(value, result.data());
    return result;
}

/// As on a full disk, a write beyond the limit is cut short and the next one fails.
class FileSizeLimit
{
public:
    explicit FileSizeLimit(rlim_t bytes)
        : handler(std::signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &before);
        const rlimit limit = {bytes, before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit()
    {
        setrlimit(RLIMIT_FSIZE, &before);
        std::signal(SIGXFSZ, handler);
    }
    Q_DISABLE_COPY_MOVE(FileSizeLimit)

private:
    void (*handler)(int);
    rlimit before = {};
};

} // namespace

class TestPly : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void writesTheStockWritersBytes_data();
    void writesTheStockWritersBytes();
    void missingPointsAreNoPoints();
    void addsTheSuffixLikeTheStockWriter_data();
    void addsTheSuffixLikeTheStockWriter();
    void refusesTarget_data();
    void refusesTarget();
    void fullDiskKeepsTheEarlierFile();
    void replacesThroughALink();
    void unwritableFolderTakesADirectWrite();
    void pipeIsWrittenInPlace();
    void lostPipeReaderIsAFailure();

    void readsWhatWasWritten();
    void readsFile_data();
    void readsFile();
    void keepsColours();
    void rejects_data();
    void rejects();
    void rejectsWhatIsNoFile();

private:
    QString path(const char *name) const { return dir->filePath(QString::fromLatin1(name)); }
    QStringList names() const
    {
        return QDir(dir->path())
            .entryList(QDir::AllEntries | QDir::System | QDir::Hidden | QDir::NoDotAndDotDot);
    }

    std::unique_ptr<QTemporaryDir> dir;
};

void TestPly::init()
{
    dir = std::make_unique<QTemporaryDir>();
    QVERIFY(dir->isValid());
}

void TestPly::writesTheStockWritersBytes_data()
{
    QTest::addColumn<Coordinates>("values");

    QTest::newRow("no points") << Coordinates();
    QTest::newRow("hostile") << Coordinates{Limits::quiet_NaN(), -Limits::quiet_NaN(),
        Limits::infinity(), -Limits::infinity(), Limits::denorm_min(), -Limits::min(),
        Limits::max(), Limits::lowest(), -0.0f, 0.0f, 1e16f, 1e17f, 1e-4f, 1e-5f, 100000.0f};
    QTest::newRow("whole numbers") << Coordinates{
        7.0f, -7.0f, 16777217.0f, 999999936.0f, 1e9f, -1e9f, 2147483648.0f, -1e10f, 1e10f};
    QTest::newRow("any bits, several blocks") << randomBits(60000);
}

void TestPly::writesTheStockWritersBytes()
{
    QFETCH(Coordinates, values);
    const auto cloud = cloudOf(values);
    vtkNew<vtkPLYWriter> stock;
    stock->SetFileTypeToASCII();
    stock->SetFileName(QFile::encodeName(path("stock.ply")).constData());
    stock->SetInputData(cloud);
    stock->Write();

    QVERIFY(writePly(*cloud, path("ours.ply")));
    QVERIFY(contentsOf(path("ours.ply")) == contentsOf(path("stock.ply")));
}

void TestPly::missingPointsAreNoPoints()
{
    vtkNew<vtkPolyData> cloud;
    QVERIFY(writePly(*cloud, path("null.ply")));
    QVERIFY(writePly(*cloudOf({}), path("empty.ply")));
    QCOMPARE(contentsOf(path("null.ply")), contentsOf(path("empty.ply")));
}

void TestPly::addsTheSuffixLikeTheStockWriter_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("written");

    QTest::newRow("none") << "scan"
                          << "scan.ply";
    QTest::newRow("another one") << "scan.txt"
                                 << "scan.txt.ply";
    QTest::newRow("upper case") << "scan.PLY"
                                << "scan.PLY.ply";
    QTest::newRow("there already") << "scan.ply"
                                   << "scan.ply";
    QTest::newRow("beyond ASCII") << u8"Höhe" << u8"Höhe.ply";
}

void TestPly::addsTheSuffixLikeTheStockWriter()
{
    QFETCH(QString, name);
    QFETCH(QString, written);
    create(dir->filePath(written), earlier);

    QVERIFY(writePly(*cloudOf({1, 2, 3}), dir->filePath(name)));
    QVERIFY(contentsOf(dir->filePath(written)).endsWith("\n1 2 3 \n"));
    QCOMPARE(names(), QStringList{written});
}

void TestPly::refusesTarget_data()
{
    QTest::addColumn<QString>("target");

    QTest::newRow("no name") << QString();
    QTest::newRow("name with a NUL") << QString(QChar::Null);
    QTest::newRow("missing folder") << "%1/missing/scan.ply";
    QTest::newRow("folder that takes no files") << "/proc/scan.ply";
    QTest::newRow("folder") << "%1";
    QTest::newRow("folder with the suffix") << "%1/folder.ply";
    QTest::newRow("file used as a folder") << "%1/good.ply/scan.ply";
    QTest::newRow("name beyond the file system") << "%1/" + QString(300, QLatin1Char('n'));
    QTest::newRow("full device") << "/dev/full";
    QTest::newRow("link to a full device") << "%1/full.ply";
    QTest::newRow("pipe that nobody reads") << "%1/pipe";
}

void TestPly::refusesTarget()
{
    QFETCH(QString, target);
    create(path("good.ply"), earlier);
    QVERIFY(QDir(dir->path()).mkdir(QStringLiteral("folder.ply")));
    QVERIFY(QFile::link(QStringLiteral("/dev/full"), path("full.ply")));
    QCOMPARE(::mkfifo(QFile::encodeName(path("pipe")).constData(), 0600), 0);
    const QStringList before = names();

    QVERIFY(!writePly(*cloudOf({1, 2, 3}), target.replace(QLatin1String("%1"), dir->path())));
    QCOMPARE(names(), before);
    QCOMPARE(contentsOf(path("good.ply")), earlier);
    QVERIFY(!QFileInfo::exists(QStringLiteral("/dev/full.ply")));
}

void TestPly::fullDiskKeepsTheEarlierFile()
{
    create(path("good.ply"), earlier);
    const auto cloud = largeCloud();
    {
        const FileSizeLimit limit(300 * 1024);
        QVERIFY(!writePly(*cloud, path("good.ply")));
    }
    QCOMPARE(contentsOf(path("good.ply")), earlier);
    QCOMPARE(names(), QStringList{QStringLiteral("good.ply")});
    QVERIFY(writePly(*cloud, path("good.ply")));
}

void TestPly::replacesThroughALink()
{
    create(path("target.ply"), earlier);
    QVERIFY(QFile::link(path("target.ply"), path("link.ply")));

    QVERIFY(writePly(*cloudOf({1, 2, 3}), path("link.ply")));
    QVERIFY(QFileInfo(path("link.ply")).isSymLink());
    QVERIFY(contentsOf(path("target.ply")).endsWith("\n1 2 3 \n"));
}

void TestPly::unwritableFolderTakesADirectWrite()
{
    if (::geteuid() == 0)
        QSKIP("the superuser may write everywhere");
    create(path("good.ply"), earlier);
    const QString folder = dir->path();
    QVERIFY(QFile::setPermissions(folder, QFile::ReadOwner | QFile::ExeOwner));

    const bool replaced = writePly(*cloudOf({1, 2, 3}), path("good.ply"));
    const bool created = writePly(*cloudOf({1, 2, 3}), path("new.ply"));
    QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    QVERIFY(replaced);
    QVERIFY(contentsOf(path("good.ply")).endsWith("\n1 2 3 \n"));
    QVERIFY(!created);
}

void TestPly::pipeIsWrittenInPlace()
{
    const QByteArray name = QFile::encodeName(path("pipe"));
    QCOMPARE(::mkfifo(name.constData(), 0600), 0);
    QFile reader;
    QVERIFY(reader.open(::open(name.constData(), O_RDONLY | O_NONBLOCK), QIODevice::ReadOnly,
        QFileDevice::AutoCloseHandle));

    QVERIFY(writePly(*cloudOf({1, 2, 3}), path("pipe")));
    QVERIFY(reader.readAll().endsWith("\n1 2 3 \n"));
    QCOMPARE(names(), QStringList{QStringLiteral("pipe")});
}

void TestPly::lostPipeReaderIsAFailure()
{
    const QByteArray name = QFile::encodeName(path("pipe"));
    QCOMPARE(::mkfifo(name.constData(), 0600), 0);
    const int reader = ::open(name.constData(), O_RDONLY | O_NONBLOCK);
    const std::unique_ptr<QThread> leaving(QThread::create([reader] {
        char first = 0;
        while (::read(reader, &first, 1) != 1)
            QThread::yieldCurrentThread();
        ::close(reader);
    }));
    leaving->start();

    const bool written = writePly(*largeCloud(), path("pipe"));
    QVERIFY(leaving->wait());
    QVERIFY(!written);
}

void TestPly::readsWhatWasWritten()
{
    const Coordinates values = {1.5f, -2.0f, 1e-30f, Limits::max(), Limits::denorm_min(), 0.1f};
    QVERIFY(writePly(*cloudOf(values), path("scan.ply")));
    QCOMPARE(valuesOf(*readPly(path("scan.ply"))), values);
}

void TestPly::readsFile_data()
{
    QTest::addColumn<QByteArray>("contents");
    const QByteArray binary =
        bigEndian(1) + bigEndian(2) + bigEndian(3) + bigEndian(4) + bigEndian(5) + bigEndian(6);
    const QByteArray end = "end_header\n";
    const QByteArray body = "1 2 3\n4 5 6\n";
    const QByteArray faces = "element face 1\nproperty list uchar int vertex_indices\n";

    QTest::newRow("plain") << twoVertices + end + body;
    QTest::newRow("line ends of Windows")
        << QByteArray(twoVertices + end + body).replace('\n', "\r\n");
    QTest::newRow("last line without an end") << twoVertices + end + "1 2 3\n4 5 6";
    QTest::newRow("tabs, signs, more words")
        << twoVertices + end + "\t1 +2  3 9\n4\t5.0 6e0 nine\n";
    QTest::newRow("comments") << ascii + "comment element vertex 9\nobj_info z\nelement vertex 2\n"
            + coordinates + end + body;
    QTest::newRow("empty element in front") << ascii
            + "element camera 0\nproperty list int float x\nelement vertex 2\n" + coordinates + end
            + body;
    QTest::newRow("polygon whose indices point nowhere")
        << twoVertices + faces + end + body + "3 -1 7 2000000000\n";
    QTest::newRow("polygon that lacks") << twoVertices + faces + end + body;
    QTest::newRow("other order, other types") << ascii
            + "element vertex 2\nproperty int8 z\nproperty double q\nproperty float64 y\n"
              "property uint x\n"
            + end + "3 0 2 1\n6 0 5 4\n";
    QTest::newRow("big endian") << "ply\nformat binary_big_endian 1.0\nelement vertex 2\n"
            + coordinates + end + binary;
}

void TestPly::readsFile()
{
    QFETCH(QByteArray, contents);
    create(path("scan.ply"), contents);
    QCOMPARE(valuesOf(*readPly(path("scan.ply"))), (Coordinates{1, 2, 3, 4, 5, 6}));
}

void TestPly::keepsColours()
{
    create(path("scan.ply"),
        ascii + "element vertex 1\n" + coordinates
            + "property uchar red\nproperty uchar green\nproperty uchar blue\nend_header\n"
              "1 2 3 10 20 30\n");
    const auto cloud = readPly(path("scan.ply"));
    vtkDataArray *colours = cloud->GetPointData()->GetScalars();
    QVERIFY(colours != nullptr);
    QCOMPARE(colours->GetTuple3(0)[1], 20.0);
}

void TestPly::rejects_data()
{
    QTest::addColumn<QByteArray>("contents");
    const auto header = [](const QByteArray &vertices) {
        return ascii + vertices + "end_header\n1 2 3\n4 5 6\n";
    };
    const auto body = [](const QByteArray &lines) { return twoVertices + "end_header\n" + lines; };
    const QByteArray little = "ply\nformat binary_little_endian 1.0\nelement vertex 2\n";

    QTest::newRow("empty") << QByteArray();
    QTest::newRow("another kind") << "P5\n2 2\n255\n" + QByteArray(64, '1');
    QTest::newRow("magic alone") << QByteArray("ply\n");
    QTest::newRow("magic of a longer word")
        << "plyx" + header("element vertex 2\n" + coordinates).mid(3);
    QTest::newRow("header that stops") << twoVertices;
    QTest::newRow("header without its last line end") << twoVertices + "end_header";
    QTest::newRow("no format") << "ply\nelement vertex 2\n" + coordinates
            + "end_header\n1 2 3\n4 5 6\n";
    QTest::newRow("unknown format") << header("").replace("ascii", "text");
    QTest::newRow("unknown version") << body("1 2 3\n4 5 6\n").replace("1.0", "2.0");
    QTest::newRow("unknown keyword") << header("element vertex 2\n" + coordinates + "points\n");
    QTest::newRow("empty header line") << header("element vertex 2\n" + coordinates + "\n");
    QTest::newRow("header line beyond the limit")
        << header("comment " + QByteArray(5000, 'c') + "\nelement vertex 2\n" + coordinates);
    QTest::newRow("header beyond the limit")
        << header(QByteArray("comment\n").repeated(10000) + "element vertex 2\n" + coordinates);
    QTest::newRow("NUL in the header")
        << header("element vertex 2\n" + coordinates + QByteArray("comment \0\n", 10));
    QTest::newRow("no vertices") << header("element face 2\n" + coordinates);
    QTest::newRow("no z") << header("element vertex 2\nproperty float x\nproperty float y\n");
    QTest::newRow("z is a list") << header("element vertex 2\nproperty float x\nproperty float y\n"
                                           "property list uchar float z\n");
    QTest::newRow("list beside the coordinates")
        << header("element vertex 2\n" + coordinates + "property list uchar float q\n");
    QTest::newRow("unknown type") << header(
        "element vertex 2\n" + coordinates + "property quad q\n");
    QTest::newRow("property of nothing") << header(coordinates + "element vertex 2\n");
    QTest::newRow("vertices twice")
        << header("element vertex 1\n" + coordinates + "element vertex 1\n" + coordinates);
    QTest::newRow("full element in front")
        << header("element camera 1\nproperty float f\nelement vertex 1\n" + coordinates);
    QTest::newRow("negative count") << header("element vertex -5\n" + coordinates);
    QTest::newRow("count that is no number") << header("element vertex two\n" + coordinates);
    QTest::newRow("count of 4 billion") << header("element vertex 4294967298\n" + coordinates);
    QTest::newRow("count beyond 64 bits")
        << header("element vertex 18446744073709551618\n" + coordinates);
    QTest::newRow("count beyond the file, ASCII")
        << header("element vertex 2000000000\n" + coordinates);
    QTest::newRow("count beyond the file by a byte, binary")
        << little + coordinates + "end_header\n" + QByteArray(23, '1');
    QTest::newRow("line lacks") << body("1 2 3                  \n");
    QTest::newRow("line lacks a word") << body("1 2 3\n4 5   \n7 8 9\n");
    QTest::newRow("empty line") << body("1 2 3\n\n4 5 6\n");
    QTest::newRow("word that is no number") << body("1 2 3\n4 five 6\n");
    QTest::newRow("number with a tail") << body("1 2 3\n4 5x 6\n");
    QTest::newRow("NUL in a line") << body(QByteArray("1 2 3\n4 \0005 6\n", 13));
    QTest::newRow("line beyond VTK's buffer")
        << body("1 2 3" + QByteArray(5000, ' ') + "\n4 5 6\n");
    QTest::newRow("line ends of old Macs") << body("1 2 3\r4 5 6\r");
}

void TestPly::rejects()
{
    QFETCH(QByteArray, contents);
    create(path("scan.ply"), contents);
    QCOMPARE(readPly(path("scan.ply"))->GetNumberOfPoints(), vtkIdType(0));
}

void TestPly::rejectsWhatIsNoFile()
{
    for (const QString &name : {QString(), QString(QChar::Null), path("missing.ply"), dir->path(),
             QStringLiteral("/dev/zero")})
        QCOMPARE(readPly(name)->GetNumberOfPoints(), vtkIdType(0));
}

QTEST_GUILESS_MAIN(TestPly)
#include "tst_ply.moc"
