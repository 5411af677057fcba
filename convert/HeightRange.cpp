#include "HeightRange.h"

#include <algorithm>
#include <cmath>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace {

using Range = std::array<float, 2>;

constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr Range nothing{infinity, -infinity};

Range joined(const Range &a, const Range &b)
{
    return {std::min(a[0], b[0]), std::max(a[1], b[1])};
}

Range rangeOfFew(const float *values, std::size_t count)
{
    Range range = nothing;
    for (std::size_t i = 0; i < count; ++i) {
        range[0] = values[i] < range[0] ? values[i] : range[0];
        range[1] = values[i] > range[1] ? values[i] : range[1];
    }
    return range;
}

#ifdef __SSE2__
/// Four ranges side by side. NaN counts for nothing: of an unordered pair the instructions give the
/// second operand.
struct Lanes
{
    static constexpr std::size_t count = 4;
    __m128 low = _mm_set1_ps(infinity);
    __m128 high = _mm_set1_ps(-infinity);

    void add(const float *values)
    {
        const __m128 value = _mm_loadu_ps(values);
        low = _mm_min_ps(value, low);
        high = _mm_max_ps(value, high);
    }

    Range range() const
    {
        std::array<float, count> lows;
        std::array<float, count> highs;
        _mm_storeu_ps(lows.data(), low);
        _mm_storeu_ps(highs.data(), high);
        return {rangeOfFew(lows.data(), count)[0], rangeOfFew(highs.data(), count)[1]};
    }
};

/// One value after the other, each comparison waits for the one before: 3.1 ms instead of 0.4 ms
/// for 4 million values. Compilers keep to that order.
Range rangeOf(const float *values, std::size_t count)
{
    Lanes a;
    Lanes b;
    Lanes c;
    Lanes d;
    const float *const end = values + count;
    for (; end - values >= 16; values += 16) {
        a.add(values);
        b.add(values + 4);
        c.add(values + 8);
        d.add(values + 12);
    }
    const Range whole = joined(joined(a.range(), b.range()), joined(c.range(), d.range()));
    return joined(whole, rangeOfFew(values, static_cast<std::size_t>(end - values)));
}
#else
Range rangeOf(const float *values, std::size_t count)
{
    return rangeOfFew(values, count);
}
#endif

Range finiteRangeOf(const float *values, std::size_t count, bool countsZeros)
{
    Range range = nothing;
    for (std::size_t i = 0; i < count; ++i) {
        if (std::isfinite(values[i]) && (countsZeros || values[i] != 0.0f))
            range = joined(range, {values[i], values[i]});
    }
    return range;
}

} // namespace

void HeightRange::add(const float *heights, std::size_t count)
{
    const Range all = rangeOf(heights, count);
    highest = std::max(highest, all[1]);
    const bool mayHoldZeros = all[0] <= 0.0f && all[1] >= 0.0f;
    const bool isPlain = all[0] > -infinity && all[1] < infinity && (countsZeros || !mayHoldZeros);
    finiteRange = joined(finiteRange, isPlain ? all : finiteRangeOf(heights, count, countsZeros));
}

void HeightRange::add(const HeightRange &other)
{
    highest = std::max(highest, other.highest);
    finiteRange = joined(finiteRange, other.finiteRange);
}
