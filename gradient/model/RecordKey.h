#pragma once

#include <QHash>
#include <QJsonObject>
#include <QJsonValue>
#include <QLatin1String>
#include <QPair>
#include <QString>

/// By what a record is found again in another list: its name, and how many of that name stand
/// before it.
using RecordKey = QPair<QString, int>;

/// Counts the names of one list from its front to its end.
class RecordKeys
{
public:
    RecordKey next(const QString &name) { return {name, counts[name]++}; }

private:
    QHash<QString, int> counts;
};

const QLatin1String gradientsKey("gradients"); ///< of the list of records in a collection
const QLatin1String nameKey("name");

inline QString nameOf(const QJsonValue &record)
{
    return record.toObject().value(nameKey).toString();
}
