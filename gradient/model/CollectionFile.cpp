#include "CollectionFile.h"

#include "FileReplacement.h"
#include "FolderLock.h"
#include "Gradient.h"
#include "RecordKey.h"
#include "RecordMerge.h"

#include <QFile>
#include <QFileInfo>
#include <QIODevice>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLatin1String>

#include <algorithm>
#include <utility>

namespace {

QSet<QString> namesOf(const QJsonArray &records)
{
    QSet<QString> names;
    for (const QJsonValue &record : records)
        names.insert(nameOf(record));
    return names;
}

bool isReadWhole(const QJsonValue &record)
{
    const QJsonArray stops = record.toObject().value(QLatin1String("stops")).toArray();
    return stops.size() <= Gradient::maxStopsRead;
}

std::optional<QByteArray> contentOf(const QString &path)
{
    QFile file(path);
    const QByteArray text = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    return file.error() == QFileDevice::NoError ? std::make_optional(text) : std::nullopt;
}

/// As it is written: what a record lacks, or says in another way, is no change.
QJsonObject normalized(const QJsonValue &record)
{
    Gradient gradient;
    gradient.read(record.toObject());
    QJsonObject written;
    gradient.write(written);
    return written;
}

/// Nullopt for what is no collection; an empty file is an empty one.
std::optional<QJsonArray> recordsIn(const QByteArray &text)
{
    if (text.isEmpty())
        return QJsonArray();

    const QJsonValue value = QJsonDocument::fromJson(text).object().value(gradientsKey);
    const QJsonArray records = value.toArray();
    if (!value.isArray() || !std::all_of(records.begin(), records.end(), isReadWhole))
        return std::nullopt;

    QJsonArray all;
    for (const QJsonValue &record : records)
        all.append(normalized(record));
    return all;
}

/// Never replaces a file that was kept earlier, and keeps one content once. False for what cannot
/// be read, too: nobody knows that it is damaged.
bool keepAside(const QString &path)
{
    const std::optional<QByteArray> content = contentOf(path);
    for (int number = 1; content; ++number) {
        const QString kept = path + QStringLiteral(".damaged-%1").arg(number);
        // A copy lets a second load() end like the first; a rename needs no space.
        if (!QFileInfo::exists(kept))
            return QFile::copy(path, kept) || QFile::rename(path, kept);
        if (content == contentOf(kept))
            return true;
    }
    return false;
}

QString folderOf(const QString &path)
{
    return QFileInfo(realPath(path)).absolutePath();
}

} // namespace

CollectionFile::CollectionFile(QString filePath)
    : path(std::move(filePath))
{ }

std::optional<QJsonArray> CollectionFile::load()
{
    // Not in the middle of a save: half a file would be kept aside as a damaged one.
    const std::shared_ptr<FolderLock> locked = lock();
    isShared = true;
    knownText.clear();
    const std::optional<QByteArray> text = contentOf(path);
    if (!text)
        return std::nullopt;

    const std::optional<QJsonArray> records = recordsIn(*text);
    // save() tries once more what fails here.
    if (records || keepAside(path))
        knownText = *text;
    knownRecords = records.value_or(QJsonArray());
    common = knownRecords;
    return common;
}

void CollectionFile::standIn(const QJsonArray &records)
{
    if (knownText.isNull())
        common = records;
}

std::optional<QJsonArray> CollectionFile::takeUp(const QJsonArray &ours)
{
    isShared = true;
    const std::optional<QJsonArray> records = theirs();
    if (!records)
        return std::nullopt;

    const QJsonArray merged = mergedRecords(common, ours, *records);
    common = *records;
    return merged == ours ? std::nullopt : std::make_optional(merged);
}

bool CollectionFile::save(const QJsonArray &ours)
{
    const std::shared_ptr<FolderLock> locked = lock();
    const std::optional<QJsonArray> all = merged(ours);
    if (!all && !keepAside(path))
        return false;

    const QJsonArray records = all.value_or(ours);
    const QByteArray text = QJsonDocument(QJsonObject{{gradientsKey, records}}).toJson();
    const auto write = [&text](QIODevice &file) { return file.write(text) == text.size(); };
    if (!replaceFile(path, write))
        return false;

    isShared = true;
    knownText = text;
    knownRecords = records;
    // Not what the others have added: to the collection it is still new.
    common = ours;
    return true;
}

QSet<QString> CollectionFile::names(const QJsonArray &ours)
{
    return namesOf(merged(ours).value_or(ours));
}

std::shared_ptr<FolderLock> CollectionFile::lock()
{
    std::shared_ptr<FolderLock> locked = held.lock();
    if (!locked) {
        locked = std::make_shared<FolderLock>(folderOf(path));
        held = locked;
    }
    return locked;
}

/// As after a save. Nullopt when the file cannot be read or is damaged.
std::optional<QJsonArray> CollectionFile::merged(const QJsonArray &ours)
{
    if (!isShared)
        return ours;

    const std::optional<QJsonArray> records = theirs();
    return records ? std::make_optional(mergedRecords(common, ours, *records)) : std::nullopt;
}

/// Nullopt when the file cannot be read or is damaged. One that is not there, or that nobody has
/// written into, tells of no change.
std::optional<QJsonArray> CollectionFile::theirs()
{
    if (!QFileInfo::exists(path)) {
        // The next one is another file, which has dropped nothing.
        common = {};
        return common;
    }
    const std::optional<QByteArray> text = contentOf(path);
    if (!text)
        return std::nullopt;
    if (text->isEmpty())
        return common;
    if (!knownText.isNull() && *text == knownText)
        return knownRecords;

    std::optional<QJsonArray> records = recordsIn(*text);
    if (records) {
        knownText = *text;
        knownRecords = *records;
    }
    return records;
}
