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
/// case-sensitive; a slash separates the section from the name. Each change is on disk when the call
/// returns. Safe to use from any thread.
class OLVIKSETTINGS_EXPORT OlvikSettings
{
public:
    /// The one store of this process, created by the first call.
    static std::shared_ptr<OlvikSettings> Instance();

    OlvikSettings(const OlvikSettings &) = delete;
    OlvikSettings &operator=(const OlvikSettings &) = delete;

    /// \return the stored value, or \a defaultValue when the key does not exist. Numbers and booleans
    ///         come back as text after a restart: convert them with QVariant's toInt() and its like.
    QVariant value(const QString &key, const QVariant &defaultValue = QVariant()) const;
    void setValue(const QString &key, const QVariant &value);
    bool contains(const QString &key) const;
    void remove(const QString &key);

private:
    OlvikSettings();

    mutable QMutex mutex;
    QSettings store;
};
