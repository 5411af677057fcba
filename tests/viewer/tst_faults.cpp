// What a host may meet: full disks, folders that take nothing, damaged files, kills, no memory.
#include "GuiTest.h"
#include "Operator.h"
#include "ViewerWindow.h"

#include "GradientCollection.h"
#include "Olvik3DViewerControl.h"
#include "OlvikSettings.h"
#include "PlyReader.h"
#include "PlyWriter.h"

#include <QComboBox>
#include <QDirIterator>
#include <QProcess>

#include <vtkNew.h>
#include <vtkPoints.h>
#include <vtkPolyData.h>

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <map>
#include <new>

#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr int pointCount = 3000;

QString settingsFile(const QString &home)
{
    return home + "/config/Olvik/OlvikSettings.ini";
}

QByteArray contentsOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool create(const QString &path, const QByteArray &contents)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(contents) == contents.size();
}

bool saveCloud(const QString &path, int round)
{
    vtkNew<vtkPoints> points;
    for (int i = 0; i < pointCount; ++i)
        points->InsertNextPoint(i, round, 0.1);
    vtkNew<vtkPolyData> cloud;
    cloud->SetPoints(points);
    return writePly(*cloud, path);
}

void saveSettings(int round)
{
    OlvikSettings::Instance()->setValue("loop/round", round);
    OlvikSettings::Instance()->setValue("loop/text", QString(2000, 'x'));
}

/// A file system of its own for as long as it lives.
class SmallDisk
{
public:
    explicit SmallDisk(const QString &where)
        : path(QFile::encodeName(where))
        , mounted(::mkdir(path, 0700) == 0 && ::mount("none", path, "tmpfs", 0, "size=256k") == 0)
    { }
    ~SmallDisk()
    {
        if (mounted)
            ::umount2(path, MNT_DETACH);
    }
    Q_DISABLE_COPY_MOVE(SmallDisk)
    bool isMounted() const { return mounted; }
    bool refuseWrites() const
    {
        return ::mount("none", path, "tmpfs", MS_REMOUNT | MS_RDONLY, nullptr) == 0;
    }
    void fill() const
    {
        QFile file(path + "/filler");
        file.open(QIODevice::WriteOnly | QIODevice::Unbuffered);
        while (file.write(QByteArray(4096, 'f')) > 0) { }
    }
    void free() const { QFile::remove(path + "/filler"); }

private:
    QByteArray path;
    bool mounted;
};

/// The worker may still be at an earlier one, and drop some.
bool showsOneOfTheNextBuffers(Olvik3DViewerControl &viewer)
{
    bool isShown = false;
    QObject context;
    // Queued, because the worker emits.
    QObject::connect(
        viewIn(viewerWindow()), &Olvik3DViewerWidget::mRender, &context,
        [&isShown] { isShown = true; }, Qt::QueuedConnection);
    std::vector<float> heights = ramp(20, 20);
    for (int attempt = 0; attempt < 200 && !isShown; ++attempt) {
        viewer.setBuffer(heights.data(), 20, 20);
        isShown = QTest::qWaitFor([&isShown] { return isShown; }, 100);
    }
    return isShown;
}

/// For what the process may take beyond that which it has.
void limitMemory(rlim_t room)
{
    const long pages = contentsOf("/proc/self/statm").split(' ').first().toLong();
    const rlimit limit = {static_cast<rlim_t>(pages * sysconf(_SC_PAGESIZE)) + room, RLIM_INFINITY};
    setrlimit(RLIMIT_AS, &limit);
}

/// Leaves room for two copies of the smaller buffer only, and not for its points: neither to show
/// nor to save them.
int refusalsWithoutMemory(Olvik3DViewerControl &viewer)
{
    std::vector<float> heights(8000UL * 8000UL);
    limitMemory(700UL << 20);
    int refused = 0;
    try {
        viewer.setBuffer(heights.data(), 16000, 16000);
    } catch (const std::bad_alloc &) {
        ++refused;
    }
    for (int i = 0; i < 3; ++i) {
        viewer.setBuffer(heights.data(), 8000, 8000);
        QTest::qWait(100);
    }
    const Operator user(QDir::temp().filePath("starved.ply"));
    menuItem("Save")->trigger();
    return refused + user.told.filter("Error Saving File|").size();
}

int runViewer(bool starve)
{
    int refused = 0;
    {
        Olvik3DViewerControl viewer("faults", nullptr, nullptr);
        viewer.show();
        if (!QTest::qWaitForWindowExposed(viewerWindow()))
            return 2;
        for (int round = 0; round < (starve ? 2 : 1); ++round) {
            if (starve)
                refused += refusalsWithoutMemory(viewer);
            if (!showsOneOfTheNextBuffers(viewer))
                return 3;
        }
        std::printf("%s %d\n", qPrintable(viewerWindow()->findChild<QComboBox *>()->currentText()),
            refused);
        viewerWindow()->close();
    }
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return 0;
}

/// As a host without an application of its own, which ends the one that the viewer made.
int runViewersInTurn()
{
    for (int round = 0; round < 2; ++round) {
        {
            const Olvik3DViewerControl viewer("guest", nullptr, nullptr);
        }
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        delete QCoreApplication::instance();
    }
    std::puts("twice");
    return 0;
}

int saveAll(const QString &home, int round)
{
    int failures = saveCloud(home + "/cloud.ply", round) ? 0 : 1;
    GradientCollection collection(home + "/gradients.json");
    try {
        const std::shared_ptr<Gradient> gradient = collection.newGradientShared();
        gradient->setName(QString::number(round).repeated(3000));
        collection.add(gradient);
    } catch (const GradientCollection::FileErrorException &) {
        ++failures;
    }
    saveSettings(round);
    return failures;
}

[[noreturn]] void saveUntilKilled(const QString &kind, const QString &file)
{
    for (int round = 1;; ++round) {
        if (kind == "cloud")
            saveCloud(file, round);
        else
            saveSettings(round);
        if (round == 1) {
            std::puts("saving");
            std::fflush(stdout);
        }
    }
}

std::map<QString, QByteArray> filesIn(const QString &home)
{
    std::map<QString, QByteArray> files;
    QDirIterator all(home, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (all.hasNext()) {
        const QString path = all.next();
        if (!path.endsWith("/filler"))
            files[path] = contentsOf(path);
    }
    return files;
}

void setHome(QProcess &child, const QString &home)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("HOME", home);
    environment.insert("XDG_CONFIG_HOME", home + "/config");
    environment.insert("XDG_DATA_HOME", home + "/data");
    environment.insert("QT_LOGGING_RULES", "default.debug=false");
    child.setProcessEnvironment(environment);
}

} // namespace

using Damage = std::function<bool(const QString &)>;
Q_DECLARE_METATYPE(Damage)

class TestFaults : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { folder = std::make_unique<QTemporaryDir>(); }

    void aViewerComesUp_data()
    {
        QTest::addColumn<Damage>("damage");
        QTest::addColumn<QByteArray>("console");
        const QByteArray told = "Couldn't open save file.\n";
        const auto row = [](const char *name, const QByteArray &console, const Damage &damage) {
            QTest::newRow(name) << damage << console;
        };
        const auto settingsAre = [](const QByteArray &contents) {
            return [contents](const QString &home) { return create(settingsFile(home), contents); };
        };
        QByteArray noise;
        for (int i = 0; i < 4096; ++i)
            noise += static_cast<char>(QRandomGenerator::global()->bounded(256));
        row("settings are noise", "", settingsAre(noise));
        row("settings are cut short", "", settingsAre("[3Dviewer]\nposition=@Po"));
        row("settings nest without end", "",
            settingsAre("[3Dviewer]\nFlyMode=@Variant("
                + QByteArray("\\0\\0\\0\\t\\0\\0\\0\\x1").repeated(300000) + ")\n"));
        row("settings want a huge window", "",
            settingsAre("[3Dviewer]\nposition=@Point(-2147483648 2147483647)\n"
                        "size=@Size(16777215 16777215)\nColorMode=77\n[3DViewer]\nColorMode=-1\n"));
        row("settings are a folder", "",
            [](const QString &home) { return QDir().mkpath(settingsFile(home)); });
        row("config folder is a file", "",
            [](const QString &home) { return create(home + "/config", ""); });
        row("data folder is a file", told,
            [](const QString &home) { return create(home + "/data", ""); });
        row("gradients are a folder", told, [](const QString &home) {
            return QDir().mkpath(home + "/data/tst_faults/3DGradients.json");
        });
        row("gradients are noise", "", [noise](const QString &home) {
            return create(home + "/data/tst_faults/3DGradients.json", noise);
        });
    }

    void aViewerComesUp()
    {
        QFETCH(const Damage, damage);
        QFETCH(const QByteArray, console);
        QVERIFY(damage(folder->path()));
        viewerIsFine({"view"}, folder->path(), "Default 0\n", console);
    }

    void aDiskThatTakesNothing_data()
    {
        QTest::addColumn<bool>("isFull");
        QTest::newRow("full") << true;
        QTest::newRow("read-only") << false;
    }

    void aDiskThatTakesNothing()
    {
        QFETCH(bool, isFull);
        const QString home = folder->filePath("home");
        const SmallDisk disk(home);
        if (!disk.isMounted())
            QSKIP("needs the right to mount a file system");
        if (isFull)
            disk.fill();
        else
            QVERIFY(disk.refuseWrites());
        viewerIsFine({"view"}, home, "Default 0\n", "Couldn't open save file.\n");
    }

    void aFullDiskKeepsTheEarlierFiles()
    {
        const QString home = folder->filePath("home");
        const SmallDisk disk(home);
        if (!disk.isMounted())
            QSKIP("needs the right to mount a file system");
        QCOMPARE(failedSaves(home, "1"), 0);
        const auto before = filesIn(home);
        disk.fill();
        QCOMPARE(failedSaves(home, "2"), 2);
        QVERIFY(filesIn(home) == before);
        disk.free();
        QCOMPARE(failedSaves(home, "2"), 0);
        QCOMPARE(filesIn(home).size(), before.size());
        for (const auto &[path, contents] : filesIn(home))
            QVERIFY2(contents != before.at(path), qPrintable(path));
    }

    void aKillLeavesWholeFiles_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::newRow("cloud") << "cloud";
        QTest::newRow("settings") << "settings";
    }

    void aKillLeavesWholeFiles()
    {
        QFETCH(QString, kind);
        const QString file =
            kind == "cloud" ? folder->filePath("cloud.ply") : settingsFile(folder->path());
        for (int round = 0; round < 25; ++round) {
            QProcess saver;
            setHome(saver, folder->path());
            saver.start(QCoreApplication::applicationFilePath(), {"loop", kind, file});
            QVERIFY(saver.waitForReadyRead(20000));
            QTest::qSleep(QRandomGenerator::global()->bounded(1, 20));
            saver.kill();
            QVERIFY(saver.waitForFinished());
            QVERIFY(saver.exitStatus() == QProcess::CrashExit);
            if (kind == "cloud")
                QCOMPARE(readPly(file)->GetNumberOfPoints(), vtkIdType(pointCount));
            else
                QVERIFY(contentsOf(file).endsWith("text=" + QByteArray(2000, 'x') + '\n'));
            // One temporary for each kill, no more.
            QVERIFY(
                QFileInfo(file).dir().entryList(QDir::Files | QDir::Hidden).size() <= round + 3);
        }
    }

    void noMemoryForABuffer()
    {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
        QSKIP("the sanitizer's own allocator ends the process");
#endif
        const QByteArray told =
            "3D viewer: a buffer of 8000 x 8000 heights was dropped: std::bad_alloc\n";
        viewerIsFine({"starve"}, folder->path(), "Default 4\n", told + told);
    }

    void theHostMayEndTheApplication()
    {
        viewerIsFine({"turns"}, folder->path(), "twice\n", "");
    }

private:
    static void viewerIsFine(const QStringList &arguments, const QString &home,
        const QByteArray &output, const QByteArray &console)
    {
        QProcess host;
        setHome(host, home);
        host.start(QCoreApplication::applicationFilePath(), arguments);
        QVERIFY(host.waitForFinished(60000));
        QCOMPARE(host.readAllStandardError(), console);
        QCOMPARE(host.readAllStandardOutput(), output);
        QCOMPARE(host.exitStatus(), QProcess::NormalExit);
        QCOMPARE(host.exitCode(), 0);
    }

    static int failedSaves(const QString &home, const QString &round)
    {
        QProcess host;
        setHome(host, home);
        host.start(QCoreApplication::applicationFilePath(), {"save", home, round});
        return host.waitForFinished(60000) && host.exitStatus() == QProcess::NormalExit
            ? host.exitCode()
            : -1;
    }

    std::unique_ptr<QTemporaryDir> folder;
};

int main(int argc, char *argv[])
{
    const QByteArray role = argc > 1 ? argv[1] : "";
    if (role == "loop" || role == "save") {
        const QCoreApplication application(argc, argv);
        if (role == "save")
            return saveAll(argv[2], std::atoi(argv[3]));
        saveUntilKilled(argv[2], argv[3]);
    }
    if (role == "turns")
        return runViewersInTurn();
    const QApplication application(argc, argv);
    if (role == "view" || role == "starve")
        return runViewer(role == "starve");
    TestFaults test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_faults.moc"
