#pragma once

#include "OlvikSettingsExport.h"

#include <QMutex>
#include <QSettings>
#include <QString>
#include <QVariant>

#include <memory>

/// The process-wide persistent store of named values.
///
/// Kept in INI format in the user's configuration folder, "Olvik/OlvikSettings.ini". Keys are
/// case-sensitive; a slash separates the section from the name. Each change is on disk when the
/// call returns, or stays in memory, and the file as it was, when the disk takes nothing. Safe to
/// use from any thread.
class OLVIKSETTINGS_EXPORT OlvikSettings
{
public:
    /// The one store of this process, created by the first call.
    static std::shared_ptr<OlvikSettings> Instance();

    OlvikSettings(const OlvikSettings &) = delete;
    OlvikSettings &operator=(const OlvikSettings &) = delete;

    /// \return the stored value, or \a defaultValue when the key does not exist. After a restart
    ///         all but points, sizes, rectangles, byte arrays and lists, which may hold lists, comes
    ///         back as text: convert it with QVariant's toInt() and its like.
    QVariant value(const QString &key, const QVariant &defaultValue = QVariant()) const;
    /// \param value has a text form; what has none, a map for instance, is lost with the process
    void setValue(const QString &key, const QVariant &value);
    bool contains(const QString &key) const;
    void remove(const QString &key);

private:
    OlvikSettings();
    void write();

    mutable QMutex mutex;
    QSettings store;
};
