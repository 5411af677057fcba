#include "PlyWriter.h"

#include "FileReplacement.h"
#include "FloatText.h"

#include <QByteArray>
#include <QIODevice>

#include <vtkFloatArray.h>
#include <vtkPoints.h>
#include <vtkPolyData.h>

#include <algorithm>
#include <array>
#include <future>
#include <vector>

namespace {

/// Worth the start of a thread; 1.6 MB of text at most.
constexpr vtkIdType pointsPerBlock = 16384;
/// Keeps the cores busy while one block is written.
constexpr vtkIdType blocksAtOnce = 4;
constexpr std::size_t longestPointLine = 3 * (floatTextRoom + 1) + 1;

QByteArray headerText(vtkIdType count)
{
    return "ply\n"
           "format ascii 1.0\n"
           "comment VTK generated PLY File\n"
           "obj_info vtkPolyData points and polygons: vtk4.0\n"
           "element vertex "
        + QByteArray::number(static_cast<qlonglong>(count))
        + "\n"
          "property float x\n"
          "property float y\n"
          "property float z\n"
          "element face 0\n"
          "property list uchar int vertex_indices\n"
          "end_header\n";
}

/// \param line has room for longestPointLine
/// \return the end of the text
char *appendPoint(char *line, const float *point)
{
    for (int axis = 0; axis < 3; ++axis) {
        line = appendFloat(line, point[axis]);
        *line++ = ' ';
    }
    *line++ = '\n';
    return line;
}

/// The text of some points, made by a thread of its own while others are written.
class Block
{
public:
    void format(vtkPoints &points, vtkIdType first, vtkIdType count)
    {
        const float *const begin = coordinates(points, first, count);
        const float *const end = begin + 3 * count;
        text.resize(static_cast<std::size_t>(count) * longestPointLine);
        future = std::async([this, begin, end] {
            char *line = text.data();
            for (const float *point = begin; point != end; point += 3)
                line = appendPoint(line, point);
            return static_cast<qint64>(line - text.data());
        });
    }

    bool write(QIODevice &device)
    {
        const qint64 size = future.get();
        return device.write(text.data(), size) == size;
    }

private:
    const float *coordinates(vtkPoints &points, vtkIdType first, vtkIdType count)
    {
        auto *const xyz = vtkFloatArray::FastDownCast(points.GetData());
        if (xyz != nullptr && xyz->GetNumberOfComponents() == 3)
            return xyz->GetPointer(3 * first);
        copy.clear();
        for (vtkIdType i = first; i < first + count; ++i) {
            double point[3];
            points.GetPoint(i, point);
            // Doubles lose digits as in the stock writer, whose columns are floats.
            for (const double coordinate : point)
                copy.push_back(static_cast<float>(coordinate));
        }
        return copy.data();
    }

    std::vector<float> copy;
    std::vector<char> text;
    std::future<qint64> future; ///< the last member: waits for the thread that fills the text
};

bool writePoints(QIODevice &device, vtkPoints &points)
{
    std::array<Block, blocksAtOnce> ring;
    const vtkIdType count = points.GetNumberOfPoints();
    const vtkIdType blockCount = (count + pointsPerBlock - 1) / pointsPerBlock;
    const auto blockOf = [&](vtkIdType i) -> Block & {
        return ring[std::size_t(i % blocksAtOnce)];
    };
    const auto format = [&](vtkIdType i) {
        const vtkIdType first = i * pointsPerBlock;
        if (i < blockCount)
            blockOf(i).format(points, first, std::min(pointsPerBlock, count - first));
    };

    for (vtkIdType i = 0; i < blocksAtOnce; ++i)
        format(i);
    for (vtkIdType i = 0; i < blockCount; ++i) {
        if (!blockOf(i).write(device))
            return false;
        format(i + blocksAtOnce);
    }
    return true;
}

bool writeCloud(QIODevice &device, vtkPolyData &cloud)
{
    vtkPoints *points = cloud.GetPoints();
    const QByteArray header = headerText(points == nullptr ? 0 : points->GetNumberOfPoints());
    if (device.write(header) != header.size())
        return false;
    return points == nullptr || writePoints(device, *points);
}

} // namespace

QString plyTarget(const QString &path)
{
    const QString suffix = QStringLiteral(".ply");
    return path.endsWith(suffix) || isSpecialFile(path) ? path : path + suffix;
}

bool writePly(vtkPolyData &cloud, const QString &path)
{
    if (path.isEmpty() || path.contains(QChar::Null))
        return false;

    const auto write = [&cloud](QIODevice &device) { return writeCloud(device, cloud); };
    return replaceFile(plyTarget(path), write);
}
