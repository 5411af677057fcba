#include "Heights.h"

#include <array>
#include <limits>

namespace {

using Limits = std::numeric_limits<float>;

constexpr int largest = 4096;

struct Pattern
{
    const char *name;
    float (*heightAt)(int column, int row, unsigned noise);
};

float between0And1(unsigned noise)
{
    return static_cast<float>(noise & 0xffffu) / 65535.0f;
}

const std::array<Pattern, 10> patterns{{
    {"zero", [](int, int, unsigned) { return 0.0f; }},
    {"flat", [](int, int, unsigned) { return 12.5f; }},
    {"NaN", [](int, int, unsigned) { return Limits::quiet_NaN(); }},
    {"infinite", [](int, int, unsigned) { return Limits::infinity(); }},
    {"negative",
        [](int column, int, unsigned) { return -1.0f - static_cast<float>(column % 100); }},
    {"noise", [](int, int, unsigned noise) { return 1000.0f * between0And1(noise); }},
    {"ramp", [](int column, int row, unsigned) { return static_cast<float>(column + row); }},
    {"gaps",
        [](int column, int, unsigned noise) {
            return noise % 3 == 0 ? Limits::quiet_NaN() : static_cast<float>(column);
        }},
    {"extremes",
        [](int, int, unsigned noise) {
            constexpr float values[] = {Limits::max(), Limits::lowest(), -Limits::infinity(),
                Limits::denorm_min(), Limits::quiet_NaN(), 1.0f};
            return values[noise % 6];
        }},
    {"zeros among heights",
        [](int column, int, unsigned noise) {
            return noise % 2 == 0 ? 0.0f : static_cast<float>(column);
        }},
}};

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
    const Pattern &pattern = patterns[static_cast<std::size_t>(choice.below(patterns.size()))];
    heights.pattern = QString::fromLatin1(pattern.name);
    heights.values.resize(
        static_cast<std::size_t>(heights.width) * static_cast<std::size_t>(heights.height));
    auto noise = static_cast<unsigned>(choice.bits()) | 1u;
    float *value = heights.values.data();
    for (int row = 0; row < heights.height; ++row) {
        for (int column = 0; column < heights.width; ++column) {
            noise = noise * 1664525u + 1013904223u;
            *value++ = pattern.heightAt(column, row, noise >> 8);
        }
    }
    return heights;
}
