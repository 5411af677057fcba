#include "IndividualBound.h"

#include <QtConcurrent>

std::array<float, 2> individualBound(
    const float *values, std::int64_t end, std::int64_t start, std::int64_t step)
{
    IndividualBound bound;
    for (std::int64_t i = start; i < end; i += step)
        bound.add(values[i]);
    return bound.result();
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
