#pragma once

#include <QString>

#include <vtkSmartPointer.h>

class vtkPolyData;

/// Reads the vertices of a PLY file, ASCII or binary: the points as floats and the colours, if any.
/// Polygons are left out.
///
/// Never null. A cloud of no points for a file that is missing, is no PLY file, lacks a coordinate,
/// or holds less than its header promises; the console stays silent. The vertices must be the
/// first element that is not empty, without lists; in ASCII one line and plain numbers each.
///
/// One call at a time: VTK 9.1 keeps its reader's memory in a global.
vtkSmartPointer<vtkPolyData> readPly(const QString &path);
