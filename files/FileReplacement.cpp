#include "FileReplacement.h"

#include "InPlaceFile.h"

#include <QByteArray>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <optional>

namespace {

/// Of contents that are put back; larger ones would fill the memory.
constexpr qint64 largestKept = 16LL * 1024 * 1024;
/// Qt 5.15's QSaveFile::commit() forgets the failure of a write that it had put off.
constexpr auto unbuffered = QIODevice::OpenMode(QIODevice::WriteOnly) | QIODevice::Unbuffered;

/// Takes everything and keeps the length.
class Counter : public QIODevice
{
protected:
    qint64 readData(char *, qint64) override { return -1; }
    qint64 writeData(const char *, qint64 size) override { return size; }
};

/// Takes the time of making what is written, but no room.
qint64 sizeOf(const FileWriter &write)
{
    Counter counter;
    counter.open(unbuffered);
    write(counter);
    return counter.pos();
}

/// Nullopt when they cannot be kept.
std::optional<QByteArray> earlierContents(const QString &path)
{
    QFile file(path);
    if (file.size() > largestKept || !file.open(QIODevice::ReadOnly))
        return std::nullopt;
    const QByteArray contents = file.readAll();
    return file.error() == QFileDevice::NoError ? std::make_optional(contents) : std::nullopt;
}

void putBack(const QString &path, const QByteArray &contents)
{
    InPlaceFile file(path);
    if (file.open(unbuffered) && file.write(contents) == contents.size())
        file.finish();
}

/// \param size of what is written, when it is known already
bool writeInPlace(const QString &path, const FileWriter &write, qint64 size = 0)
{
    InPlaceFile file(path);
    if (!file.open(unbuffered))
        return false;
    if (file.isSequential())
        return write(file) && file.finish();
    if (!file.reserve(size > 0 ? size : sizeOf(write)))
        return false;

    const std::optional<QByteArray> earlier = earlierContents(path);
    if (write(file) && file.finish())
        return true;
    if (earlier)
        putBack(path, *earlier);
    return false;
}

} // namespace

QString realPath(const QString &path)
{
    const QString file = QFileInfo(path).canonicalFilePath();
    return file.isEmpty() ? path : file;
}

bool isSpecialFile(const QString &path)
{
    const QFileInfo info(path);
    return info.exists() && !info.isFile();
}

bool replaceFile(const QString &path, const FileWriter &write)
{
    const QString target = realPath(path);
    if (isSpecialFile(target))
        return writeInPlace(target, write);

    QSaveFile file(target);
    if (!file.open(unbuffered))
        return writeInPlace(target, write);
    if (!write(file))
        return false;
    // The disk has taken everything: what still fails is the renaming.
    const qint64 size = file.pos();
    return file.commit() || writeInPlace(target, write, size);
}
