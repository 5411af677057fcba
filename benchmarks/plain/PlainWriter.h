#pragma once

#include <QString>

class vtkPolyData;

/// Writes the points with VTK's own writer, as ASCII PLY.
/// \return false when the writer says so
[[nodiscard]] bool writePlain(vtkPolyData &cloud, const QString &path);
