#include "FileReplacement.h"

#include <QtTest>

#include <cerrno>
#include <csignal>

#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

/// Like a file system that does not know how to.
int fsync(int)
{
    errno = EINVAL;
    return -1;
}

namespace {

FileWriter writerOf(const QByteArray &text)
{
    return [text](QIODevice &file) { return file.write(text) == text.size(); };
}

QByteArray contentsOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
}

/// As on a full disk, a write beyond the limit is cut short and the next one fails.
void limitFiles(rlim_t size)
{
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit = {size, RLIM_INFINITY};
    setrlimit(RLIMIT_FSIZE, &limit);
}

} // namespace

class TestFileReplacement : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void failuresKeepTheEarlierContents_data()
    {
        QTest::addColumn<bool>("isMount");
        QTest::addColumn<bool>("isClosed");
        QTest::addColumn<QByteArray>("earlier");
        const QByteArray small("earlier");
        const QByteArray large(17 << 20, 'e');
        QTest::newRow("file") << false << false << small;
        QTest::newRow("mount of its own") << true << false << small;
        QTest::newRow("folder takes no files") << false << true << small;
        QTest::newRow("mount in such a folder") << true << true << small;
        QTest::newRow("large file in such a folder") << false << true << large;
    }

    void failuresKeepTheEarlierContents()
    {
        QFETCH(const bool, isMount);
        QFETCH(const bool, isClosed);
        QFETCH(const QByteArray, earlier);
        const QTemporaryDir dir;
        const QTemporaryDir links;
        const QString target = dir.filePath("file");
        // From a folder that does take files.
        const QString path = links.filePath("link");
        const QByteArray file = QFile::encodeName(target);
        const QByteArray folder = QFile::encodeName(dir.path());
        QVERIFY(replaceFile(target, writerOf(earlier)) && QFile::link(target, path));
        const auto restore = qScopeGuard([&] {
            limitFiles(RLIM_INFINITY);
            ::seteuid(::getuid());
            ::umount2(file, MNT_DETACH);
            ::chmod(folder, 0700);
        });
        if (isMount && ::mount(file, file, nullptr, MS_BIND, nullptr) != 0)
            QSKIP("needs the right to mount");
        ::chmod(file, 0666);
        ::chmod(QFile::encodeName(links.path()), 0777);
        // Root may write everywhere.
        if (isClosed)
            QVERIFY(::chmod(folder, 0555) == 0 && (::geteuid() != 0 || ::seteuid(65534) == 0));

        const auto writeHalf = [](QIODevice &device) { return device.write("half") < 0; };
        const QByteArray longer = earlier + "and more";
        // What is too large to be put back is lost to other failures than a full disk.
        QVERIFY(earlier.size() > 100 || !replaceFile(path, writeHalf));
        limitFiles(rlim_t(longer.size()) - 1);
        QVERIFY(!replaceFile(path, writerOf(longer)));
        limitFiles(RLIM_INFINITY);
        QVERIFY(contentsOf(path) == earlier);
        for (const QByteArray &text : {longer, QByteArray("short")}) {
            QVERIFY(replaceFile(path, writerOf(text)));
            QVERIFY(contentsOf(target) == text);
        }
        QVERIFY(QFileInfo(path).isSymLink());
        QCOMPARE(QDir(dir.path()).entryList(QDir::Files | QDir::Hidden), QStringList("file"));
    }
};

QTEST_GUILESS_MAIN(TestFileReplacement)
#include "tst_filereplacement.moc"
