// Any bytes as a PLY file; what can be read is written and read again.
#include "FuzzSupport.h"

#include "PlyReader.h"
#include "PlyWriter.h"

#include <vtkPoints.h>
#include <vtkPolyData.h>

#include <cmath>

namespace {

bool isSame(double a, double b)
{
    return a == b || (std::isnan(a) && std::isnan(b));
}

void requireSame(vtkPolyData &cloud, vtkPolyData &other)
{
    require(cloud.GetNumberOfPoints() == other.GetNumberOfPoints(), "all points come back");
    for (vtkIdType i = 0; i < cloud.GetNumberOfPoints(); ++i) {
        double a[3];
        double b[3];
        cloud.GetPoint(i, a);
        other.GetPoint(i, b);
        require(isSame(a[0], b[0]) && isSame(a[1], b[1]) && isSame(a[2], b[2]),
            "points come back as they were");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, std::size_t size)
{
    static const QString folder = startFuzzing();
    const QString path = folder + "/cloud.ply";
    writeFile(path, QByteArray(reinterpret_cast<const char *>(data), static_cast<int>(size)));
    const auto cloud = readPly(path);
    require(cloud && cloud->GetPoints(), "there is a cloud");
    require(cloud->GetNumberOfPoints() <= static_cast<vtkIdType>(size), "points take bytes");

    require(writePly(*cloud, path), "each cloud can be written");
    requireSame(*cloud, *readPly(path));
    return 0;
}
