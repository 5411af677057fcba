#include "GradientCollection.h"

#include "CollectionFile.h"
#include "GradientFactory.h"
#include "RecordKey.h"

#include <QDebug>
#include <QHash>
#include <QJsonArray>
#include <QJsonObject>
#include <QLatin1String>
#include <QMetaType>
#include <QPointer>
#include <QScopedValueRollback>
#include <QSet>

#include <algorithm>
#include <iterator>
#include <optional>
#include <utility>

namespace {

[[noreturn]] void failToOpen()
{
    qWarning("Couldn't open save file.");
    throw GradientCollection::FileErrorException();
}

QJsonObject recordOf(const Gradient &gradient)
{
    QJsonObject record;
    gradient.write(record);
    return record;
}

/// By their names.
using Entries = QHash<QString, QList<std::shared_ptr<Gradient>>>;

Entries byName(const QList<std::shared_ptr<Gradient>> &gradients)
{
    Entries entries;
    for (const auto &gradient : gradients)
        entries[gradient->getName()].append(gradient);
    return entries;
}

/// Null when none of them is as in the record.
std::shared_ptr<Gradient> takeEqual(Entries &entries, const QJsonObject &record)
{
    QList<std::shared_ptr<Gradient>> &namesakes = entries[nameOf(record)];
    for (int i = 0; i < namesakes.size(); ++i) {
        if (recordOf(*namesakes.at(i)) == record)
            return namesakes.takeAt(i);
    }
    return nullptr;
}

std::shared_ptr<Gradient> takeNamesake(Entries &entries, const QJsonObject &record)
{
    QList<std::shared_ptr<Gradient>> &namesakes = entries[nameOf(record)];
    return namesakes.isEmpty() ? nullptr : namesakes.takeFirst();
}

/// What differs by its name alone.
std::shared_ptr<Gradient> takeRenamed(Entries &entries, const QJsonObject &record)
{
    for (auto namesakes = entries.begin(); namesakes != entries.end(); ++namesakes) {
        QJsonObject sought = record;
        sought[nameKey] = namesakes.key();
        if (auto found = takeEqual(entries, sought))
            return found;
    }
    return nullptr;
}

} // namespace

GradientCollection::GradientCollection(QString filePath)
    : file(std::make_unique<CollectionFile>(filePath))
{
    // Here once for all views, none of which exists without a collection.
    qRegisterMetaType<std::shared_ptr<Gradient>>("std::shared_ptr<Gradient>");
    qRegisterMetaType<Gradient>("Gradient");
    qDebug() << "Json path" << filePath;
}

GradientCollection::~GradientCollection() = default;

void GradientCollection::load()
{
    const std::optional<QJsonArray> records = file->load();
    if (!records)
        failToOpen();
    read({{gradientsKey, *records}});
}

void GradientCollection::save() const
{
    if (!file->save(records()))
        failToOpen();
}

bool GradientCollection::refresh()
{
    const std::optional<QJsonArray> merged = file->takeUp(records());
    if (!merged)
        return false;

    Q_EMIT aboutToRefresh();
    const QList<std::shared_ptr<Gradient>> changed = replaceEntries(*merged);
    const QPointer<GradientCollection> self(this);
    Q_EMIT gradientUpdated();
    for (const auto &gradient : changed) {
        if (!self)
            return true;
        announced = gradient.get();
        Q_EMIT gradient->updated();
    }
    if (self)
        announced = nullptr;
    return true;
}

void GradientCollection::read(const QJsonObject &json)
{
    for (const auto &gradient : std::as_const(gradients))
        gradient->disconnect(this);
    gradients.clear();

    const QJsonArray all = json[gradientsKey].toArray();
    for (const auto &record : all)
        gradients.append(newEntry(record.toObject()));
}

void GradientCollection::readStandIn(const QJsonObject &json)
{
    read(json);
    file->standIn(records());
}

void GradientCollection::write(QJsonObject &json) const
{
    json[gradientsKey] = records();
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

bool GradientCollection::isNameTaken(const QString &name) const
{
    return checkNameExists(name) || file->names(records()).contains(name);
}

QString GradientCollection::generateUniqueGradientName() const
{
    const QJsonArray own = records();
    QSet<QString> taken = file->names(own);
    for (const QJsonValue &record : own)
        taken.insert(nameOf(record));

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
    append(gradient);
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

    QList<std::shared_ptr<Gradient>> entries;
    std::copy_if(gradients.cbegin(), gradients.cend(), std::back_inserter(entries),
        [&oldName](const auto &gradient) { return gradient->getName() == oldName; });
    renameEntries(entries, newName);
}

void GradientCollection::renameEntry(const std::shared_ptr<Gradient> &entry, const QString &newName)
{
    if (entry->getName() != newName)
        renameEntries({entry}, newName);
}

QJsonArray GradientCollection::records() const
{
    QJsonArray all;
    for (const auto &gradient : gradients)
        all.append(recordOf(*gradient));
    return all;
}

void GradientCollection::renameEntries(
    const QList<std::shared_ptr<Gradient>> &entries, const QString &newName)
{
    auto locked = file->lock();
    if (isNameTaken(newName))
        throw NameAlreadyExistsException();
    if (entries.isEmpty())
        throw NameDoesNotExistsException();

    const QString oldName = entries.first()->getName();
    setNames(entries, newName);
    try {
        save();
    } catch (const FileErrorException &) {
        setNames(entries, oldName);
        throw;
    }
    locked.reset();
    Q_EMIT gradientUpdated();
}

/// Under one lock, so that no other collection takes the name in between.
void GradientCollection::append(const std::shared_ptr<Gradient> &gradient)
{
    const auto locked = file->lock();
    if (isNameTaken(gradient->getName()))
        throw NameAlreadyExistsException();

    gradients.append(gradient);
    try {
        save();
    } catch (const FileErrorException &) {
        gradients.removeLast();
        throw;
    }
}

std::shared_ptr<Gradient> GradientCollection::newEntry(const QJsonObject &record)
{
    auto gradient = std::make_shared<Gradient>(0);
    gradient->read(record);
    saveChangesOf(*gradient);
    return gradient;
}

/// Entries that the records still name stay the same objects, which others hold.
/// \return those of them that have changed
QList<std::shared_ptr<Gradient>> GradientCollection::replaceEntries(const QJsonArray &all)
{
    using Take = std::shared_ptr<Gradient> (*)(Entries &, const QJsonObject &);
    Entries entries = byName(gradients);
    QList<std::shared_ptr<Gradient>> changed;
    gradients = QVector<std::shared_ptr<Gradient>>(all.size()).toList();
    for (const Take take : {takeEqual, takeNamesake, takeRenamed}) {
        for (int i = 0; i < all.size(); ++i) {
            if (gradients.at(i))
                continue;
            const QJsonObject record = all.at(i).toObject();
            gradients[i] = take(entries, record);
            // An equal one keeps what no record holds: the alpha of its stops.
            if (!gradients.at(i) || take == takeEqual)
                continue;
            gradients[i]->read(record);
            changed.append(gradients.at(i));
        }
    }
    for (int i = 0; i < all.size(); ++i) {
        if (!gradients.at(i))
            gradients[i] = newEntry(all.at(i).toObject());
    }
    for (const auto &gone : std::as_const(entries)) {
        for (const auto &gradient : gone)
            gradient->disconnect(this);
    }
    return changed;
}

void GradientCollection::saveChangesOf(const Gradient &gradient)
{
    connect(&gradient, &Gradient::updated, this, [this, changed = &gradient] {
        if (std::exchange(announced, nullptr) != changed && !isRenaming)
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
