#pragma once

class QJsonArray;

/// Brings two lists of gradient records together that have both come from \a base: what differs
/// from it in \a ours stands as it is there, a removal included; the rest is as in \a theirs.
///
/// A record is the same one by its name, the second of a name by being the second, and so on. What
/// both have added under one name stands twice unless it is equal. The order is that of \a theirs,
/// with what is only in \a ours behind the record that it follows there, and behind what they have
/// added to that one. With \a theirs as it was the result is \a ours.
QJsonArray mergedRecords(const QJsonArray &base, const QJsonArray &ours, const QJsonArray &theirs);
