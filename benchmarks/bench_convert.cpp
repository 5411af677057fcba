#include "DataConverter.h"
#include "GradientFactory.h"

#include <vtkPolyData.h>

#include <benchmark/benchmark.h>

#include <cmath>
#include <vector>

namespace {

/// A wavy surface between 0 and 200; a tenth of the samples, scattered, are zeros.
std::vector<float> surface(int side)
{
    std::vector<float> heights;
    heights.reserve(static_cast<std::size_t>(side) * static_cast<std::size_t>(side));
    unsigned random = 1;
    for (int row = 0; row < side; ++row) {
        for (int column = 0; column < side; ++column) {
            random = random * 1664525U + 1013904223U;
            const float wave = std::sin(static_cast<float>(row) * 0.01f)
                * std::cos(static_cast<float>(column) * 0.02f);
            heights.push_back((random >> 16U) % 10U == 0U ? 0.0f : 100.0f + 100.0f * wave);
        }
    }
    return heights;
}

void report(benchmark::State &state, std::size_t samples)
{
    const auto items = static_cast<std::int64_t>(samples) * state.iterations();
    state.SetItemsProcessed(items);
    state.SetBytesProcessed(items * static_cast<std::int64_t>(sizeof(float)));
}

template <vtkSmartPointer<vtkPolyData> convert(float *, int, int)>
void conversion(benchmark::State &state)
{
    const int side = static_cast<int>(state.range(0));
    std::vector<float> heights = surface(side);
    for (auto _ : state)
        benchmark::DoNotOptimize(convert(heights.data(), side, side));
    report(state, heights.size());
}

void range(benchmark::State &state)
{
    std::vector<float> heights = surface(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        const auto count = static_cast<long>(heights.size());
        benchmark::DoNotOptimize(DataConverter::getminmax(heights.data(), count));
    }
    report(state, heights.size());
}

void gradientColors(benchmark::State &state)
{
    const std::vector<float> heights = surface(static_cast<int>(state.range(0)));
    Gradient gradient = GradientFactory::BlackAndWhite();
    gradient.addStop(0.3f, Qt::red);
    gradient.addStop(0.6f, Qt::green);
    gradient.setMax(180.0);
    for (auto _ : state) {
        int sum = 0;
        for (const float height : heights) {
            int r = 0;
            int g = 0;
            int b = 0;
            int a = 0;
            gradient.getColorFromValue(height, r, g, b, a);
            sum ^= r + g + b + a;
        }
        benchmark::DoNotOptimize(sum);
    }
    report(state, heights.size());
}

void sides(benchmark::internal::Benchmark *benchmark)
{
    benchmark->ArgName("side")->Arg(1024)->Arg(2048)->Arg(4096)->Unit(benchmark::kMillisecond);
}

BENCHMARK(conversion<DataConverter::convertToPolyData>)->Name("convertToPolyData")->Apply(sides);
BENCHMARK(conversion<DataConverter::convertToPolyDataNoZero>)
    ->Name("convertToPolyDataNoZero")
    ->Apply(sides);
BENCHMARK(range)->Name("getminmax")->Apply(sides);
BENCHMARK(gradientColors)->Name("getColorFromValue")->Apply(sides);

} // namespace
