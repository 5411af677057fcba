#pragma once

#include <QByteArray>
#include <QJsonArray>
#include <QSet>
#include <QString>

#include <memory>
#include <optional>

class FolderLock;

/// The JSON file of a GradientCollection, which other collections in other windows or processes may
/// write, too.
///
/// It knows the records as the collection last had them in common with the file. What differs from
/// these in the collection is a change made here, what differs in the file one of the others; both
/// are kept, and where both have changed a record the one that saves wins. The records are as
/// Gradient::write() makes them.
class CollectionFile
{
public:
    /// Does not touch the file.
    explicit CollectionFile(QString filePath);

    /// None of a file that is no collection, which is kept aside as "<path>.damaged-<n>".
    /// \return nullopt when the file cannot be read
    std::optional<QJsonArray> load();

    /// Records that give way to those of the file as long as it has been neither read nor written.
    void standIn(const QJsonArray &records);

    /// What the collection should hold after the changes of the others. A file that is not there,
    /// cannot be read or is damaged has changed nothing.
    /// \param ours all records of the collection
    /// \return nullopt when the collection holds it already
    std::optional<QJsonArray> takeUp(const QJsonArray &ours);

    /// Writes the records together with the changes of the others, which takeUp() then gives.
    /// Before the first of these calls it replaces whatever is there.
    /// \return false when the file cannot be written, cannot be read, or is damaged and cannot be
    /// kept aside; it stays as it was
    bool save(const QJsonArray &ours);

    /// The names that would be in the file after a save.
    QSet<QString> names(const QJsonArray &ours);

    /// Keeps the others from saving as long as the result lives; may be asked for again meanwhile.
    std::shared_ptr<FolderLock> lock();

private:
    std::optional<QJsonArray> merged(const QJsonArray &ours);
    std::optional<QJsonArray> theirs();

    QString path;
    std::weak_ptr<FolderLock> held;
    bool isShared = false; ///< the others' changes count
    QJsonArray common;
    QByteArray knownText; ///< null when it has to be looked at
    QJsonArray knownRecords; ///< in knownText
};
