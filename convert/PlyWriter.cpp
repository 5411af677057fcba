#include "PlyWriter.h"

#include "FloatText.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <vtkFloatArray.h>
#include <vtkPoints.h>
#include <vtkPolyData.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <ctime>
#include <future>
#include <vector>

#include <fcntl.h>
#include <unistd.h>

namespace {

/// Worth the start of a thread; 1.6 MB of text at most.
constexpr vtkIdType pointsPerBlock = 16384;
/// Keeps the cores busy while one block is written.
constexpr vtkIdType blocksAtOnce = 4;
constexpr std::size_t longestLine = 3 * (floatTextRoom + 1) + 1;

/// Keeps the end of a pipe's reader from ending the host: the write fails instead. Not around the
/// start of a thread, which would inherit the block.
class BrokenPipeGuard
{
public:
    BrokenPipeGuard()
    {
        sigemptyset(&brokenPipe);
        sigaddset(&brokenPipe, SIGPIPE);
        pthread_sigmask(SIG_BLOCK, &brokenPipe, &before);
    }
    ~BrokenPipeGuard()
    {
        const timespec now = {0, 0};
        if (sigismember(&before, SIGPIPE) == 0)
            sigtimedwait(&brokenPipe, nullptr, &now);
        pthread_sigmask(SIG_SETMASK, &before, nullptr);
    }
    Q_DISABLE_COPY_MOVE(BrokenPipeGuard)

private:
    sigset_t brokenPipe;
    sigset_t before;
};

bool isSpecial(const QString &path)
{
    const QFileInfo info(path);
    return info.exists() && !info.isFile();
}

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

bool writeAll(QIODevice &device, const char *data, qint64 size)
{
    const BrokenPipeGuard guard;
    return device.write(data, size) == size;
}

/// \param line has room for longestLine
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
        text.resize(static_cast<std::size_t>(count) * longestLine);
        future = std::async([this, begin, end] {
            char *line = text.data();
            for (const float *point = begin; point != end; point += 3)
                line = appendPoint(line, point);
            return static_cast<qint64>(line - text.data());
        });
    }

    bool write(QIODevice &device) { return writeAll(device, text.data(), future.get()); }

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
    const vtkIdType pointCount = points.GetNumberOfPoints();
    const vtkIdType blockCount = (pointCount + pointsPerBlock - 1) / pointsPerBlock;
    const auto blockOf = [&](vtkIdType i) -> Block & {
        return ring[std::size_t(i % blocksAtOnce)];
    };
    const auto format = [&](vtkIdType i) {
        const vtkIdType first = i * pointsPerBlock;
        if (i < blockCount)
            blockOf(i).format(points, first, std::min(pointsPerBlock, pointCount - first));
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
    if (!writeAll(device, header.constData(), header.size()))
        return false;
    return points == nullptr || writePoints(device, *points);
}

bool writeInPlace(vtkPolyData &cloud, const QString &path)
{
    // Without O_NONBLOCK a pipe would hold the caller until somebody reads it.
    const int descriptor =
        ::open(QFile::encodeName(path).constData(), O_WRONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (descriptor < 0)
        return false;

    QFile file;
    const auto mode = QIODevice::WriteOnly | QIODevice::Unbuffered;
    if (::fcntl(descriptor, F_SETFL, 0) != 0
        || !file.open(descriptor, mode, QFileDevice::AutoCloseHandle)) {
        ::close(descriptor);
        return false;
    }
    const bool written = writeCloud(file, cloud);
    file.close();
    return written && file.error() == QFileDevice::NoError;
}

bool replaceFile(vtkPolyData &cloud, const QString &path)
{
    QSaveFile file(path);
    file.setDirectWriteFallback(true);
    // Unbuffered: Qt 5.15's commit() forgets the failure of a write that it had put off.
    return file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) && writeCloud(file, cloud)
        && file.commit() && file.error() == QFileDevice::NoError;
}

} // namespace

QString plyTarget(const QString &path)
{
    const QString suffix = QStringLiteral(".ply");
    return path.endsWith(suffix) || isSpecial(path) ? path : path + suffix;
}

bool writePly(vtkPolyData &cloud, const QString &path)
{
    if (path.isEmpty() || path.contains(QChar::Null))
        return false;

    const QString target = plyTarget(path);
    return isSpecial(target) ? writeInPlace(cloud, target) : replaceFile(cloud, target);
}
