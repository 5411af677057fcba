#include "IndividualBound.h"

#include <QtConcurrent>

#include <limits>

std::array<float, 2> individualBound(
    const float *values, std::int64_t end, std::int64_t start, std::int64_t step)
{
    constexpr float untouchedMin = std::numeric_limits<float>::max();
    constexpr float untouchedMax = std::numeric_limits<float>::min();

    float min = untouchedMin;
    float max = untouchedMax;
    for (std::int64_t i = start; i < end; i += step) {
        const float value = values[i];
        if (value > max)
            max = value;
        else if (value < min)
            min = value;
    }
    return {min == untouchedMin ? 0.0f : min, max == untouchedMax ? 0.0f : max};
}

std::array<double, 6> interleavedBounds(const float *xyz, std::int64_t count)
{
    const auto coordinate = [=](int start) {
        return QtConcurrent::run([=] { return individualBound(xyz, count, start, 3); });
    };
    const QFuture<std::array<float, 2>> x = coordinate(0);
    const QFuture<std::array<float, 2>> y = coordinate(1);
    const QFuture<std::array<float, 2>> z = coordinate(2);
    return {
        x.result()[0], x.result()[1], y.result()[0], y.result()[1], z.result()[0], z.result()[1]};
}
