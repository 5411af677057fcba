#pragma once

#include "Gradient.h"
#include "Olvik3DViewerExport.h"

#include <QList>
#include <QObject>
#include <QString>

#include <exception>
#include <memory>

class CollectionFile;
class QJsonObject;

/// The user's gradients in their order, and the JSON file that holds them: every change to the list
/// or to one of its gradients rewrites the file at once.
///
/// The file is replaced as a whole: a full disk, a crash or a kill leaves the previous one. Names
/// are unique as far as add() and rename() see to it. GUI thread only.
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

    /// Behind the entries the file keeps those that another collection, in another window or
    /// process, has added since the last load() or save() here; of equal names the entry here wins.
    /// Without a load() or save() before it replaces the file.
    /// \throws FileErrorException when the file cannot be written; the previous one stays
    void save() const;

    /// Replaces all entries without a look at their names. Emits nothing, saves nothing.
    void read(const QJsonObject &json);
    void write(QJsonObject &json) const;

    int size() const { return gradients.size(); }

    /// \param index in [0, size()), not checked
    std::shared_ptr<Gradient> getGradientAt(int index) const { return gradients.at(index); }

    /// The first entry of this name, null when there is none.
    std::shared_ptr<Gradient> getGradient(QString name) const;

    /// The gradients themselves are shared, the list is not.
    QList<std::shared_ptr<Gradient>> getGradients() const { return gradients; }

    bool checkNameExists(QString name) const;

    /// The first free one of "New gradient 0", "New gradient 1", ...
    QString generateUniqueGradientName() const;

    /// Black to white under a name that is still free. Not an entry before it is added.
    Gradient newGradient() const;
    std::shared_ptr<Gradient> newGradientShared() const;

    /// Appends, saves and emits gradientUpdated(). Null is ignored.
    /// \throws NameAlreadyExistsException when an entry has the gradient's name
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
    /// \throws NameAlreadyExistsException when the new name is taken
    /// \throws NameDoesNotExistsException when there is no entry of the old name
    /// \throws FileErrorException when saving fails
    /// After each of them all names are as before.
    void rename(QString oldName, QString newName);

Q_SIGNALS:
    /// After add() and rename(); not after remove(), load(), read() or a change of one gradient.
    void gradientUpdated();

private:
    void saveChangesOf(const Gradient &gradient);
    void setNames(const QList<std::shared_ptr<Gradient>> &entries, const QString &name);

    QList<std::shared_ptr<Gradient>> gradients;
    std::unique_ptr<CollectionFile> file;
    bool isRenaming = false;
};
