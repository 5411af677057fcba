#pragma once

#include <algorithm>
#include <cmath>
#include <vector>

/// \param share 0 for the least value, 0.5 for the median, 1 for the largest
/// \param values not empty
inline double quantile(std::vector<double> values, double share)
{
    std::sort(values.begin(), values.end());
    const double position = share * static_cast<double>(values.size() - 1);
    return values[static_cast<std::size_t>(std::lround(position))];
}

inline double median(const std::vector<double> &values)
{
    return quantile(values, 0.5);
}
