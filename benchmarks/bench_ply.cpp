#include "plain/PlainWriter.h"
#include "PlyWriter.h"

#include <vtkNew.h>
#include <vtkPoints.h>
#include <vtkPolyData.h>

#include <benchmark/benchmark.h>

#include <QFile>
#include <QTemporaryDir>

#include <cmath>

namespace {

/// A wavy surface over a square grid, as a profile is saved.
vtkSmartPointer<vtkPolyData> surface(int side)
{
    vtkNew<vtkPoints> points;
    points->SetNumberOfPoints(vtkIdType(side) * side);
    for (int row = 0; row < side; ++row) {
        for (int column = 0; column < side; ++column) {
            const double height = 100.0 + 100.0 * std::sin(row * 0.01) * std::cos(column * 0.02);
            points->SetPoint(vtkIdType(row) * side + column, column, height, row);
        }
    }
    auto cloud = vtkSmartPointer<vtkPolyData>::New();
    cloud->SetPoints(points);
    return cloud;
}

template <bool write(vtkPolyData &, const QString &)> void writing(benchmark::State &state)
{
    const auto cloud = surface(static_cast<int>(state.range(0)));
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("surface.ply"));
    for (auto _ : state) {
        if (!write(*cloud, path))
            state.SkipWithError("nothing written");
    }
    state.SetBytesProcessed(QFile(path).size() * state.iterations());
}

void sizes(benchmark::internal::Benchmark *writing)
{
    writing->Arg(1024)->Arg(2048)->Unit(benchmark::kMillisecond);
    writing->MeasureProcessCPUTime()->UseRealTime();
}

BENCHMARK_TEMPLATE(writing, writePlain)->Apply(sizes);
BENCHMARK_TEMPLATE(writing, writePly)->Apply(sizes);

} // namespace
