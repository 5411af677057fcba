#include "OpenedGradients.h"

#include "GradientCollection.h"
#include "GradientFactory.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonObject>
#include <QList>
#include <QStandardPaths>

#include <exception>

namespace {

using Gradients = QList<std::shared_ptr<Gradient>>;

std::shared_ptr<Gradient> builtIn(const QString &name, Gradient gradient, int min, int max)
{
    gradient.setMax(max);
    gradient.setMin(min);
    gradient.setName(name);
    return std::make_shared<Gradient>(gradient);
}

Gradient coldToHot()
{
    Gradient gradient(0);
    gradient.addStop(0.0f, QColor(0, 0, 135));
    gradient.addStop(0.33f, QColor(0, 255, 255));
    gradient.addStop(0.66f, QColor(255, 255, 0));
    gradient.addStop(1.0f, QColor(255, 0, 0));
    return gradient;
}

Gradients builtIns(int min, int max)
{
    return {builtIn(QStringLiteral("Default"), GradientFactory::BlackAndWhite(), min, max),
        builtIn(QStringLiteral("Default Color"), coldToHot(), min, max)};
}

/// A folder that takes no file must not leave the operator without gradients.
void standIn(GradientCollection &collection, const Gradients &gradients)
{
    QJsonArray records;
    for (const std::shared_ptr<Gradient> &gradient : gradients) {
        QJsonObject record;
        gradient->write(record);
        records.append(record);
    }
    collection.readStandIn({{QStringLiteral("gradients"), records}});
}

void addAll(GradientCollection &collection, const Gradients &gradients)
{
    try {
        for (const std::shared_ptr<Gradient> &gradient : gradients)
            collection.add(gradient);
    } catch (const GradientCollection::NameAlreadyExistsException &) {
        // Another program has just made the file.
        collection.refresh();
    } catch (const GradientCollection::FileErrorException &) {
        standIn(collection, gradients);
    }
}

/// False when the file is there and cannot be read, which is in the log then.
bool readFile(GradientCollection &collection, const QString &path)
{
    try {
        // load() would tell of a missing file, too, which is what a first start looks like.
        if (QFile::exists(path))
            collection.load();
        else
            collection.refresh();
    } catch (const std::exception &) {
        return false;
    }
    return true;
}

} // namespace

QString gradientsPath(QString fileName)
{
    const QDir folder(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation));
    folder.mkpath(QStringLiteral("."));
    if (!fileName.endsWith(QStringLiteral(".json")))
        fileName += QStringLiteral(".json");
    return folder.path() + '/' + fileName;
}

std::shared_ptr<GradientCollection> openGradients(const QString &path, int min, int max)
{
    auto collection = std::make_shared<GradientCollection>(path);
    if (!readFile(*collection, path))
        standIn(*collection, builtIns(min, max));
    else if (collection->size() == 0)
        addAll(*collection, builtIns(min, max));
    return collection;
}
