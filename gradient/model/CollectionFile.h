#pragma once

#include <QByteArray>
#include <QJsonArray>
#include <QSet>
#include <QString>

#include <optional>

/// The JSON file of a GradientCollection, which other collections in other windows or processes may
/// write, too: what they have added since is not lost when this one saves.
///
/// No lock: of two that save in the same instant the last one wins.
class CollectionFile
{
public:
    /// Does not touch the file.
    explicit CollectionFile(QString filePath);

    /// None of a file that is no collection, which is kept aside as "<path>.damaged-<n>".
    /// \return nullopt when the file cannot be read
    std::optional<QJsonArray> load();

    /// Writes the records as a whole, and behind them those that others have added since the last
    /// load() or save(). Before the first of these it replaces whatever is there.
    /// \return false when the file cannot be written, or is damaged and cannot be kept aside; it
    /// stays as it was
    bool save(const QJsonArray &records);

private:
    std::optional<QJsonArray> recordsOfOthers(const QSet<QString> &ownNames) const;

    QString path;
    bool isShared = false; ///< read or written before
    QByteArray knownText; ///< null when it has to be looked at
    QSet<QString> knownNames; ///< without those of others
    QJsonArray others; ///< in knownText
};
