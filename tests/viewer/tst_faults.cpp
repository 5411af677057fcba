// What a host may meet: full disks, folders that take nothing, damaged files, kills, no memory.
#include "GuiTest.h"
#include "HostProcess.h"
#include "Operator.h"
#include "ViewerWindow.h"

#include "GradientCollection.h"
#include "Olvik3DViewerControl.h"
#include "OlvikSettings.h"
#include "PlyReader.h"
#include "PlyWriter.h"

#include <vtkNew.h>
#include <vtkPoints.h>
#include <vtkPolyData.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <new>

#include <sys/mount.h>
#include <sys/resource.h>
#include <unistd.h>

namespace {

constexpr int pointCount = 3000;
constexpr int gradientCount = 200;

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

void saveCloud(const QString &path, int round)
{
    vtkNew<vtkPoints> points;
    for (int i = 0; i < pointCount; ++i)
        points->InsertNextPoint(i, round, 0.1);
    vtkNew<vtkPolyData> cloud;
    cloud->SetPoints(points);
    if (!writePly(*cloud, path))
        std::_Exit(1);
}

void saveSettings(int round)
{
    OlvikSettings::Instance()->setValue("loop/round", round);
    OlvikSettings::Instance()->setValue("loop/text", QString(2000, 'x'));
}

/// All carry the number of the round.
void saveGradients(const QString &path, int round)
{
    static GradientCollection collection(path);
    QJsonArray records;
    for (int number = 0; number < gradientCount; ++number)
        records.append(QJsonObject{{"name", QString::number(number)}, {"max", round}});
    collection.read({{"gradients", records}});
    collection.save();
}

bool isWhole(const QString &kind, const QString &path)
{
    if (kind == "cloud")
        return readPly(path)->GetNumberOfPoints() == pointCount;
    if (kind == "settings")
        return contentsOf(path).endsWith("text=" + QByteArray(2000, 'x') + '\n');
    GradientCollection collection(path);
    collection.load();
    const auto gradients = collection.getGradients();
    const double round = gradients.value(0, std::make_shared<Gradient>())->getMax();
    const auto isOfRound = [round](const auto &gradient) { return gradient->getMax() == round; };
    return gradients.size() == gradientCount && round > 0.0
        && std::all_of(gradients.begin(), gradients.end(), isOfRound);
}

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
    return refused + static_cast<int>(user.told.filter("Error Saving File|").size());
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

[[noreturn]] void saveUntilKilled(const QString &kind, const QString &file)
{
    for (int round = 1;; ++round) {
        if (kind == "cloud")
            saveCloud(file, round);
        else if (kind == "gradients")
            saveGradients(file, round);
        else
            saveSettings(round);
        if (round == 1) {
            std::puts("saving");
            std::fflush(stdout);
        }
    }
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
        HostProcess(folder->path()).expect(self, {"view"}, "Default 0\n", console);
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
        const QByteArray disk = QFile::encodeName(home);
        if (!QDir().mkdir(home) || ::mount("none", disk, "tmpfs", 0, "size=256k") != 0)
            QSKIP("needs the right to mount a file system");
        const auto unmount = qScopeGuard([&disk] { ::umount2(disk, MNT_DETACH); });
        const QByteArray earlier = "[loop]\ntext=" + QByteArray(2000, 'x') + '\n';
        QVERIFY(create(settingsFile(home), earlier));
        QFile filler(home + "/filler");
        QVERIFY(filler.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
        while (isFull && filler.write(QByteArray(4096, 'f')) > 0) { }
        filler.close();
        if (!isFull)
            QCOMPARE(::mount("none", disk, "tmpfs", MS_REMOUNT | MS_RDONLY, nullptr), 0);
        HostProcess(home).expect(self, {"view"}, "Default 0\n", "Couldn't open save file.\n");
        QCOMPARE(contentsOf(settingsFile(home)), earlier);
    }

    void aKillLeavesWholeFiles_data()
    {
        QTest::addColumn<int>("kills");
        QTest::newRow("cloud") << 25;
        QTest::newRow("settings") << 25;
        QTest::newRow("gradients") << 100;
    }

    void aKillLeavesWholeFiles()
    {
        QFETCH(int, kills);
        const QString kind = QTest::currentDataTag();
        const QString file =
            kind == "settings" ? settingsFile(folder->path()) : folder->filePath("saved.ply");
        for (int round = 0; round < kills; ++round) {
            HostProcess saver(folder->path());
            saver.start(self, {"loop", kind, file});
            QVERIFY(saver.waitForReadyRead(20000));
            QTest::qSleep(QRandomGenerator::global()->bounded(1, 20));
            saver.kill();
            QVERIFY(saver.waitForFinished());
            QVERIFY(saver.exitStatus() == QProcess::CrashExit);
            QVERIFY(isWhole(kind, file));
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
        HostProcess(folder->path()).expect(self, {"starve"}, "Default 4\n", told + told);
    }

    void theHostMayEndTheApplication()
    {
        HostProcess(folder->path()).expect(self, {"turns"}, "twice\n");
    }

private:
    const QString self = QCoreApplication::applicationFilePath();
    std::unique_ptr<QTemporaryDir> folder;
};

int main(int argc, char *argv[])
{
    const QByteArray role = argc > 1 ? argv[1] : "";
    if (role == "loop") {
        const QCoreApplication application(argc, argv);
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
