#include "PlyWriter.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <vtkPoints.h>
#include <vtkPolyData.h>

#include <charconv>
#include <cmath>
#include <csignal>
#include <ctime>
#include <vector>

#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr std::size_t blockSize = 256UL * 1024;
/// A number like "-3.4028234663852886e+38" and the blank behind it.
constexpr std::size_t longestNumber = 25;
constexpr std::size_t longestLine = 3 * longestNumber + 1;

/// Keeps the end of a pipe's reader from ending the host: the write fails instead.
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

QString targetPath(const QString &path)
{
    const QString suffix = QStringLiteral(".ply");
    return path.endsWith(suffix) || isSpecial(path) ? path : path + suffix;
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
    return device.write(data, size) == size;
}

/// Two thirds of a scan's numbers are columns and rows; written as integers they cost next to nothing.
bool isSmallInteger(double value)
{
    constexpr double limit = 1e9;
    return std::abs(value) < limit && value == std::trunc(value)
        && !(value == 0.0 && std::signbit(value));
}

/// \param text has room for longestNumber
/// \return the end of the number
char *appendNumber(char *text, double value)
{
    char *const limit = text + longestNumber;
    if (isSmallInteger(value))
        return std::to_chars(text, limit, static_cast<int>(value)).ptr;
    return std::to_chars(text, limit, value, std::chars_format::general, 17).ptr;
}

/// \param line has room for longestLine
/// \return the end of the text
char *appendPoint(char *line, const double (&point)[3])
{
    for (const double coordinate : point) {
        // Clouds in double precision lose digits as in the stock writer, whose columns are floats.
        line = appendNumber(line, static_cast<float>(coordinate));
        *line++ = ' ';
    }
    *line++ = '\n';
    return line;
}

bool writePoints(QIODevice &device, vtkPoints &points)
{
    std::vector<char> block(blockSize);
    char *const begin = block.data();
    char *const full = begin + blockSize - longestLine;
    char *end = begin;
    const vtkIdType count = points.GetNumberOfPoints();
    for (vtkIdType i = 0; i < count; ++i) {
        double point[3];
        points.GetPoint(i, point);
        end = appendPoint(end, point);
        if (end < full)
            continue;
        if (!writeAll(device, begin, end - begin))
            return false;
        end = begin;
    }
    return writeAll(device, begin, end - begin);
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

    const BrokenPipeGuard guard;
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

bool writePly(vtkPolyData &cloud, const QString &path)
{
    if (path.isEmpty() || path.contains(QChar::Null))
        return false;

    const QString target = targetPath(path);
    return isSpecial(target) ? writeInPlace(cloud, target) : replaceFile(cloud, target);
}
