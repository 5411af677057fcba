#include "Heights.h"

#include <array>
#include <limits>

namespace {

using Limits = std::numeric_limits<float>;

constexpr int largest = 4096;
constexpr std::array oddValues{0.0f, 12.5f, Limits::quiet_NaN(), Limits::infinity(),
    -Limits::infinity(), Limits::max(), Limits::lowest(), Limits::denorm_min()};

int randomSide(Choice &choice)
{
    const int kind = choice.below(300);
    if (kind == 0)
        return choice.oneIn(2) ? largest : choice.between(1024, largest);
    if (kind < 10)
        return choice.between(256, 1024);
    if (kind < 80)
        return choice.between(64, 256);
    return choice.between(1, 64);
}

} // namespace

Heights randomHeights(Choice &choice)
{
    Heights heights;
    heights.width = randomSide(choice);
    // A square of the largest size is otherwise next to never drawn.
    heights.height = heights.width > 256 && choice.oneIn(2) ? heights.width : randomSide(choice);
    const auto slope = static_cast<float>(choice.between(-1, 1));
    const float noiseHeight = choice.oneIn(2) ? 0.0f : 1000.0f;
    const float odd = choice.oneOf(oddValues);
    const bool areOddOnesMixed = choice.oneIn(3);
    const unsigned oddPeriod = static_cast<unsigned>(choice.below(4));
    heights.pattern = QStringLiteral("slope %1, noise %2, one of %3 is %4")
                          .arg(slope)
                          .arg(noiseHeight)
                          .arg(oddPeriod)
                          .arg(areOddOnesMixed ? "odd" : QString::number(odd));
    const auto width = static_cast<std::size_t>(heights.width);
    heights.values.resize(width * static_cast<std::size_t>(heights.height));
    auto noise = static_cast<unsigned>(choice.bits()) | 1u;
    for (std::size_t i = 0; i < heights.values.size(); ++i) {
        noise = noise * 1664525u + 1013904223u;
        const unsigned drawn = noise >> 8;
        const std::size_t steps = i % width + i / width;
        if (oddPeriod > 0 && drawn % oddPeriod == 0)
            heights.values[i] = areOddOnesMixed ? oddValues[drawn / 7 % oddValues.size()] : odd;
        else
            heights.values[i] = slope * static_cast<float>(steps)
                + static_cast<float>(drawn % 1024) / 1024.0f * noiseHeight;
    }
    return heights;
}
