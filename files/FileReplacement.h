#pragma once

#include <functional>

class QIODevice;
class QString;

/// Writes the same whenever it is called; \return false when not all of it was taken.
using FileWriter = std::function<bool(QIODevice &)>;

/// Where the file itself lies when the path is a link.
QString realPath(const QString &path);

/// Whether something that is no regular file has the name: a device, a pipe, a folder.
bool isSpecialFile(const QString &path);

/// Gives a file new contents as a whole: a full disk, a crash or a kill leaves the earlier ones.
/// What is written goes straight to the file, and is never held in memory.
///
/// Where the file may be written but not be replaced (a folder that takes no other file, a file
/// that is a mount point of its own) it is written in place, once the disk has room for all of it.
/// Should it fail even so, contents of up to 16 MB are put back; a reader or a crash in between may
/// find half of the new ones. Devices and pipes are written in place, too.
/// \param write is called once more for each further way, and to count what needs room
/// \return false when the file keeps its earlier contents, or is not there and cannot be made
[[nodiscard]] bool replaceFile(const QString &path, const FileWriter &write);
