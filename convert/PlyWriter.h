#pragma once

#include <QString>

class vtkPolyData;

/// The file that writePly() writes: \a path, with ".ply" added to a name that does not end so in
/// lower case, unless something other than a regular file has the name as it stands.
QString plyTarget(const QString &path);

/// Writes the points of \a cloud as ASCII PLY: the text of vtkPLYWriter for a cloud without
/// polygons and colours, to the byte. Only reads the cloud; any thread may call it, one per cloud.
/// Threads of its own make the text, a few megabytes ahead; the caller writes it.
///
/// A regular file is written whole or not at all, as far as replaceFile() promises it.
///
/// A pipe that nobody reads is a failure, not a wait; one whose reader takes nothing for five
/// seconds is, too.
/// \param path as for plyTarget()
/// \return false when the text did not arrive in full; the console stays silent
[[nodiscard]] bool writePly(vtkPolyData &cloud, const QString &path);
