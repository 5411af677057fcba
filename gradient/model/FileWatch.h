#pragma once

#include <QFileSystemWatcher>
#include <QObject>
#include <QString>
#include <QTimer>

/// Tells that a file may have changed, be it written or replaced. GUI thread only.
///
/// Other files in its folder may give false alarms; of many changes in a moment it tells once. On
/// file systems that tell of no changes made elsewhere, as network ones, it hears of none.
class FileWatch : public QObject
{
    Q_OBJECT

public:
    /// Tells once to begin with.
    FileWatch(QString filePath, QObject *parent);
    ~FileWatch() override;

    /// Tells again in a moment, for a receiver that is busy.
    void tellLater();

Q_SIGNALS:
    void changed();

private:
    void watch();
    void add(const QString &watched);

    QString path;
    QFileSystemWatcher watcher;
    QTimer moment;
    QTimer search; ///< while there is no file
    bool isRefused = false;
};
