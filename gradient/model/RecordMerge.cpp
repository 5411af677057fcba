#include "RecordMerge.h"

#include "RecordKey.h"

#include <QHash>
#include <QJsonArray>
#include <QJsonValue>
#include <QList>

#include <algorithm>
#include <iterator>
#include <utility>

namespace {

struct Keyed
{
    RecordKey key;
    QJsonValue record;
};

using Index = QHash<RecordKey, QJsonValue>;

QList<Keyed> keyed(const QJsonArray &records)
{
    RecordKeys keys;
    QList<Keyed> list;
    for (const QJsonValue &record : records)
        list.append({keys.next(nameOf(record)), record});
    return list;
}

Index indexOf(const QList<Keyed> &list)
{
    Index index;
    for (const Keyed &entry : list)
        index.insert(entry.key, entry.record);
    return index;
}

/// Undefined, which no record is, stands for a record that is not there.
QJsonValue at(const Index &index, const RecordKey &key)
{
    return index.value(key, QJsonValue::Undefined);
}

/// What is left of theirs, ours in place of those that have been changed here.
QList<Keyed> theirPart(const Index &base, const Index &ours, const QList<Keyed> &theirs)
{
    QList<Keyed> kept;
    for (const Keyed &their : theirs) {
        const QJsonValue before = at(base, their.key);
        const QJsonValue our = at(ours, their.key);
        if (our == before || before.isUndefined())
            kept.append(their);
        else if (!our.isUndefined())
            kept.append({their.key, our});
    }
    return kept;
}

bool lacks(const Index &theirs, const Index &base, const Keyed &our)
{
    const QJsonValue their = at(theirs, our.key);
    const QJsonValue before = at(base, our.key);
    return their.isUndefined() ? before != our.record : before.isUndefined() && their != our.record;
}

/// Negative when it is not there.
int placeOf(const QList<Keyed> &list, const RecordKey &key)
{
    const auto isMeant = [&key](const Keyed &entry) { return entry.key == key; };
    const auto found = std::find_if(list.cbegin(), list.cend(), isMeant);
    return found == list.cend() ? -1 : static_cast<int>(std::distance(list.cbegin(), found));
}

} // namespace

QJsonArray mergedRecords(const QJsonArray &base, const QJsonArray &ours, const QJsonArray &theirs)
{
    if (theirs == base)
        return ours;
    if (ours == base)
        return theirs;

    const QList<Keyed> ourList = keyed(ours);
    const QList<Keyed> theirList = keyed(theirs);
    const Index before = indexOf(keyed(base));
    const Index their = indexOf(theirList);
    const Index our = indexOf(ourList);
    QList<Keyed> merged = theirPart(before, our, theirList);
    int place = 0;
    for (const Keyed &entry : ourList) {
        const int found = placeOf(merged, entry.key);
        if (found >= 0)
            place = found;
        const bool isLacking = lacks(their, before, entry);
        if (isLacking)
            merged.insert(place, entry);
        if (isLacking || found >= 0)
            ++place;
        while (place < merged.size() && !our.contains(merged.at(place).key))
            ++place;
    }

    QJsonArray records;
    for (const Keyed &entry : std::as_const(merged))
        records.append(entry.record);
    return records;
}
