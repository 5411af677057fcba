#include "GradientCollection.h"

#include "GradientFactory.h"

#include <QDebug>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLatin1String>
#include <QMetaType>
#include <QSaveFile>
#include <QScopedValueRollback>
#include <QSet>

#include <algorithm>
#include <iterator>
#include <utility>

namespace {

const QLatin1String gradientsKey("gradients");

[[noreturn]] void failToOpen()
{
    qWarning("Couldn't open save file.");
    throw GradientCollection::FileErrorException();
}

bool isCollection(const QJsonDocument &document)
{
    return document.object().value(gradientsKey).isArray();
}

bool haveSameContent(const QString &firstPath, const QString &secondPath)
{
    QFile first(firstPath);
    QFile second(secondPath);
    return first.open(QIODevice::ReadOnly) && second.open(QIODevice::ReadOnly)
        && first.readAll() == second.readAll();
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
        if (haveSameContent(path, kept))
            return true;
    }
}

} // namespace

GradientCollection::GradientCollection(QString filePath)
    : path(std::move(filePath))
{
    // Here once for all views, none of which exists without a collection.
    qRegisterMetaType<std::shared_ptr<Gradient>>("std::shared_ptr<Gradient>");
    qRegisterMetaType<Gradient>("Gradient");
    qDebug() << "Json path" << path;
}

GradientCollection::~GradientCollection() = default;

void GradientCollection::load()
{
    QFile file(path);
    file.open(QIODevice::ReadOnly);
    const QByteArray text = file.isOpen() ? file.readAll() : QByteArray();
    if (file.error() != QFileDevice::NoError) {
        hasUnreadFile = file.exists();
        failToOpen();
    }

    const QJsonDocument document = QJsonDocument::fromJson(text);
    hasUnreadFile = !text.isEmpty() && !isCollection(document) && !keepAside(path);
    read(document.object());
}

void GradientCollection::save() const
{
    if (hasUnreadFile && !keepAside(path))
        failToOpen();
    hasUnreadFile = false;

    QJsonObject json;
    write(json);
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        failToOpen();
    file.write(QJsonDocument(json).toJson());
    // Flushed here, because commit() of Qt 5.15 misses an error of the flush it does itself, and
    // would put half a file in place.
    if (!file.flush()) {
        file.cancelWriting();
        failToOpen();
    }
    if (!file.commit())
        failToOpen();
}

void GradientCollection::read(const QJsonObject &json)
{
    for (const auto &gradient : std::as_const(gradients))
        gradient->disconnect(this);
    gradients.clear();

    const QJsonArray records = json[gradientsKey].toArray();
    for (const auto &record : records) {
        auto gradient = std::make_shared<Gradient>(0);
        gradient->read(record.toObject());
        saveChangesOf(*gradient);
        gradients.append(gradient);
    }
}

void GradientCollection::write(QJsonObject &json) const
{
    QJsonArray records;
    for (const auto &gradient : gradients) {
        QJsonObject record;
        gradient->write(record);
        records.append(record);
    }
    json[gradientsKey] = records;
}

std::shared_ptr<Gradient> GradientCollection::getGradient(QString name) const
{
    const auto found = std::find_if(gradients.cbegin(), gradients.cend(),
        [&name](const auto &gradient) { return gradient->getName() == name; });
    return found == gradients.cend() ? nullptr : *found;
}

bool GradientCollection::checkNameExists(QString name) const
{
    return getGradient(std::move(name)) != nullptr;
}

QString GradientCollection::generateUniqueGradientName() const
{
    QSet<QString> taken;
    for (const auto &gradient : gradients)
        taken.insert(gradient->getName());

    int number = 0;
    QString name;
    do {
        name = QStringLiteral("New gradient %1").arg(number++);
    } while (taken.contains(name));
    return name;
}

Gradient GradientCollection::newGradient() const
{
    Gradient gradient = GradientFactory::BlackAndWhite();
    gradient.setName(generateUniqueGradientName());
    return gradient;
}

std::shared_ptr<Gradient> GradientCollection::newGradientShared() const
{
    return std::make_shared<Gradient>(newGradient());
}

void GradientCollection::add(std::shared_ptr<Gradient> gradient)
{
    if (!gradient)
        return;
    if (checkNameExists(gradient->getName()))
        throw NameAlreadyExistsException();

    gradients.append(gradient);
    try {
        save();
    } catch (const FileErrorException &) {
        gradients.removeLast();
        throw;
    }
    saveChangesOf(*gradient);
    Q_EMIT gradientUpdated();
}

void GradientCollection::remove(int index)
{
    if (index >= size())
        throw NameDoesNotExistsException();

    if (index >= 0)
        gradients.takeAt(index)->disconnect(this);
    save();
}

void GradientCollection::rename(QString oldName, QString newName)
{
    if (oldName == newName)
        return;
    if (checkNameExists(newName))
        throw NameAlreadyExistsException();

    QList<std::shared_ptr<Gradient>> renamed;
    std::copy_if(gradients.cbegin(), gradients.cend(), std::back_inserter(renamed),
        [&oldName](const auto &gradient) { return gradient->getName() == oldName; });
    if (renamed.isEmpty())
        throw NameDoesNotExistsException();

    setNames(renamed, newName);
    try {
        save();
    } catch (const FileErrorException &) {
        setNames(renamed, oldName);
        throw;
    }
    Q_EMIT gradientUpdated();
}

void GradientCollection::saveChangesOf(const Gradient &gradient)
{
    connect(&gradient, &Gradient::updated, this, [this] {
        if (!isRenaming)
            save();
    });
}

/// Leaves the saving to the caller: a failure between two names would leave half of them changed.
void GradientCollection::setNames(
    const QList<std::shared_ptr<Gradient>> &entries, const QString &name)
{
    const QScopedValueRollback<bool> renaming(isRenaming, true);
    for (const auto &gradient : entries)
        gradient->setName(name);
}
