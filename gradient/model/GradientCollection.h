#pragma once

#include "Gradient.h"
#include "Olvik3DViewerExport.h"

#include <QList>
#include <QObject>
#include <QString>

#include <exception>
#include <memory>

class CollectionFile;
class QJsonArray;
class QJsonObject;

/// The user's gradients in their order, and the JSON file that holds them: every change to the list
/// or to one of its gradients rewrites the file at once.
///
/// The file is replaced as a whole: a full disk, a crash or a kill leaves the previous one. Names
/// are unique as far as add() and rename() see to it. GUI thread only.
///
/// Any number of collections in any number of processes may share a file. Each writes only what has
/// changed in it since it last had the file's contents, and leaves the rest as the others have made
/// it; where two have changed the same gradient, the one that saves later wins. What the others
/// have changed comes in with refresh(), for which the file has to be watched, as
/// GradientTableWidget does.
///
/// A change that cannot be saved throws into the code that made it, through the gradient's signal
/// too: whoever changes an entry in answer to an event has to catch, as Qt's event loop lets no
/// exception through. The entry is wholly changed by then, and the next save writes the change.
class OLVIK3DVIEWER_EXPORT GradientCollection : public QObject
{
    Q_OBJECT

public:
    class OLVIK3DVIEWER_EXPORT FileErrorException : public std::exception
    { };
    class OLVIK3DVIEWER_EXPORT NameAlreadyExistsException : public std::exception
    { };
    class OLVIK3DVIEWER_EXPORT NameDoesNotExistsException : public std::exception
    { };

    /// Starts empty and does not touch the file.
    /// \param filePath with its extension; the folder has to exist before the first save
    explicit GradientCollection(QString filePath);
    ~GradientCollection() override;

    /// Replaces all entries by those of the file, in its order and with its names, equal ones
    /// included. Emits nothing.
    ///
    /// A file that is no collection, or has a gradient of more than Gradient::maxStopsRead stops,
    /// gives no entries; it is kept beside as "<path>.damaged-<n>", n from 1, because the next save
    /// replaces it.
    /// \throws FileErrorException when the file cannot be read; the entries stay
    void load();

    /// Writes what has changed here since the last load(), refresh() or save(), and leaves the rest
    /// of the file as another collection may have changed it since. Without one of these before it
    /// replaces the file.
    ///
    /// Where the file may be written but not be replaced, it is written in place.
    /// \throws FileErrorException when the file cannot be written, or is there and cannot be read;
    /// it stays as it was
    void save() const;

    /// Takes up what others have changed in the file since the last load(), refresh() or save();
    /// what has not been saved here stays. An entry whose name is still there stays the same
    /// object, and emits its updated() when it has changed. Saves nothing.
    ///
    /// A file that is not there, cannot be read or is damaged brings nothing new; then nothing is
    /// emitted.
    /// \return false when there is nothing new
    bool refresh();

    /// Replaces all entries without a look at their names. Emits nothing, saves nothing.
    void read(const QJsonObject &json);
    /// read() for entries that stand in for a file that could not be read or made: they give way to
    /// its own as soon as there is one.
    void readStandIn(const QJsonObject &json);
    void write(QJsonObject &json) const;

    int size() const { return static_cast<int>(gradients.size()); }

    /// \param index in [0, size()), not checked
    std::shared_ptr<Gradient> getGradientAt(int index) const { return gradients.at(index); }

    /// \return -1 for one that is not in the collection
    int indexOf(const std::shared_ptr<Gradient> &gradient) const
    {
        return static_cast<int>(gradients.indexOf(gradient));
    }

    /// The first entry of this name, null when there is none.
    std::shared_ptr<Gradient> getGradient(QString name) const;

    /// The gradients themselves are shared, the list is not.
    QList<std::shared_ptr<Gradient>> getGradients() const { return gradients; }

    bool checkNameExists(QString name) const;

    /// Whether an entry has the name, here or in the file.
    bool isNameTaken(const QString &name) const;

    /// The first of "New gradient 0", "New gradient 1", ... that is free here and in the file.
    QString generateUniqueGradientName() const;

    /// Black to white under a name that is still free. Not an entry before it is added.
    Gradient newGradient() const;
    std::shared_ptr<Gradient> newGradientShared() const;

    /// Appends, saves and emits gradientUpdated(). Null is ignored.
    /// \throws NameAlreadyExistsException when an entry, here or in the file, has the gradient's name
    /// \throws FileErrorException when saving fails
    /// After both the list is as before and the caller may try again.
    void add(std::shared_ptr<Gradient> gradient);

    /// Saves, and emits nothing. A negative index removes nothing, but saves.
    /// \throws NameDoesNotExistsException when the index is size() or above; nothing changes
    /// \throws FileErrorException when saving fails; the entry has left the list all the same, and
    /// the next save takes it out of the file
    void remove(int index);

    /// Renames every entry of the old name, saves and emits gradientUpdated(). Does nothing when
    /// the names are equal, be they known or not.
    /// \throws NameAlreadyExistsException when the new name is taken, here or in the file
    /// \throws NameDoesNotExistsException when there is no entry of the old name
    /// \throws FileErrorException when saving fails
    /// After each of them all names are as before.
    void rename(QString oldName, QString newName);

    /// The same for one entry alone, of several with its name: files may hold such.
    void renameEntry(const std::shared_ptr<Gradient> &entry, const QString &newName);

Q_SIGNALS:
    /// After add(), rename() and a refresh() that brought something; not after remove(), load(),
    /// read() or a change of one gradient here.
    void gradientUpdated();
    /// refresh() is about to replace and change entries; gradientUpdated() follows.
    void aboutToRefresh();

private:
    QJsonArray records() const;
    void append(const std::shared_ptr<Gradient> &gradient);
    void renameEntries(const QList<std::shared_ptr<Gradient>> &entries, const QString &newName);
    std::shared_ptr<Gradient> newEntry(const QJsonObject &record);
    QList<std::shared_ptr<Gradient>> replaceEntries(const QJsonArray &all);
    void saveChangesOf(const Gradient &gradient);
    void setNames(const QList<std::shared_ptr<Gradient>> &entries, const QString &name);

    QList<std::shared_ptr<Gradient>> gradients;
    std::unique_ptr<CollectionFile> file;
    bool isRenaming = false; ///< saved once for all entries
    const Gradient *announced = nullptr; ///< by refresh(): it is as in the file
};
