#pragma once

#include <QSettings>

class QIODevice;

/// The text form of the settings: that of QSettings::IniFormat, without two of its faults.
///
/// QSettings decodes what a file calls a variant of any type, of any length and depth, and falls
/// over a damaged one; here it stays text. And it takes a file cut short by a full disk for whole.
///
/// What QSettings keeps in such variants has forms that it reads without harm: a list of one part
/// is that part behind an empty pair of quotes, to QSettings the part alone; a list in a list is
/// "@List(...)" around its parts, to QSettings a text.
namespace IniText {

/// Reads what it can; lines that are no setting are left out.
bool read(QIODevice &device, QSettings::SettingsMap &settings);

/// Points, sizes, rectangles, byte arrays, and lists of any length keep their type, lists in lists
/// too, to a depth of 16; all else is text.
/// \return false when not everything reached the disk
bool write(QIODevice &device, const QSettings::SettingsMap &settings);

} // namespace IniText
