#pragma once

#include <QSettings>

class QIODevice;

/// The text form of the settings: that of QSettings::IniFormat, without two of its faults.
///
/// QSettings decodes what a file calls a variant of any type, of any length and depth, and falls
/// over a damaged one; here it stays text. And it takes a file cut short by a full disk for whole.
namespace IniText {

/// Reads what it can; lines that are no setting are left out.
bool read(QIODevice &device, QSettings::SettingsMap &settings);

/// Points, sizes, rectangles, byte arrays, and lists keep their type, all else is text.
/// \return false when not everything reached the disk
bool write(QIODevice &device, const QSettings::SettingsMap &settings);

} // namespace IniText
