#include "CollectionFile.h"

#include "Gradient.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLatin1String>
#include <QSaveFile>

#include <algorithm>
#include <utility>

namespace {

const QLatin1String gradientsKey("gradients");

QString nameOf(const QJsonValue &record)
{
    return record.toObject().value(QLatin1String("name")).toString();
}

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
    file.open(QIODevice::ReadOnly);
    const QByteArray text = file.isOpen() ? file.readAll() : QByteArray();
    return file.error() == QFileDevice::NoError ? std::make_optional(text) : std::nullopt;
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
    return records;
}

/// Never replaces a file that was kept earlier, and keeps one content once.
bool keepAside(const QString &path)
{
    for (int number = 1;; ++number) {
        const QString kept = path + QStringLiteral(".damaged-%1").arg(number);
        // A copy lets a second load() end like the first; a rename needs neither space nor the
        // right to read.
        if (!QFileInfo::exists(kept))
            return QFile::copy(path, kept) || QFile::rename(path, kept);
        const std::optional<QByteArray> content = contentOf(path);
        if (content && content == contentOf(kept))
            return true;
    }
}

bool replaceFile(const QString &path, const QByteArray &text)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    file.write(text);
    // Flushed here, because commit() of Qt 5.15 misses an error of the flush it does itself, and
    // would put half a file in place.
    if (!file.flush()) {
        file.cancelWriting();
        return false;
    }
    return file.commit();
}

} // namespace

CollectionFile::CollectionFile(QString filePath)
    : path(std::move(filePath))
{ }

std::optional<QJsonArray> CollectionFile::load()
{
    isShared = true;
    others = {};
    knownText.clear();
    const std::optional<QByteArray> text = contentOf(path);
    if (!text)
        return std::nullopt;

    const std::optional<QJsonArray> records = recordsIn(*text);
    // save() tries once more what fails here.
    if (records || keepAside(path))
        knownText = *text;
    knownNames = namesOf(records.value_or(QJsonArray()));
    return records.value_or(QJsonArray());
}

bool CollectionFile::save(const QJsonArray &records)
{
    const QSet<QString> names = namesOf(records);
    const std::optional<QJsonArray> added = recordsOfOthers(names);
    if (!added)
        return false;

    QJsonArray all = records;
    for (const QJsonValue &record : *added)
        all.append(record);
    const QByteArray text = QJsonDocument(QJsonObject{{gradientsKey, all}}).toJson();
    if (!replaceFile(path, text))
        return false;

    isShared = true;
    knownText = text;
    knownNames = names;
    others = *added;
    return true;
}

/// Nullopt when the file is damaged and cannot be kept aside.
std::optional<QJsonArray> CollectionFile::recordsOfOthers(const QSet<QString> &ownNames) const
{
    if (!isShared || !QFileInfo::exists(path))
        return QJsonArray();

    const std::optional<QByteArray> text = contentOf(path);
    const bool isKnown = text && !knownText.isNull() && *text == knownText;
    const std::optional<QJsonArray> inFile = isKnown ? others : recordsIn(text.value_or("?"));
    if (!inFile)
        return keepAside(path) ? std::make_optional(QJsonArray()) : std::nullopt;

    QJsonArray added;
    for (const QJsonValue &record : *inFile) {
        const QString name = nameOf(record);
        if (!ownNames.contains(name) && !knownNames.contains(name))
            added.append(record);
    }
    return added;
}
