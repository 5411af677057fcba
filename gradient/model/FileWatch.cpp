#include "FileWatch.h"

#include <QFileInfo>

#include <utility>

namespace {

constexpr int momentMs = 100;
/// Nothing tells when a folder comes back, or the target of a link.
constexpr int searchMs = 2000;

} // namespace

FileWatch::FileWatch(QString filePath, QObject *parent)
    : QObject(parent)
    , path(std::move(filePath))
{
    moment.setSingleShot(true);
    moment.setInterval(momentMs);
    connect(&watcher, &QFileSystemWatcher::fileChanged, this, &FileWatch::tellLater);
    connect(&watcher, &QFileSystemWatcher::directoryChanged, this, &FileWatch::tellLater);
    search.setInterval(searchMs);
    connect(&search, &QTimer::timeout, this, &FileWatch::tellLater);
    connect(&moment, &QTimer::timeout, this, [this] {
        // The one that is watched has gone when another has taken its place.
        watch();
        Q_EMIT changed();
    });
    watch();
    tellLater();
}

FileWatch::~FileWatch() = default;

void FileWatch::tellLater()
{
    // Not started anew: changes without a pause would never be told.
    if (!moment.isActive())
        moment.start();
}

void FileWatch::watch()
{
    if (!watcher.files().contains(path))
        add(path);
    const QString folder = QFileInfo(path).absolutePath();
    if (!watcher.directories().contains(folder))
        add(folder);
    if (watcher.files().contains(path))
        search.stop();
    else if (!search.isActive())
        search.start();
}

/// QFileSystemWatcher complains on the console of what may not be read, and of a system that has no
/// watches left: of that once, not with each change.
void FileWatch::add(const QString &watched)
{
    if (!isRefused && QFileInfo(watched).isReadable())
        isRefused = !watcher.addPath(watched);
}
