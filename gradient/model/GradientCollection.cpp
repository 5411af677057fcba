#include "GradientCollection.h"

#include "CollectionFile.h"
#include "GradientFactory.h"

#include <QDebug>
#include <QJsonArray>
#include <QJsonObject>
#include <QLatin1String>
#include <QMetaType>
#include <QScopedValueRollback>
#include <QSet>

#include <algorithm>
#include <iterator>
#include <optional>
#include <utility>

namespace {

const QLatin1String gradientsKey("gradients");

[[noreturn]] void failToOpen()
{
    qWarning("Couldn't open save file.");
    throw GradientCollection::FileErrorException();
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
    QJsonObject json;
    write(json);
    if (!file->save(json[gradientsKey].toArray()))
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
